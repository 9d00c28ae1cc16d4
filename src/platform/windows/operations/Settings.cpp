#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"

namespace platform {
namespace {

void DropKey(HKEY key) { ::RegCloseKey(key); }
using OwnedKey = Owned<HKEY, &DropKey>;

std::wstring PathOf(const std::string& application, const std::string& section) {
  return L"Software\\" + Widen(application) + L'\\' + Widen(section);
}

std::optional<std::wstring> ReadText(HKEY key, const std::wstring& name) {
  std::wstring text;
  for (;;) {
    auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    DWORD type = 0;
    const auto result =
        ::RegQueryValueExW(key, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &bytes);
    const bool moreData =
        result == ERROR_MORE_DATA || (result == ERROR_SUCCESS && bytes > text.size() * sizeof(wchar_t));
    if ((result != ERROR_SUCCESS && !moreData) || type != REG_SZ) return {};
    if (!moreData) {
      text.resize(bytes / sizeof(wchar_t));
      return text;
    }
    // Another program may write a longer value between the two calls, so the room is tested again.
    text.resize((bytes + 1) / sizeof(wchar_t));
  }
}

}  // namespace

std::optional<std::string> ReadSetting(const std::string& application, const std::string& section,
                                       const std::string& key) {
  OwnedKey store;
  HKEY opened = nullptr;
  if (::RegOpenKeyExW(HKEY_CURRENT_USER, PathOf(application, section).c_str(), 0, KEY_QUERY_VALUE, &opened) !=
      ERROR_SUCCESS)
    return {};
  store.Reset(opened);
  auto text = ReadText(store.get(), Widen(key));
  if (!text) return {};
  return Narrow(text->substr(0, text->find(L'\0')));
}

bool WriteSetting(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& value) {
  HKEY opened = nullptr;
  if (::RegCreateKeyExW(HKEY_CURRENT_USER, PathOf(application, section).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                        &opened, nullptr) != ERROR_SUCCESS)
    return false;
  const OwnedKey store(opened);
  const auto text = Widen(value, Nul::Escaped);
  return ::RegSetValueExW(store.get(), Widen(key).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                          static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

}  // namespace platform
