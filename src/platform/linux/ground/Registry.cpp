#include "platform/advapi32.h"

// There is no registry here: what is looked for in it is not found.
namespace platform {

std::int32_t RegOpenKeyA(std::uint32_t, const std::string&, std::uint32_t&) { return ERROR_FILE_NOT_FOUND; }

std::int32_t RegQueryValueExA(std::uint32_t, const std::string&, std::uint32_t&, char*, std::uint32_t&) {
  return ERROR_FILE_NOT_FOUND;
}

std::int32_t RegCloseKey(std::uint32_t) { return ERROR_SUCCESS; }

}  // namespace platform
