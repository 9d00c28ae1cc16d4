#include <set>

#include "Fixture.h"
#include "Forms.h"

namespace {

class Layout : public OnDesktop, public testing::WithParamInterface<float> {
 protected:
  Layout() { desktop.twipsPerPixel = GetParam(); }
};

void ExpectLaidOut(const formVelmaro& form) {
  EXPECT_EQ(form.List1.Control::At(), (Bounds{30, 450, form.Width() - 180, form.Height() - 2040}));
  EXPECT_EQ(form.btnFree.At(), (Bounds{form.ScaleWidth() - 1260, form.Height() - 1560, 1260, 840}));
}

// Compares with the table what can't be seen of live windows from outside.
void ExpectMarks(const Form& form, const std::string& name) {
  const auto rows = forms::Rows(name);
  auto controls = form.Controls();
  std::ranges::stable_sort(controls, {}, &Control::TabIndex);
  ASSERT_EQ(controls.size() + 1, rows.size());
  for (auto row = rows.begin() + 1; const auto* control : controls) {
    const auto* label = dynamic_cast<const Label*>(control);
    const auto* button = dynamic_cast<const CommandButton*>(control);
    const auto& font = control->Font();
    const auto size = testing::PrintToString(font.Size);
    EXPECT_TRUE(font.Size == 8.25F || row->Has(size)) << row->text << size;
    const std::set<std::string> held = {size,
                                        font.Name,
                                        font.Bold ? "bold" : "",
                                        font.Underline ? "line" : "",
                                        button && button->Cancel() ? "cancel" : "",
                                        label && label->Transparent() ? "clear" : "",
                                        label && label->Pointer() == Pointer::Hand ? "hand" : ""};
    for (const std::string mark :
         {"9.75", "12", "24", "Arial", "MS Sans Serif", "bold", "line", "cancel", "clear", "hand"})
      EXPECT_EQ(row->Has(mark), held.contains(mark)) << row->text << ' ' << mark;
    ++row;
  }
}

TEST_P(Layout, AWindowBelowItsLimitsSpringsBackUnlessItIsMinimized) {
  auto& form = Start();
  EXPECT_TRUE(form.ScaleWidth() == 7170 && form.ScaleHeight() == 4110);
  ExpectLaidOut(form);
  ExpectMarks(form, "main");
  // The smallest whole pixels that reach the limits.
  const Twips width = GetParam() == 10 ? 6500 : 6510;
  using Sizes = std::array<Twips, 4>;
  for (const auto& [askedWidth, askedHeight, gotWidth, gotHeight] :
       {Sizes{5000, 6000, width, 6000}, Sizes{12000, 1500, 12000, 3000}, Sizes{1500, 1500, width, 3000},
        Sizes{width - GetParam(), 6000, width, 6000}, Sizes{width, 3000, width, 3000}}) {
    ResizeWindow(form, 7500, 4500);
    ResizeWindow(form, askedWidth, askedHeight);
    EXPECT_TRUE(form.Width() == gotWidth && form.Height() == gotHeight) << form.Width() << " x " << form.Height();
    ExpectLaidOut(form);
  }
  const auto told = Told(form.List1, Change::Bounds) + Told(form.btnFree, Change::Bounds);
  Minimize(form);
  EXPECT_EQ(Told(form.List1, Change::Bounds) + Told(form.btnFree, Change::Bounds), told);
  Maximize(form);
  ExpectLaidOut(form);
}

TEST_P(Layout, EveryTextHasItsFont) {
  auto& form = Start();
  Choose(form.mnuFileFreeMem);
  ExpectMarks(FrontForm(), "meter");
  const std::array entries = {&form.mnuFileRun, &form.mnuEditKillListHere, &form.mnuHelpAbout, &form.mnuFind};
  for (std::size_t i = 0; i < entries.size(); ++i) {
    desktop.Then([i] { ExpectMarks(FrontForm(), std::array{"launcher", "editor", "about", "find"}[i]); });
    Choose(*entries[i]);
  }
}

INSTANTIATE_TEST_SUITE_P(AtResolutions, Layout, testing::Values(15.0F, 10.0F),
                         [](const auto& info) { return info.param == 15 ? "Dpi96" : "Dpi144"; });

}  // namespace
