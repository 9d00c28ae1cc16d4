#include "desktop/modTrayIcon.h"
#include "mainform/formVelmaro.h"
#include "platform/identity.h"
#include "process/WalkProcesses.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

// The name in a row of the list: what stands behind its tag and the Tab.
std::string ProcessInRow(const std::string& row) {
  return std::string(Mid(row, FindInText(1, row, "]\t", Compare::Exact) + 2));
}

}  // namespace

void formVelmaro::btnVelmaro_MouseUp(int Button, int, float, float) {
  if (Button != MouseButton::Left) {
    Resume([&] { PopupMenu(mnuOptionsMain, Bounds{btnVelmaro.Left(), btnVelmaro.Top() + btnVelmaro.Height()}); });
    return;
  }
  if (List1.ListIndex() >= 0) {
    if (List1.ItemData(List1.ListIndex()) == PriorityChoice) return;
    if (platform::CommandsMeanTheRow())
      ActOnProcess(List1.ItemKey(List1.ListIndex()), CheckedPriorityIndex(), QuietMode);
    else
      WalkProcesses(ProcessInRow(List1.Text()), CheckedPriorityIndex(), QuietMode, nullptr);
  }
  mnuFileRefresh_Click();
}

std::int16_t formVelmaro::CheckedPriorityIndex() const {
  for (std::size_t i = 0; i < mnuOptions.size(); ++i)
    if (mnuOptions[i].Checked()) return static_cast<std::int16_t>(i);
  return 0;
}

void formVelmaro::mnuOptions_Click(std::int16_t Index) {
  for (auto& entry : mnuOptions) entry.SetChecked(false);
  mnuOptions[static_cast<std::size_t>(Index)].SetChecked(true);
  PriorityChoice = Index;
  btnVelmaro_MouseUp(MouseButton::Left, 0, 0, 0);
}

void formVelmaro::List1_DblClick() {
  if (Option1[6].Value())
    mnuWOption_Click(3);
  else
    mnuOptions_Click(2);
}

void formVelmaro::List1_MouseUp(int Button, int, float, float) {
  if (Button != MouseButton::Right) return;
  if (Option1[6].Value()) {
    ShowPopupAtCursor(*this, mnuWOptionsMain, nullptr, 0, 0);
    return;
  }
  Resume([&] { PriorityChoice = static_cast<std::int16_t>(List1.ItemData(List1.ListIndex())); });
  mnuOptions_Click(PriorityChoice);
  ShowPopupAtCursor(*this, mnuOptionsMain, nullptr, 0, 0);
}

}  // namespace velmaro
