#pragma once

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <sstream>

#include "Forms.h"
#include "runtime/Buttons.h"
#include "runtime/Form.h"
#include "runtime/Label.h"
#include "runtime/Pictures.h"

namespace velmaro {

// What a model holds, written as the table of the forms has it.
class Marks {
 public:
  void Add(bool holds, const std::string& mark) {
    if (holds) text += (text.empty() ? "" : " ") + mark;
  }
  void AddColor(const std::string& side, Color color, Color otherwise) {
    static const std::map<Color, std::string> names = {{SystemColor::Window, "window"},
                                                       {SystemColor::WindowText, "windowtext"},
                                                       {SystemColor::Highlight, "highlight"},
                                                       {SystemColor::HighlightText, "highlighttext"}};
    std::array<char, 7> digits{};
    std::snprintf(digits.data(), digits.size(), "%02X%02X%02X", color & 255, color >> 8 & 255, color >> 16 & 255);
    Add(color != otherwise, side + ':' + (names.contains(color) ? names.at(color) : digits.data()));
  }
  std::string text;
};

inline std::string MarksOf(const Control& control) {
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
  return marks.text;
}

inline std::string MarksOf(const FormArgs& form) {
  constexpr std::array borders = {"none", "fixed", "sizable", "tool"}, starts = {"", "owner", "screen", ""};
  Marks marks;
  marks.Add(true, borders.at(static_cast<std::size_t>(form.BorderStyle)));
  marks.Add(true, starts.at(static_cast<std::size_t>(form.StartUpPosition)));
  marks.AddColor("ground", form.BackColor, SystemColor::ButtonFace);
  marks.Add(form.Icon != Picture::None, "icon");
  marks.Add(form.MaxButton, "maximize");
  marks.Add(form.MinButton, "minimize");
  marks.Add(form.ShowInTaskbar, "taskbar");
  return marks.text;
}

// Looks at the model of a form as the table has it.
inline void ExpectLook(const Form& form, const std::string& name) {
  SCOPED_TRACE(name);
  const auto rows = forms::Rows(name);
  const auto& args = form.Args();
  const auto& head = rows.at(0);
  EXPECT_EQ(MarksOf(args), head.at[2] + ' ' + head.at[3] + (head.marks.empty() ? "" : " ") + head.marks);
  EXPECT_TRUE(form.Caption().starts_with(head.text));
  EXPECT_TRUE(args.ClientWidth == std::stof(head.at[0]) && args.ClientHeight == std::stof(head.at[1]));
  auto controls = form.Controls();
  std::ranges::stable_sort(controls, {}, &Control::TabIndex);
  ASSERT_EQ(controls.size() + 1, rows.size());
  const forms::Size size = {
      {'c', form.ScaleWidth()}, {'i', form.ScaleHeight()}, {'W', form.Width()}, {'H', form.Height()}};
  for (auto row = rows.begin() + 1; const auto* control : controls) {
    SCOPED_TRACE(row->kind + ' ' + row->text);
    const auto* line = dynamic_cast<const Line*>(control);
    const auto& at = control->At();
    const std::array sides = {at.Left, at.Top, at.Width, line ? line->BorderWidth() * 15.F : at.Height};
    for (std::size_t side = 0; side < 4; ++side) {
      const auto length = row->Length(side, size);
      EXPECT_FALSE(std::abs(sides[side] - length) > 0.01) << sides[side] << ", not " << length;
    }
    EXPECT_EQ(MarksOf(*control) + ' ' + std::to_string(control->TabIndex()), row->marks + ' ' + row->tab);
    EXPECT_TRUE(control->Caption().starts_with(row->text)) << control->Caption();
    ++row;
  }
}

}  // namespace velmaro
