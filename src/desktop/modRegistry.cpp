#include "desktop/modRegistry.h"

#include "platform/advapi32.h"
#include "platform/kernel32.h"
#include "runtime/Boxes.h"

namespace velmaro {

std::string RegGetString(std::uint32_t rootKey, const std::string& subKey, const std::string& valueName) {
  std::uint32_t key = 0;
  if (platform::RegOpenKeyA(rootKey, subKey, key) != platform::ERROR_SUCCESS) return {};
  std::string buffer(255, ' ');
  std::uint32_t type = 0;
  auto size = static_cast<std::uint32_t>(buffer.size());
  const auto status = platform::RegQueryValueExA(key, valueName, type, buffer.data(), size);
  std::string text;
  // The last byte of the data is the NUL that ends a text.
  if (status == platform::ERROR_SUCCESS && size >= 2) text = buffer.substr(0, size - 1);
  // A failed close has a message of its own, so the key is closed here and not by an owner.
  if (platform::RegCloseKey(key) != platform::ERROR_SUCCESS)
    MsgBox("RegCloseKey Failed: " + subKey, platform::MB_ICONWARNING);
  return text;
}

bool FileExists(const std::string& fileName) { return platform::GetFileLength(fileName) >= 1; }

}  // namespace velmaro
