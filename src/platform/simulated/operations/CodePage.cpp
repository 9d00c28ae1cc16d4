#include <locale.h>

#include <cwchar>
#include <cwctype>
#include <memory>
#include <stdexcept>

#include "platform/machine.h"
#include "platform/simulated/Desktop.h"

using simulated::TheDesktop;

// The desktop's code page is UTF-8.
namespace platform {
namespace {

struct FreeLocale {
  using pointer = locale_t;
  void operator()(locale_t locale) const { freelocale(locale); }
};

locale_t Utf8() {
  static const std::unique_ptr<locale_t, FreeLocale> locale(newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{}));
  if (!locale) throw std::logic_error("this machine has no UTF-8 locale");
  return locale.get();
}

// Makes UTF-8 the thread's encoding for as long as it lives, whatever the locale of the test run.
class InUtf8 {
 public:
  InUtf8() : before_(uselocale(Utf8())) {}
  ~InUtf8() { uselocale(before_); }
  InUtf8(const InUtf8&) = delete;
  InUtf8& operator=(const InUtf8&) = delete;

 private:
  locale_t before_;
};

// Takes the first character of a text apart; 0 bytes where it is no text.
std::size_t Decode(std::string_view text, wchar_t& letter) {
  std::mbstate_t state{};
  const auto bytes = std::mbrtowc(&letter, text.data(), text.size(), &state);
  return bytes > text.size() ? 0 : bytes;
}

void AppendLower(std::string& to, wchar_t letter) {
  char bytes[16];
  std::mbstate_t state{};
  to.append(bytes, std::wcrtomb(bytes, static_cast<wchar_t>(std::towlower(static_cast<wint_t>(letter))), &state));
}

}  // namespace

std::string LowerCase(std::string_view text) {
  std::string lower;
  lower.reserve(text.size());
  while (!text.empty()) {
    if (static_cast<unsigned char>(text[0]) < 128) {
      lower += text[0] >= 'A' && text[0] <= 'Z' ? static_cast<char>(text[0] + 32) : text[0];
      text.remove_prefix(1);
      continue;
    }
    const InUtf8 encoding;
    wchar_t letter = 0;
    const auto bytes = Decode(text, letter);
    if (bytes != 0)
      AppendLower(lower, letter);
    else
      lower += text[0];
    text.remove_prefix(bytes != 0 ? bytes : 1);
  }
  return lower;
}

std::string FromUtf16(std::u16string_view units) {
  std::string text;
  const InUtf8 encoding;
  for (std::size_t i = 0; i < units.size(); ++i) {
    auto letter = static_cast<wchar_t>(units[i]);
    const bool isPair = units[i] >> 10 == 0x36 && i + 1 < units.size() && units[i + 1] >> 10 == 0x37;
    if (isPair) letter = 0x10000 + ((units[i] & 0x3FF) << 10 | (units[i + 1] & 0x3FF));
    i += isPair;
    char bytes[16];
    std::mbstate_t state{};
    const auto count = std::wcrtomb(bytes, letter, &state);
    text.append(count > sizeof bytes ? "\xEF\xBF\xBD" : std::string(bytes, count));
  }
  return text;
}

std::u16string ToUtf16(std::string_view text) {
  std::u16string units;
  const InUtf8 encoding;
  while (!text.empty()) {
    wchar_t letter = 0;
    const auto bytes = text[0] == '\0' ? 1 : Decode(text, letter);
    if (bytes == 0) letter = 0xFFFD;
    if (letter >= 0x10000) units += static_cast<char16_t>(0xD7C0 + (letter >> 10));
    units += static_cast<char16_t>(letter < 0x10000 ? letter : 0xDC00 | (letter & 0x3FF));
    text.remove_prefix(bytes != 0 ? bytes : 1);
  }
  return units;
}

std::string FromUtf8(std::string_view bytes) { return std::string(bytes); }

std::string ToUtf8(std::string_view text) { return std::string(text); }

std::optional<std::string> FromLocalPage(std::string_view bytes) {
  if (!TheDesktop().localPageIsLatin1 || ToUtf16(bytes).find(u'\xFFFD') == std::u16string::npos) return std::nullopt;
  std::u16string letters;
  for (const char byte : bytes) letters += static_cast<unsigned char>(byte);
  return FromUtf16(letters);
}

std::optional<std::string> ToLocalPage(std::string_view text) {
  std::string bytes;
  for (const auto unit : ToUtf16(text)) {
    if (!TheDesktop().localPageIsLatin1 || unit > 0xFF) return std::nullopt;
    bytes += static_cast<char>(unit);
  }
  return bytes;
}

std::size_t CharacterLength(std::string_view text) {
  if (text.empty() || static_cast<unsigned char>(text[0]) < 128) return text.empty() ? 0 : 1;
  const InUtf8 encoding;
  wchar_t letter = 0;
  const auto bytes = Decode(text, letter);
  return bytes != 0 ? bytes : 1;
}

}  // namespace platform
