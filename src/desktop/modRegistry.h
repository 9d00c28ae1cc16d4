#pragma once

#include <cstdint>
#include <string>

namespace velmaro {

// Reads one value of the registry as text, whatever its type: up to 254 characters. Empty where the key or value is
// missing, too long or can't be read.
std::string RegGetString(std::uint32_t rootKey, const std::string& subKey, const std::string& valueName);

// True where a file can be measured and has at least 1 byte.
bool FileExists(const std::string& fileName);

}  // namespace velmaro
