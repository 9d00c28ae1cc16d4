#pragma once

#include <string>
#include <string_view>

#include "NaiveMatch.h"

namespace naive {

// Whether a no-kill list, which is plain text or UTF-8, covers a process.
inline bool Covers(std::string list, const std::string& name) {
  list += '\r';
  for (std::size_t at = 0; (at = list.find("\r\n", at)) != std::string::npos; ++at) list.erase(at + 1, 1);
  for (std::size_t end = 0; (end = list.find('\r')) != std::string::npos; list.erase(0, end + 1)) {
    auto line = platform::LowerCase(list.substr(0, end));
    while (line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
    line.erase(0, line.find_first_not_of(' '));
    line.erase(line.find_last_not_of(' ') + 1);
    if (line.empty() || line[0] == ';') continue;
    if (Match(platform::LowerCase(name), "*" + line).value_or(true)) return true;
  }
  return false;
}

}  // namespace naive
