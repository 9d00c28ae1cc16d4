#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "NaiveMatch.h"

namespace naive {

using namespace std::string_view_literals;

// The text of a list in UTF-8, nothing for UTF-32, which is not read.
inline std::optional<std::string> ListText(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE\0\0"sv) || bytes.starts_with("\0\0\xFE\xFF"sv)) return std::nullopt;
  const bool little = bytes.starts_with("\xFF\xFE");
  auto text = std::string(bytes);
  if (little || bytes.starts_with("\xFE\xFF")) {
    std::u16string units;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
      const auto unit = static_cast<unsigned char>(bytes[at]) << 8 | static_cast<unsigned char>(bytes[at + 1]);
      const auto ordered = static_cast<char16_t>(little ? (unit & 0xFF) << 8 | unit >> 8 : unit);
      const bool begins = units.empty() || units.back() == u'\r' || units.back() == u'\n';
      if (!begins || ordered != u'\xFEFF') units += ordered;
    }
    text = platform::FromUtf16(units);
  }
  return text;
}

// Whether a no-kill list of these bytes covers a process.
inline bool Covers(std::string_view bytes, const std::string& name) {
  const auto text = ListText(bytes);
  if (!text) return true;
  auto list = *text + '\r';
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
