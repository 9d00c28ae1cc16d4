#pragma once

#include <cstdint>
#include <string>

namespace velmaro {

// A length or position on a form: 1440 twips are one inch, whatever the screen's resolution.
using Twips = float;

// A place on a form or in a container, in twips.
struct Bounds {
  Twips Left = 0;
  Twips Top = 0;
  Twips Width = 0;
  Twips Height = 0;
  bool operator==(const Bounds&) const = default;
};

// A colour: red in the lowest byte, then green, then blue. With the highest bit set it is a colour of the desktop.
using Color = std::uint32_t;

constexpr Color Rgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  return red | static_cast<Color>(green) << 8 | static_cast<Color>(blue) << 16;
}

// Colours of the user's desktop, by the platform's own index in the lowest byte.
namespace SystemColor {
inline constexpr Color Window = 0x80000005;
inline constexpr Color WindowText = 0x80000008;
inline constexpr Color Highlight = 0x8000000D;
inline constexpr Color HighlightText = 0x8000000E;
inline constexpr Color ButtonFace = 0x8000000F;
inline constexpr Color ButtonText = 0x80000012;
// True for a colour that the desktop sets.
constexpr bool Is(Color color) { return (color & 0x80000000) != 0; }
}  // namespace SystemColor

// A font; an empty name stands for the desktop's own dialog font. The size is in points.
struct Font {
  std::string Name;
  float Size = 8.25F;
  bool Bold = false;
  bool Underline = false;
  bool operator==(const Font&) const = default;
};

// The pictures of the project, by the number that they have among the executable's resources.
enum class Picture { None = 0, App = 1, Priority = 2, Memory = 3, Resources = 4, Editor = 5 };

// The mouse pointer over a control.
enum class Pointer { Default, Hand };

// Mouse buttons as the mouse events tell them.
namespace MouseButton {
inline constexpr int Left = 1;
inline constexpr int Right = 2;
inline constexpr int Middle = 4;
}  // namespace MouseButton

// Modifier keys as the mouse and key events tell them, added up.
namespace ShiftKey {
inline constexpr int Shift = 1;
inline constexpr int Ctrl = 2;
inline constexpr int Alt = 4;
}  // namespace ShiftKey

// Codes of keys, as the platform numbers them; letters and digits have the code of their capital.
namespace Key {
inline constexpr int Return = 13;
inline constexpr int Escape = 27;
inline constexpr int Space = 32;
inline constexpr int Delete = 46;
inline constexpr int F1 = 112;
inline constexpr int F2 = 113;
inline constexpr int F3 = 114;
inline constexpr int F4 = 115;
inline constexpr int F5 = 116;
inline constexpr int F6 = 117;
inline constexpr int F8 = 119;
}  // namespace Key

// What of a model changed, so that its peer can bring the native side up to date.
enum class Change {
  Bounds,
  Caption,
  Visible,
  Enabled,
  Font,
  Colors,
  ToolTip,
  Value,      // the mark of an option button, the position of a scroll bar
  Range,      // the limits of a scroll bar
  Rows,       // the rows of a list, all of them
  ListIndex,  // the selected row of a list
  Text,       // the text of an edit field
  Selection,  // the selection of a text box
  Keys,       // which key presses a button: Enter, Esc
  Timing,     // the interval of a timer, or whether it runs
};

}  // namespace velmaro
