#include "mainform/formVelmaro.h"
#include "runtime/Boxes.h"
#include "runtime/Text.h"

namespace velmaro {

void formVelmaro::mnuFind_Click() {
  List1.SetListIndex(-1);
  const auto reply = InputBox("Enter text to find:", Caption(), FindText);
  if (reply.empty()) return;
  FindText = reply;
  mnuFindNext_Click();
}

void formVelmaro::mnuFindNext_Click() {
  if (FindText.empty()) {
    mnuFind_Click();
    return;
  }
  const auto pattern = "*" + LCase(FindText) + "*";
  for (int row = List1.ListIndex() + 1; row < List1.ListCount(); ++row) {
    // An invalid pattern counts as a hit, which ends the search on the row under test.
    if (!ResumeTest([&] { return WildcardMatch(LCase(List1.List(row)), pattern); })) continue;
    List1.SetListIndex(row);
    return;
  }
  MsgBox("'" + FindText + "'was not found.", platform::MB_ICONINFORMATION, Caption());
  List1.SetListIndex(-1);
}

}  // namespace velmaro
