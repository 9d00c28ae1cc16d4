#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

// The first character of a text in the system's code page, as UTF-16. A byte that is no text becomes the lone surrogate
// U+DC00 plus its value, which stands for that byte on the way back.
struct Character {
  std::size_t bytes = 1;
  wchar_t units[2] = {};
  int unitCount = 1;
  bool isText = true;
};

// Takes the first character apart of a text that is not empty.
Character FirstCharacter(std::string_view text);

// True where the system's code page is UTF-8, as the manifest asks.
bool PageIsUtf8();

// What becomes of a NUL: the system's calls end a text at it, and a native control would cut the text there.
enum class Nul { Kept, Escaped };

// Turns 8-bit text into UTF-16 without a loss: `Narrow` gives the same bytes back.
std::wstring Widen(std::string_view text, Nul nul = Nul::Kept);
// Turns UTF-16 into 8-bit text. What the code page does not hold becomes its replacement character.
std::string Narrow(std::wstring_view text);
// Appends one character's 8-bit form. False when the code page does not hold it, and then nothing is appended.
bool AppendNarrow(std::string& text, std::wstring_view character);

// The bytes that the first `units` UTF-16 units of a widened text came from.
std::size_t BytesBefore(std::string_view text, std::size_t units);
// The UTF-16 units that the first `bytes` bytes of a text become.
std::size_t UnitsBefore(std::string_view text, std::size_t bytes);

}  // namespace platform
