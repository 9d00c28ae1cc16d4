#include "Fixture.h"
#include "Look.h"

namespace {

class Layout : public OnDesktop, public testing::WithParamInterface<float> {
 protected:
  Layout() { desktop.twipsPerPixel = GetParam(); }
};

TEST_P(Layout, AWindowBelowItsLimitsSpringsBackUnlessItIsMinimized) {
  auto& form = Start();
  EXPECT_EQ(form.ScaleWidth(), 7170);
  EXPECT_EQ(form.ScaleHeight(), 4110);
  ExpectLook(form, "main");
  // The smallest whole pixels that reach the limits.
  const Twips width = GetParam() == 10 ? 6500 : 6510;
  using Sizes = std::array<Twips, 4>;
  for (const auto& [askedWidth, askedHeight, gotWidth, gotHeight] :
       {Sizes{5000, 6000, width, 6000}, Sizes{12000, 1500, 12000, 3000}, Sizes{1500, 1500, width, 3000},
        Sizes{width - GetParam(), 6000, width, 6000}, Sizes{width, 3000, width, 3000}}) {
    ResizeWindow(form, 7500, 4500);
    ResizeWindow(form, askedWidth, askedHeight);
    EXPECT_TRUE(form.Width() == gotWidth && form.Height() == gotHeight) << form.Width() << " x " << form.Height();
    ExpectLook(form, "main");
  }
  const auto told = Told(form.List1, Change::Bounds) + Told(form.btnFree, Change::Bounds);
  Minimize(form);
  EXPECT_EQ(Told(form.List1, Change::Bounds) + Told(form.btnFree, Change::Bounds), told);
  Maximize(form);
  ExpectLook(form, "main");
}

TEST_P(Layout, EveryFormComesUpAsItWasDesigned) {
  auto& form = Start();
  Choose(form.mnuFileFreeMem);
  ExpectLook(FrontForm(), "meter");
  const std::array entries = {&form.mnuFileRun, &form.mnuEditKillListHere, &form.mnuHelpAbout, &form.mnuFind};
  for (std::size_t i = 0; i < entries.size(); ++i) {
    desktop.Then([i] { ExpectLook(FrontForm(), std::array{"launcher", "editor", "about", "find"}[i]); });
    Choose(*entries[i]);
  }
}

INSTANTIATE_TEST_SUITE_P(AtResolutions, Layout, testing::Values(15.0F, 10.0F),
                         [](const auto& info) { return info.param == 15 ? "Dpi96" : "Dpi144"; });

}  // namespace
