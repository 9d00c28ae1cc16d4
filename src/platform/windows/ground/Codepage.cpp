#include "platform/windows/ground/Codepage.h"

#include <algorithm>
#include <array>

#include "platform/windows/ground/System.h"

namespace platform {
namespace {

constexpr wchar_t EscapeBase = 0xDC00;

bool IsHighSurrogate(wchar_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(wchar_t unit) { return unit >= 0xDC00 && unit < 0xE000; }
bool IsEscape(wchar_t unit) { return unit == EscapeBase || (unit >= EscapeBase + 0x80 && unit <= EscapeBase + 0xFF); }

Character Escaped(std::string_view text) {
  return {.units = {static_cast<wchar_t>(EscapeBase + static_cast<unsigned char>(text[0]))}, .isText = false};
}

Character FromCodePoint(char32_t point, std::size_t bytes) {
  if (point < 0x10000) return {.bytes = bytes, .units = {static_cast<wchar_t>(point)}};
  const auto rest = point - 0x10000;
  return {.bytes = bytes,
          .units = {static_cast<wchar_t>(0xD800 + (rest >> 10)), static_cast<wchar_t>(0xDC00 + (rest & 0x3FF))},
          .unitCount = 2};
}

Character FirstUtf8(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return Escaped(text);
  char32_t point = lead & (0x7F >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0) != 0x80) return Escaped(text);
    point = point << 6 | (next & 0x3F);
  }
  const bool tooLong = (length == 3 && point < 0x800) || (length == 4 && point < 0x10000);
  if (tooLong || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000)) return Escaped(text);
  return FromCodePoint(point, length);
}

// A character counts as text only where the way back gives the same bytes.
Character FirstInCodePage(std::string_view text) {
  const std::size_t bytes = text.size() > 1 && ::IsDBCSLeadByteEx(CP_ACP, static_cast<BYTE>(text[0])) ? 2 : 1;
  Character character{.bytes = bytes};
  character.unitCount =
      ::MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, text.data(), static_cast<int>(bytes), character.units, 2);
  std::string back;
  if (character.unitCount < 1 ||
      !AppendNarrow(back, {character.units, static_cast<std::size_t>(character.unitCount)}) ||
      back != text.substr(0, bytes))
    return Escaped(text);
  return character;
}

std::array<Character, 256> SingleBytes() {
  std::array<Character, 256> table{};
  for (std::size_t i = 0x80; i < table.size(); ++i) {
    const char byte = static_cast<char>(i);
    table[i] = FirstInCodePage({&byte, 1});
  }
  return table;
}

void AppendUtf8(std::string& text, char32_t point) {
  const auto tail = [point](int shift) { return static_cast<char>(0x80 | (point >> shift & 0x3F)); };
  if (point < 0x80) {
    text += static_cast<char>(point);
  } else if (point < 0x800) {
    text += {static_cast<char>(0xC0 | point >> 6), tail(0)};
  } else if (point < 0x10000) {
    text += {static_cast<char>(0xE0 | point >> 12), tail(6), tail(0)};
  } else {
    text += {static_cast<char>(0xF0 | point >> 18), tail(12), tail(6), tail(0)};
  }
}

bool AppendInCodePage(std::string& text, std::wstring_view character) {
  char bytes[8];
  BOOL lost = FALSE;
  const int count = ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, character.data(),
                                          static_cast<int>(character.size()), bytes, sizeof bytes, nullptr, &lost);
  if (count < 1 || lost) return false;
  text.append(bytes, static_cast<std::size_t>(count));
  return true;
}

}  // namespace

bool PageIsUtf8() {
  static const bool utf8 = ::GetACP() == CP_UTF8;
  return utf8;
}

Character FirstCharacter(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x80) return {.units = {static_cast<wchar_t>(first)}};
  if (PageIsUtf8()) return FirstUtf8(text);
  if (::IsDBCSLeadByteEx(CP_ACP, first)) return FirstInCodePage(text);
  static const auto singles = SingleBytes();
  return singles[first];
}

bool AppendNarrow(std::string& text, std::wstring_view character) {
  if (character.size() == 1 && character[0] < 0x80) {
    text += static_cast<char>(character[0]);
    return true;
  }
  if (character.size() == 1 && IsEscape(character[0])) {
    text += static_cast<char>(character[0] - EscapeBase);
    return true;
  }
  if (!PageIsUtf8()) return AppendInCodePage(text, character);
  if (character.size() == 2)
    AppendUtf8(text, 0x10000 + ((character[0] & 0x3FFU) << 10 | (character[1] & 0x3FFU)));
  else if (IsHighSurrogate(character[0]) || IsLowSurrogate(character[0]))
    return false;
  else
    AppendUtf8(text, character[0]);
  return true;
}

std::wstring Widen(std::string_view text, Nul nul) {
  std::wstring wide;
  wide.reserve(text.size());
  while (!text.empty()) {
    const auto character = FirstCharacter(text);
    if (text[0] == 0 && nul == Nul::Escaped)
      wide += EscapeBase;
    else
      wide.append(character.units, static_cast<std::size_t>(character.unitCount));
    text.remove_prefix(character.bytes);
  }
  return wide;
}

std::string Narrow(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    const bool pair = text.size() > 1 && IsHighSurrogate(text[0]) && IsLowSurrogate(text[1]);
    const auto character = text.substr(0, pair ? 2 : 1);
    if (!AppendNarrow(bytes, character)) bytes += PageIsUtf8() ? "\xEF\xBF\xBD" : "?";
    text.remove_prefix(character.size());
  }
  return bytes;
}

std::string FromUtf16(std::u16string_view text) { return Narrow(std::wstring(text.begin(), text.end())); }

std::u16string ToUtf16(std::string_view text) {
  const auto wide = Widen(text);
  return {wide.begin(), wide.end()};
}

std::size_t BytesBefore(std::string_view text, std::size_t units) {
  std::size_t bytes = 0;
  for (std::size_t passed = 0; passed < units && bytes < text.size();) {
    const auto character = FirstCharacter(text.substr(bytes));
    bytes += character.bytes;
    passed += static_cast<std::size_t>(character.unitCount);
  }
  return bytes;
}

std::size_t UnitsBefore(std::string_view text, std::size_t bytes) {
  std::size_t units = 0;
  for (std::size_t passed = 0; passed < bytes && passed < text.size();) {
    const auto character = FirstCharacter(text.substr(passed));
    passed += character.bytes;
    units += static_cast<std::size_t>(character.unitCount);
  }
  return units;
}

}  // namespace platform
