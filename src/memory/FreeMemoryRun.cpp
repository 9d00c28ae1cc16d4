#include <array>

#include "mainform/formVelmaro.h"
#include "memory/MemoryBlock.h"
#include "memory/formFreeMem.h"
#include "runtime/Application.h"

namespace velmaro {
namespace {

constexpr auto StopCaption = "&Stop";
constexpr std::size_t Slots = 2048;

}  // namespace

bool formFreeMem::IsRunning() const { return btnFree.Caption() == StopCaption; }

void formFreeMem::btnFree_Click() {
  if (IsRunning()) {
    RefreshMemoryGauge();
    return;
  }
  RunFreeMemory();
  if (std::exchange(closeRequested, false)) UnloadForm(*this);
}

void formFreeMem::RunFreeMemory() {
  btnFree.SetCaption(StopCaption);
  btnFree.SetCancel(true);
  HScroll1.SetEnabled(false);
  SetCaption("Trying to Free Memory...");
  Timer1.SetEnabled(false);
  lblFreeMem.SetCaption("");
  ShowMemoryStatus();
  stopRequested = false;
  ClaimBlocks(HScroll1.Value());
  RefreshMemoryGauge();
  Timer1.SetEnabled(true);
  btnFree.SetCancel(false);
  HScroll1.SetEnabled(true);
  HScroll1_Change();
}

// All blocks are held until the target is reached or the run is stopped, and go back together.
void formFreeMem::ClaimBlocks(int target) {
  std::array<MemoryBlock, Slots> memBlocks;
  for (int i = 1; i <= target; ++i) {
    const auto width = static_cast<float>(i) / static_cast<float>(target) * Picture1.Width();
    Resume([&] { Picture2.Move({0, 0, width, Picture2.Height()}); });
    ShowMemoryStatus();
    if (!ProcessWaitingEvents() || stopRequested || App().Ended()) break;
    const auto slot = static_cast<std::size_t>(i - 1);
    // A block that can't be had leaves its slot empty, and the next step tries again.
    if (slot < Slots) Resume([&] { memBlocks[slot] = MemoryBlock::Filled().Copy(); });
  }
  for (auto& block : memBlocks) block = {};
}

void formFreeMem::Form_Unload(bool& Cancel) {
  if (!IsRunning()) return;
  closeRequested = true;
  stopRequested = true;
  Cancel = true;
}

Form& formVelmaro::FreeMemoryInWindow() {
  auto& form = App().New<formFreeMem>();
  form.Show();
  Resume([&] { form.HScroll1.SetValue(form.HScroll1.Max() / 2); });
  Resume([&] { form.btnFree_Click(); });
  return form;
}

void formVelmaro::FreeMemoryUnattended() { UnloadForm(FreeMemoryInWindow()); }

}  // namespace velmaro
