#include "mainform/formVelmaro.h"
#include "platform/user32.h"
#include "process/WalkProcesses.h"

namespace velmaro {

void formVelmaro::mnuFileRefresh_Click() {
  // Until the start knows that the window comes up, nobody will see the list, and the last step of the start fills it.
  if (!ListIsSeen) return;
  if (Option1[6].Value()) {
    ListHiddenWindows();
    return;
  }
  const ListBox::Refill refill(List1);
  WalkProcesses("", SelectedFilterIndex(), true, &List1);
}

void formVelmaro::btnRefresh_Click() { mnuFileRefresh_Click(); }

void formVelmaro::mnuFileAutoRefresh_Click() { mnuFileAutoRefresh.SetChecked(!mnuFileAutoRefresh.Checked()); }

void formVelmaro::Form_KeyUp(int KeyCode, int) {
  if (KeyCode == Key::F5) mnuFileRefresh_Click();
}

void formVelmaro::Option1_Click(std::int16_t Index) {
  const bool windows = Index == 6;
  mnuOptionsMain.SetVisible(!windows);
  mnuWOptionsMain.SetVisible(windows);
  if (!windows) {
    mnuFileRefresh_Click();
    return;
  }
  ListHiddenWindows();
  TellOfMissingWindows();
}

void formVelmaro::Timer1_Timer() {
  if (!mnuFileAutoRefresh.Checked()) return;
  // A user who works in this window must not lose the row that he is about to act on.
  if (platform::GetActiveWindow() == hWnd()) return;
  const ListBox::SamePlace place(List1);
  mnuFileRefresh_Click();
}

std::int16_t formVelmaro::SelectedFilterIndex() const {
  for (std::size_t i = 0; i < Option1.size(); ++i)
    if (Option1[i].Value()) return static_cast<std::int16_t>(i);
  return 0;
}

}  // namespace velmaro
