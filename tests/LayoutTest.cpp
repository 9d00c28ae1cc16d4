#include "Fixture.h"
#include "Forms.h"

namespace {

// Looks at the design of a form, and at what live windows don't show, or not on every system.
void ExpectDesign(const Form& form, const std::string& name) {
  const auto rows = forms::Rows(name);
  const auto& args = form.Args();
  EXPECT_EQ(std::tuple(args.MinButton, args.MaxButton, args.ShowInTaskbar),
            std::tuple(rows[0].Has("minimize"), rows[0].Has("maximize"), rows[0].Has("taskbar")));
  auto controls = form.Controls();
  std::ranges::stable_sort(controls, {}, &Control::TabIndex);
  ASSERT_EQ(controls.size() + 1, rows.size()) << name;
  const forms::Size window = {
      {'c', form.ScaleWidth()}, {'i', form.ScaleHeight()}, {'W', form.Width()}, {'H', form.Height()}};
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const auto& at = controls[i]->At();
    const std::array sides = {at.Left, at.Top, at.Width, at.Height};
    for (std::size_t side = 0; side < 4 && rows[i + 1].kind != "line"; ++side)
      EXPECT_FALSE(std::abs(sides[side] - rows[i + 1].Length(side, window)) > 0.01) << name << ' ' << rows[i + 1].text;
    EXPECT_TRUE(controls[i]->Caption().starts_with(rows[i + 1].text)) << name << ' ' << controls[i]->Caption();
    const auto& font = controls[i]->Font();
    const auto size = font.Size == 8.25F ? "" : testing::PrintToString(font.Size) + ' ';
    EXPECT_EQ(size + font.Name + (font.Bold ? " bold" : "") + (font.Underline ? " line" : ""), rows[i + 1].font);
  }
}

TEST(Layout, AWindowBelowItsLimitsSpringsBackUnlessItIsMinimized) {
  // The smallest whole pixels that reach the limits.
  for (const auto& [pixel, width] : {std::pair{15.0F, 6510.0F}, {10.0F, 6500.0F}}) {
    Program program;
    program.desktop.twipsPerPixel = pixel;
    auto& form = program.Start();
    using Sizes = std::array<Twips, 4>;
    for (const auto& [askedWidth, askedHeight, gotWidth, gotHeight] :
         {Sizes{5000, 6000, width, 6000}, Sizes{12000, 1500, 12000, 3000}, Sizes{1500, 1500, width, 3000},
          Sizes{width - pixel, 6000, width, 6000}, Sizes{width, 3000, width, 3000}}) {
      ResizeWindow(form, 7500, 4500);
      ResizeWindow(form, askedWidth, askedHeight);
      EXPECT_TRUE(form.Width() == gotWidth && form.Height() == gotHeight) << form.Width() << " x " << form.Height();
      EXPECT_EQ(form.List1.Width(), gotWidth - 180);
    }
    const auto told = Told(form.List1, Change::Bounds);
    Minimize(form);
    EXPECT_EQ(Told(form.List1, Change::Bounds), told);
  }
}

TEST_F(OnDesktop, EveryFormIsAsItWasDesigned) {
  auto& form = Start();
  ExpectDesign(form, "main");
  Choose(form.mnuFileFreeMem);
  ExpectDesign(FrontForm(), "meter");
  const std::array entries = {&form.mnuFileRun, &form.mnuEditKillListHere, &form.mnuHelpAbout, &form.mnuFind};
  for (std::size_t i = 0; i < entries.size(); ++i) {
    desktop.Then([i] { ExpectDesign(FrontForm(), std::array{"launcher", "editor", "about", "find"}[i]); });
    Choose(*entries[i]);
  }
}

}  // namespace
