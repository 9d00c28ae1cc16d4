#pragma once

#include <cstdint>
#include <string>

#include "platform/types.h"

namespace platform {

inline constexpr std::uint32_t HKEY_LOCAL_MACHINE = 0x80000002;
inline constexpr std::int32_t ERROR_SUCCESS = 0;
inline constexpr std::int32_t ERROR_FILE_NOT_FOUND = 2;
inline constexpr std::int32_t ERROR_MORE_DATA = 234;

// Opens a key of the registry for reading. 0 when it did.
std::int32_t RegOpenKeyA(std::uint32_t root, const std::string& subKey, std::uint32_t& key);
// Reads a value of any type as bytes. `size` is the room in `data` before the call and the size of the data, a final
// NUL included, after it. Gives `ERROR_MORE_DATA` when the room is too small.
std::int32_t RegQueryValueExA(std::uint32_t key, const std::string& value, std::uint32_t& type, char* data,
                              std::uint32_t& size);
// Closes a key. 0 when it did.
std::int32_t RegCloseKey(std::uint32_t key);

}  // namespace platform
