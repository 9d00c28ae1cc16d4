#include "platform/windows/ground/System.h"

namespace platform {

std::int32_t RegOpenKeyA(std::uint32_t root, const std::string& subKey, std::uint32_t& key) {
  HKEY opened = nullptr;
  // What 32-bit programs wrote there, whatever this one is.
  const auto result = ::RegOpenKeyExA(ToNative<HKEY>(root), subKey.c_str(), 0, KEY_READ | KEY_WOW64_32KEY, &opened);
  key = ToNumber(opened);
  return result;
}

std::int32_t RegQueryValueExA(std::uint32_t key, const std::string& value, std::uint32_t& type, char* data,
                              std::uint32_t& size) {
  DWORD nativeType = 0;
  DWORD bytes = size;
  const auto result = ::RegQueryValueExA(ToNative<HKEY>(key), value.c_str(), nullptr, &nativeType,
                                         reinterpret_cast<BYTE*>(data), &bytes);
  type = nativeType;
  size = bytes;
  return result;
}

std::int32_t RegCloseKey(std::uint32_t key) { return ::RegCloseKey(ToNative<HKEY>(key)); }

}  // namespace platform
