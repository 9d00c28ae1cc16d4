#pragma once

#include <gtest/gtest.h>

#include "Forms.h"
#include "runtime/Buttons.h"
#include "runtime/Form.h"
#include "runtime/Label.h"
#include "runtime/Pictures.h"

namespace velmaro {

// What a model holds, written as the table of the forms has it: the marks that hold, in their order.
using Marks = std::vector<std::pair<bool, std::string>>;
inline std::string TextOf(const Marks& marks) {
  std::string text;
  for (const auto& [holds, mark] : marks) text += holds ? (text.empty() ? "" : " ") + mark : "";
  return text;
}

inline std::string NameOf(Color color) {
  for (const auto& [value, name] : std::map<Color, std::string>{{SystemColor::Window, "window"},
                                                                {SystemColor::WindowText, "windowtext"},
                                                                {SystemColor::Highlight, "highlight"},
                                                                {SystemColor::HighlightText, "highlighttext"}})
    if (value == color) return name;
  std::array<char, 7> digits{};
  std::snprintf(digits.data(), digits.size(), "%02X%02X%02X", color & 255, color >> 8 & 255, color >> 16 & 255);
  return digits.data();
}

inline std::string MarksOf(const Control& control) {
  const auto* label = dynamic_cast<const Label*>(&control);
  const auto* button = dynamic_cast<const CommandButton*>(&control);
  const auto* option = dynamic_cast<const OptionButton*>(&control);
  const auto* panel = dynamic_cast<const PictureBox*>(&control);
  const bool clear = label && label->Transparent();
  const auto ground = clear ? control.Parent()->BackColor() : control.BackColor(), ink = control.ForeColor();
  const auto& font = control.Font();
  std::ostringstream size;
  size << font.Size;
  return TextOf({{font.Size != 8.25F, size.str()},
                 {!font.Name.empty(), font.Name},
                 {font.Bold, "bold"},
                 {button && button->Cancel(), "cancel"},
                 {label && label->Alignment() == Alignment::Center, "center"},
                 {clear, "clear"},
                 {button && button->Default(), "default"},
                 {ground != SystemColor::ButtonFace, "ground:" + NameOf(ground)},
                 {label && label->Pointer() == Pointer::Hand, "hand"},
                 {ink != SystemColor::ButtonText, "ink:" + NameOf(ink)},
                 {font.Underline, "line"},
                 {label && label->Alignment() == Alignment::Right, "right"},
                 {option && option->Value(), "set"},
                 {panel && panel->Border(), "sunken"}});
}

inline std::string MarksOf(const FormArgs& form) {
  constexpr std::array borders = {"none", "fixed", "sizable", "tool"}, starts = {"", "owner", "screen", ""};
  return TextOf({{true, borders.at(static_cast<std::size_t>(form.BorderStyle))},
                 {true, starts.at(static_cast<std::size_t>(form.StartUpPosition))},
                 {form.BackColor != SystemColor::ButtonFace, "ground:" + NameOf(form.BackColor)},
                 {form.Icon != Picture::None, "icon"},
                 {form.MaxButton, "maximize"},
                 {form.MinButton, "minimize"},
                 {form.ShowInTaskbar, "taskbar"}});
}

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
