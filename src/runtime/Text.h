#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmaro {

// How a text is searched: byte by byte, or with letters of both cases taken as equal.
enum class Compare { Exact, IgnoreCase };

// The 1-based position of the first `what` in `text` at or behind position `start`; 0 when there is none, when `start`
// lies behind the text, or when the hit lies behind position 32,767, since positions are 16 bits wide.
std::int16_t InStr(std::size_t start, std::string_view text, std::string_view what, Compare compare);
// The same search in texts of any length, for positions that are not held in 16 bits.
std::size_t FindInText(std::size_t start, std::string_view text, std::string_view what, Compare compare);
// Up to `length` bytes from the 1-based position `start`; empty behind the text's end.
std::string_view Mid(std::string_view text, std::size_t start, std::size_t length = std::string_view::npos);
// The text without the spaces (code 32) at both ends; nothing else is trimmed.
std::string_view Trim(std::string_view text);
// The text without a double quote at its start and without one at its end, each where it stands.
std::string_view DropQuotes(std::string_view text);
// The text with the letters of every script of the code page lower-cased.
std::string LCase(std::string_view text);
// True where two texts are equal but for the case of their letters.
bool EqualIgnoringCase(std::string_view a, std::string_view b);

// Tests a whole text against a pattern: "*" any run, "?" one character, "#" one digit, "[a-z]" one of a list, "[!a-z]"
// one outside it; exact case. "]" outside a list is itself, "[]" stands for nothing at all, "-" first or last in a
// list is itself. Throws RuntimeError on an unclosed "[" or a descending range, whatever the text is. Takes time in
// proportion to text times pattern at worst.
bool WildcardMatch(std::string_view text, std::string_view pattern);

}  // namespace velmaro
