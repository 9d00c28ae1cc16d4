#include "desktop/modFiles.h"
#include "mainform/formVelmaro.h"

namespace velmaro {

void formVelmaro::Form_Resize() {
  constexpr Twips minWidth = 6500;
  constexpr Twips minHeight = 3000;
  if (Width() < minWidth || Height() < minHeight) {
    // The window's new size raises this event again, and that pass does the layout.
    if (Width() < minWidth) Resume([&] { SetWidth(UpToWholePixel(minWidth)); });
    if (Height() < minHeight) Resume([&] { SetHeight(UpToWholePixel(minHeight)); });
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
