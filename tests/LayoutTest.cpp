#include <cmath>
#include <map>

#include "Fixture.h"
#include "Forms.h"
#include "runtime/Label.h"
#include "runtime/Pictures.h"

namespace {

// What a model holds, as the table of the forms tells it.
class Marks {
 public:
  void Add(bool holds, const std::string& mark) {
    if (holds) marks_ += (marks_.empty() ? "" : " ") + mark;
  }
  void AddColor(const std::string& side, Color color, Color otherwise) {
    static const std::map<Color, std::string> names = {{SystemColor::Window, "window"},
                                                       {SystemColor::WindowText, "windowtext"},
                                                       {SystemColor::Highlight, "highlight"},
                                                       {SystemColor::HighlightText, "highlighttext"}};
    const auto red = (color & 255) << 16, blue = color >> 16 & 255;
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "%06X", red | (color & 0xFF00) | blue);
    Add(color != otherwise, side + ':' + (names.contains(color) ? names.at(color) : digits.data()));
  }
  const std::string& Text() const { return marks_; }

 private:
  std::string marks_;
};

std::string MarksOf(const Control& control) {
  const auto* label = dynamic_cast<const Label*>(&control);
  const auto* button = dynamic_cast<const CommandButton*>(&control);
  const auto* option = dynamic_cast<const OptionButton*>(&control);
  const auto* panel = dynamic_cast<const PictureBox*>(&control);
  const bool clear = label && label->Transparent();
  std::ostringstream size;
  size << control.Font().Size;
  Marks marks;
  marks.Add(control.Font().Size != 8.25F, size.str());
  marks.Add(!control.Font().Name.empty(), control.Font().Name);
  marks.Add(control.Font().Bold, "bold");
  marks.Add(button && button->Cancel(), "cancel");
  marks.Add(label && label->Alignment() == Alignment::Center, "center");
  marks.Add(clear, "clear");
  marks.Add(button && button->Default(), "default");
  marks.AddColor("ground", clear ? control.Parent()->BackColor() : control.BackColor(), SystemColor::ButtonFace);
  marks.Add(label && label->Pointer() == Pointer::Hand, "hand");
  marks.AddColor("ink", control.ForeColor(), SystemColor::ButtonText);
  marks.Add(control.Font().Underline, "line");
  marks.Add(label && label->Alignment() == Alignment::Right, "right");
  marks.Add(option && option->Value(), "set");
  marks.Add(panel && panel->Border(), "sunken");
  return marks.Text();
}

std::string MarksOf(const FormArgs& form) {
  Marks marks;
  marks.AddColor("ground", form.BackColor, SystemColor::ButtonFace);
  marks.Add(form.Icon != Picture::None, "icon");
  marks.Add(form.MaxButton, "maximize");
  marks.Add(form.MinButton, "minimize");
  marks.Add(form.ShowInTaskbar, "taskbar");
  return marks.Text();
}

void ExpectLook(const Form& form, const std::string& name) {
  const auto rows = forms::Rows(name);
  const auto& args = form.Args();
  constexpr std::array borders = {"none", "fixed", "sizable", "tool"}, starts = {"", "owner", "screen", ""};
  EXPECT_EQ(borders.at(static_cast<std::size_t>(args.BorderStyle)), rows.at(0).at[2]);
  EXPECT_EQ(starts.at(static_cast<std::size_t>(args.StartUpPosition)), rows[0].at[3]);
  EXPECT_EQ(MarksOf(args) + '|' + (rows[0].text.empty() ? "" : form.Caption()), rows[0].marks + '|' + rows[0].text);
  EXPECT_EQ((Bounds{0, 0, args.ClientWidth, args.ClientHeight}),
            (Bounds{0, 0, std::stof(rows[0].at[0]), std::stof(rows[0].at[1])}));
  auto controls = form.Controls();
  std::ranges::stable_sort(controls, {}, &Control::TabIndex);
  ASSERT_EQ(controls.size() + 1, rows.size());
  for (auto row = rows.begin() + 1; const auto* control : controls) {
    SCOPED_TRACE(row->kind + ' ' + row->text);
    const auto* line = dynamic_cast<const Line*>(control);
    const auto& at = control->At();
    const std::array sides = {at.Left, at.Top, at.Width, line ? line->BorderWidth() * 15.F : at.Height};
    for (std::size_t side = 0; side < 4; ++side) {
      const auto length = row->Length(side, {form.ScaleWidth(), form.Width(), form.Height()});
      EXPECT_TRUE(sides[side] == length || std::isnan(length)) << sides[side] << ", not " << length;
    }
    EXPECT_EQ(MarksOf(*control) + ' ' + std::to_string(control->TabIndex()), row->marks + ' ' + row->tab);
    EXPECT_TRUE(control->Caption().starts_with(row->text)) << control->Caption();
    ++row;
  }
}

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
    SCOPED_TRACE(name);
    desktop.Then([&] { ExpectLook(FrontForm(), name); });
    Choose(*entry);
  }
}

INSTANTIATE_TEST_SUITE_P(AtResolutions, Layout, testing::Values(15.0F, 10.0F),
                         [](const auto& info) { return info.param == 15 ? "Dpi96" : "Dpi144"; });

}  // namespace
