#include "editor/formEdit.h"
#include "runtime/Boxes.h"
#include "runtime/Text.h"

namespace velmaro {

void formEdit::Form_KeyDown(int KeyCode, int Shift) {
  if (KeyCode == Key::F3) {
    if (FindText.empty())
      PromptFind();
    else
      FindNext();
  }
  if (KeyCode == 'F' && Shift == ShiftKey::Ctrl) PromptFind();
}

void formEdit::PromptFind() {
  const auto answer = InputBox("Enter text to find", "Find", FindText);
  if (answer.empty()) return;
  FindText = answer;
  FindNext();
}

void formEdit::FindNext() {
  const auto& text = txtData.Text();
  // One character behind the start of the selection, so that a hit which is selected is not found again at once.
  auto hit = FindInText(txtData.SelStart() + 2, text, FindText, Compare::IgnoreCase);
  if (hit == 0) hit = FindInText(1, text, FindText, Compare::IgnoreCase);
  if (hit == 0) {
    MsgBox("'" + FindText + "' not found.", platform::MB_ICONINFORMATION, Caption());
    return;
  }
  txtData.SetSelStart(hit - 1);
  txtData.SetSelLength(FindText.size());
}

}  // namespace velmaro
