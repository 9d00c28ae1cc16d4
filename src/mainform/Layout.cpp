#include <algorithm>
#include <array>

#include "desktop/modFiles.h"
#include "mainform/formVelmaro.h"

namespace velmaro {
namespace {

// The inner widths that the two rows of buttons were designed for, with the gaps between them, and what of the lower
// row's width the line beside it can't do without.
constexpr Twips UpperRow = 6180;
constexpr Twips LowerRow = 4575;
constexpr Twips LeastBesideRow = 1200;

}  // namespace

// A width that the desktop imposes can be less than the rows of buttons take: they are drawn together then.
void formVelmaro::FitRows() {
  const std::array<Control*, 5> row = {&btnVelmaro, &btnLaunch, &btnFreeMem, &btnFree, &btnRefresh};
  std::vector<Control*> parts(row.begin(), row.end());
  for (auto& option : Option1) parts.push_back(&option);
  if (Designed.empty())
    for (const auto* part : parts) Designed.push_back(part->At());
  const auto upper = std::min(1.0F, ScaleWidth() / UpperRow);
  const auto lower = std::min(1.0F, ScaleWidth() / LowerRow);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const auto& at = Designed[i];
    const auto scale = i + 1 < row.size() ? lower : upper;
    const auto left = i < row.size() ? parts[i]->Left() : at.Left * scale;
    parts[i]->Move({left, parts[i]->Top(), at.Width * scale, at.Height});
  }
}

void formVelmaro::Form_Resize() {
  const bool isLess = Width() < LeastWidth || Height() < LeastHeight;
  if (isLess && !SizeIsImposed()) {
    // The window's new size raises this event again, and that pass does the layout.
    if (Width() < LeastWidth) Resume([&] { SetWidth(UpToWholePixel(LeastWidth)); });
    if (Height() < LeastHeight) Resume([&] { SetHeight(UpToWholePixel(LeastHeight)); });
    return;
  }
  FitRows();
  Resume([&] { List1.Move({30, 450, Width() - 180, std::max(Height() - btnVelmaro.Height() - 1200, Twips{0})}); });
  lblCredits.SetTop(List1.Height() + 600);
  btnRefresh.SetLeft(ScaleWidth() - btnRefresh.Width() - 60);
  const auto top = List1.Height() + 480;
  btnFree.MoveTo(ScaleWidth() - btnFree.Width(), top);
  btnFreeMem.MoveTo(btnFree.Left() - btnFreeMem.Width(), top);
  btnLaunch.MoveTo(btnFreeMem.Left() - btnLaunch.Width() - 60, top);
  btnVelmaro.MoveTo(btnLaunch.Left() - btnVelmaro.Width(), top);
  lblCredits.SetVisible(!isLess || btnVelmaro.Left() > LeastBesideRow);
}

void formVelmaro::mnuFileExit_Click() { UnloadForm(*this); }

void formVelmaro::lblCredits_Click() { ShowCreditsBox(); }

void formVelmaro::mnuHelpAbout_Click() { lblCredits_Click(); }

}  // namespace velmaro
