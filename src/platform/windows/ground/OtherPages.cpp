#include <algorithm>

#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"

namespace platform {
namespace {

std::optional<std::wstring> Decode(UINT page, DWORD flags, std::string_view bytes) {
  const auto size = static_cast<int>(bytes.size());
  const int count = ::MultiByteToWideChar(page, flags, bytes.data(), size, nullptr, 0);
  if (count < 1) return {};
  std::wstring text(static_cast<std::size_t>(count), L'\0');
  ::MultiByteToWideChar(page, flags, bytes.data(), size, text.data(), count);
  return text;
}

// `lost` becomes true where the page does not hold a character; UTF-8 takes no question for it.
std::string Encode(UINT page, std::wstring_view text, BOOL* lost) {
  const auto size = static_cast<int>(text.size());
  const DWORD flags = lost ? WC_NO_BEST_FIT_CHARS : 0;
  const int count = ::WideCharToMultiByte(page, flags, text.data(), size, nullptr, 0, nullptr, lost);
  std::string bytes(static_cast<std::size_t>(count), '\0');
  ::WideCharToMultiByte(page, flags, text.data(), size, bytes.data(), count, nullptr, lost);
  return bytes;
}

// 0 for a locale that has none of its own.
UINT LocalPage() {
  DWORD page = 0;
  ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                    reinterpret_cast<wchar_t*>(&page), sizeof page / sizeof(wchar_t));
  return PageIsUtf8() && page != CP_UTF8 ? page : 0;
}

}  // namespace

std::string FromUtf8(std::string_view bytes) {
  return PageIsUtf8() ? std::string(bytes) : Narrow(Decode(CP_UTF8, 0, bytes).value_or(L""));
}

std::string ToUtf8(std::string_view text) {
  return PageIsUtf8() ? std::string(text) : Encode(CP_UTF8, Widen(text), nullptr);
}

std::optional<std::string> FromLocalPage(std::string_view bytes) {
  if (std::ranges::all_of(bytes, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; })) return {};
  const auto page = LocalPage();
  if (page == 0 || Decode(CP_UTF8, MB_ERR_INVALID_CHARS, bytes)) return {};
  // No text of any locale holds a NUL.
  if (bytes.find('\0') != std::string_view::npos) return {};
  const auto text = Decode(page, MB_ERR_INVALID_CHARS, bytes);
  return text ? std::optional(Narrow(*text)) : std::nullopt;
}

std::optional<std::string> ToLocalPage(std::string_view text) {
  const auto page = LocalPage();
  BOOL lost = FALSE;
  auto bytes = page != 0 ? Encode(page, Widen(text), &lost) : std::string();
  return page != 0 && !lost ? std::optional(std::move(bytes)) : std::nullopt;
}

}  // namespace platform
