#pragma once

#include <map>
#include <string>
#include <string_view>

namespace onlinux {

// The values of the user's settings by their keys.
using Settings = std::map<std::string, std::string>;

// Reads the settings from the text of their file; a line without a "=" holds none.
Settings ParseSettings(std::string_view text);
// The text of a file that holds the settings, whatever bytes stand in them.
std::string SettingsText(const Settings& values);

}  // namespace onlinux
