#include "desktop/modFiles.h"
#include "mainform/formVelmaro.h"

namespace velmaro {

void formVelmaro::Form_Resize() {
  if (Width() < LeastWidth || Height() < LeastHeight) {
    // The window's new size raises this event again, and that pass does the layout.
    if (Width() < LeastWidth) Resume([&] { SetWidth(UpToWholePixel(LeastWidth)); });
    if (Height() < LeastHeight) Resume([&] { SetHeight(UpToWholePixel(LeastHeight)); });
    return;
  }
  Resume([&] { List1.Move({30, 450, Width() - 180, Height() - btnVelmaro.Height() - 1200}); });
  lblCredits.SetTop(List1.Height() + 600);
  btnRefresh.SetLeft(ScaleWidth() - btnRefresh.Width() - 60);
  const auto top = List1.Height() + 480;
  btnFree.MoveTo(ScaleWidth() - btnFree.Width(), top);
  btnFreeMem.MoveTo(btnFree.Left() - btnFreeMem.Width(), top);
  btnLaunch.MoveTo(btnFreeMem.Left() - btnLaunch.Width() - 60, top);
  btnVelmaro.MoveTo(btnLaunch.Left() - btnVelmaro.Width(), top);
}

void formVelmaro::mnuFileExit_Click() { UnloadForm(*this); }

void formVelmaro::lblCredits_Click() { ShowCreditsBox(); }

void formVelmaro::mnuHelpAbout_Click() { lblCredits_Click(); }

}  // namespace velmaro
