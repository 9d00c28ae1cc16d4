#pragma once

#include <string>

namespace velmaro {

// Reads a value of the program's settings; the default where it is missing or no text.
std::string GetSetting(const std::string& key, const std::string& defaultValue = "");
// Writes a value of the program's settings. A failure is not reported.
void SaveSetting(const std::string& key, const std::string& value);

}  // namespace velmaro
