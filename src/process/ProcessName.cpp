#include "process/ProcessName.h"

#include "runtime/Text.h"

namespace velmaro {

std::optional<std::string> ProcessOfCommand(const std::string& command) {
  constexpr std::string_view ending = ".exe";
  const auto text = [&](std::size_t start, std::size_t length) { return std::string(Mid(command, start, length)); };
  if (const auto at = InStr(1, command, ending, Compare::IgnoreCase); at != 0)
    return text(1, static_cast<std::size_t>(at) + ending.size() - 1);
  if (WildcardMatch(command, "\"*\" *")) {
    const auto quote = static_cast<std::size_t>(InStr(2, command, "\"", Compare::Exact));
    return text(2, quote < 2 ? 0 : quote - 2) + std::string(ending);
  }
  if (WildcardMatch(command, "* *")) {
    const auto space = static_cast<std::size_t>(InStr(2, command, " ", Compare::Exact));
    return space == 0 ? command : text(1, space - 1) + std::string(ending);
  }
  return std::nullopt;
}

}  // namespace velmaro
