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
  const std::vector<std::pair<Bounds, Bounds>> cases = {{{0, 0, 5000, 6000}, {0, 0, width, 6000}},
                                                        {{0, 0, 12000, 1500}, {0, 0, 12000, 3000}},
                                                        {{0, 0, 1500, 1500}, {0, 0, width, 3000}},
                                                        {{0, 0, width - GetParam(), 6000}, {0, 0, width, 6000}},
                                                        {{0, 0, width, 3000}, {0, 0, width, 3000}}};
  for (const auto& [asked, got] : cases) {
    ResizeWindow(form, 7500, 4500);
    ResizeWindow(form, asked.Width, asked.Height);
    EXPECT_EQ((Bounds{0, 0, form.Width(), form.Height()}), got);
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
  for (const auto& [entry, name] : std::vector<std::pair<Menu*, std::string>>{{&form.mnuFileRun, "launcher"},
                                                                              {&form.mnuEditKillListHere, "editor"},
                                                                              {&form.mnuHelpAbout, "about"},
                                                                              {&form.mnuFind, "find"}}) {
    desktop.Then([&] { ExpectLook(FrontForm(), name); });
    Choose(*entry);
  }
}

INSTANTIATE_TEST_SUITE_P(AtResolutions, Layout, testing::Values(15.0F, 10.0F),
                         [](const auto& info) { return info.param == 15 ? "Dpi96" : "Dpi144"; });

}  // namespace
