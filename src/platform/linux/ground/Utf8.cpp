#include "platform/linux/ground/Utf8.h"

#include <locale.h>
#include <wctype.h>

#include <algorithm>

#include "platform/machine.h"

namespace onlinux {
namespace {

// Bytes of a character by its first one, 0 for a byte that begins none.
std::size_t LengthByFirst(unsigned char first) {
  if (first < 0x80) return 1;
  if (first < 0xC2) return 0;
  if (first < 0xE0) return 2;
  if (first < 0xF0) return 3;
  return first < 0xF5 ? 4 : 0;
}

// Longer forms than needed, halves of pairs and numbers beyond the last character are no text.
bool IsScalar(char32_t code, std::size_t length) {
  if (length == 3) return code >= 0x800 && (code < 0xD800 || code > 0xDFFF);
  if (length == 4) return code >= 0x10000 && code <= 0x10FFFF;
  return true;
}

// The tables for letters of all scripts; without them only those of ASCII have another case.
class Letters {
 public:
  Letters() : locale_(::newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{})) {}
  ~Letters() {
    if (locale_) ::freelocale(locale_);
  }
  Letters(const Letters&) = delete;
  Letters& operator=(const Letters&) = delete;
  char32_t Lower(char32_t code) const {
    return locale_ ? static_cast<char32_t>(::towlower_l(static_cast<wint_t>(code), locale_)) : code;
  }

 private:
  locale_t locale_;
};

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

}  // namespace

Character FirstCharacter(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  const Character lone{first, 1, false};
  const auto length = LengthByFirst(first);
  if (length == 0 || length > text.size()) return lone;
  if (length == 1) return {first, 1, true};
  char32_t code = first & (0xFF >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) return lone;
    code = code << 6 | (byte & 0x3F);
  }
  return IsScalar(code, length) ? Character{code, length, true} : lone;
}

void AppendCharacter(std::string& text, char32_t code) {
  const auto tail = [&](int shift) { text += static_cast<char>(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | code >> 6);
    tail(0);
  } else if (code < 0x10000) {
    text += static_cast<char>(0xE0 | code >> 12);
    tail(6);
    tail(0);
  } else {
    text += static_cast<char>(0xF0 | code >> 18);
    tail(12);
    tail(6);
    tail(0);
  }
}

}  // namespace onlinux

namespace platform {

// Stands for what is no character.
constexpr char32_t Replacement = 0xFFFD;

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), onlinux::LowerAscii);
  if (std::ranges::all_of(lower, [](char c) { return static_cast<unsigned char>(c) < 0x80; })) return lower;
  static const onlinux::Letters letters;
  lower.clear();
  while (!text.empty()) {
    const auto character = onlinux::FirstCharacter(text);
    if (character.valid)
      onlinux::AppendCharacter(lower, letters.Lower(character.code));
    else
      lower += text[0];
    text.remove_prefix(character.length);
  }
  return lower;
}

std::string FromUtf16(std::u16string_view units) {
  std::string text;
  for (std::size_t i = 0; i < units.size(); ++i) {
    const char32_t unit = units[i];
    const char32_t next = i + 1 < units.size() ? units[i + 1] : u'\0';
    if (unit < 0xD800 || unit > 0xDFFF) {
      onlinux::AppendCharacter(text, unit);
    } else if (unit < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
      onlinux::AppendCharacter(text, 0x10000 + ((unit & 0x3FF) << 10 | (next & 0x3FF)));
      ++i;
    } else {
      onlinux::AppendCharacter(text, Replacement);
    }
  }
  return text;
}

std::u16string ToUtf16(std::string_view text) {
  std::u16string units;
  while (!text.empty()) {
    const auto character = onlinux::FirstCharacter(text);
    const auto code = character.valid ? character.code : Replacement;
    if (code < 0x10000)
      units += static_cast<char16_t>(code);
    else
      units += {static_cast<char16_t>(0xD7C0 + (code >> 10)), static_cast<char16_t>(0xDC00 | (code & 0x3FF))};
    text.remove_prefix(character.length);
  }
  return units;
}

std::size_t CharacterLength(std::string_view text) { return text.empty() ? 0 : onlinux::FirstCharacter(text).length; }

}  // namespace platform
