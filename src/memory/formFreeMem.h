#pragma once

#include "platform/kernel32.h"
#include "runtime/Buttons.h"
#include "runtime/Form.h"
#include "runtime/HScrollBar.h"
#include "runtime/Label.h"
#include "runtime/Pictures.h"
#include "runtime/Timer.h"

namespace velmaro {

// The memory meter: how much physical memory is free, as text and as a bar, and the run that frees more of it.
class formFreeMem : public Form {
 public:
  formFreeMem();

  PictureBox Picture1;
  PictureBox Picture2;
  Label lblFreeMem;
  HScrollBar HScroll1;
  CommandButton btnFree;
  Label lblStatus;
  Image Image1;
  Label lblCredits;
  velmaro::Timer Timer1;

  void Form_Load();
  // A window that is closed during a run stops the run, and goes when its blocks are released.
  void Form_Unload(bool& Cancel);
  // Reads the figures and shows them on the bar, the slider and in the texts. It ends a run.
  void RefreshMemoryGauge();
  // Reads the figures and shows them in the status line and the window's caption.
  void ShowMemoryStatus();
  // Keeps the slider within its limit and writes its position on the button.
  void HScroll1_Change();
  void Timer1_Timer();
  void lblStatus_Click();
  void Picture1_Click();
  void Picture2_Click();
  void lblCredits_Click();
  // Frees memory, block by block up to the slider's position, or stops the run that is under way.
  void btnFree_Click();

 private:
  bool IsRunning() const;
  void RunFreeMemory();
  void ClaimBlocks(int target);
  double FreeShare() const;

  platform::MEMORYSTATUS memStatus;
  bool stopRequested = false;
  bool closeRequested = false;
};

}  // namespace velmaro
