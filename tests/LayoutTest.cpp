#include "Fixture.h"
#include "Forms.h"

namespace {

void ExpectFonts(const Form& form, const std::string& name) {
  const auto rows = forms::Rows(name);
  auto controls = form.Controls();
  std::ranges::stable_sort(controls, {}, &Control::TabIndex);
  ASSERT_EQ(controls.size() + 1, rows.size()) << name;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const auto& font = controls[i]->Font();
    const auto size = font.Size == 8.25F ? "" : testing::PrintToString(font.Size) + ' ';
    EXPECT_EQ(size + font.Name + (font.Bold ? " bold" : "") + (font.Underline ? " line" : ""), rows[i + 1].font);
  }
}

TEST_F(OnDesktop, EveryTextHasItsFont) {
  auto& form = Start();
  ExpectFonts(form, "main");
  Choose(form.mnuFileFreeMem);
  ExpectFonts(FrontForm(), "meter");
  const std::array entries = {&form.mnuFileRun, &form.mnuEditKillListHere, &form.mnuHelpAbout, &form.mnuFind};
  for (std::size_t i = 0; i < entries.size(); ++i) {
    desktop.Then([i] { ExpectFonts(FrontForm(), std::array{"launcher", "editor", "about", "find"}[i]); });
    Choose(*entries[i]);
  }
}

}  // namespace
