#include "Fixture.h"

namespace {

class Layout : public OnDesktop, public testing::WithParamInterface<float> {
 protected:
  Layout() { desktop.twipsPerPixel = GetParam(); }

  static void ExpectLaidOut(const formVelmaro& form) {
    const auto list = form.Height() - 840 - 1200;
    const auto width = form.ScaleWidth();
    const std::vector<std::pair<const Control*, Bounds>> places = {
        {&form.List1, {30, 450, form.Width() - 180, list}},
        {&form.lblCredits, {45, list + 600, 2145, 195}},
        {&form.btnRefresh, {width - 870, 30, 810, 360}},
        {&form.btnFree, {width - 1260, list + 480, 1260, 840}},
        {&form.btnFreeMem, {width - 2310, list + 480, 1050, 840}},
        {&form.btnLaunch, {width - 3420, list + 480, 1050, 840}},
        {&form.btnVelmaro, {width - 4515, list + 480, 1095, 840}},
    };
    for (const auto& [control, place] : places) EXPECT_EQ(control->At(), place) << control->Caption();
  }
};

TEST_P(Layout, AWindowBelowItsLimitsSpringsBackUnlessItIsMinimized) {
  auto& form = Start();
  EXPECT_EQ(form.ScaleWidth(), 7170);
  EXPECT_EQ(form.ScaleHeight(), 4110);
  ExpectLaidOut(form);
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
    ExpectLaidOut(form);
  }
  const auto told = Told(form.List1, Change::Bounds) + Told(form.btnFree, Change::Bounds);
  Minimize(form);
  EXPECT_EQ(Told(form.List1, Change::Bounds) + Told(form.btnFree, Change::Bounds), told);
  Maximize(form);
  ExpectLaidOut(form);
}

INSTANTIATE_TEST_SUITE_P(AtResolutions, Layout, testing::Values(15.0F, 10.0F),
                         [](const auto& info) { return info.param == 15 ? "Dpi96" : "Dpi144"; });

}  // namespace
