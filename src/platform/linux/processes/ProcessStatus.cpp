#include "platform/linux/processes/ProcessStatus.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/ground/ReadNumber.h"
#include "platform/linux/ground/ReadWhole.h"

namespace onlinux {
namespace {

// The library's search for one of several characters calls a function for each one that it passes.
bool IsBlank(char c) { return c == ' ' || c == '\n'; }

}  // namespace

std::optional<ProcessStatus> ParseStatus(std::string_view line) {
  const auto open = line.find('(');
  const auto close = line.rfind(')');
  if (open == std::string_view::npos || close == std::string_view::npos || close < open) return std::nullopt;
  constexpr std::size_t count = 41;
  std::array<std::string_view, count + 1> fields;  // by the numbers of the manual, which begin at 1
  std::size_t filled = 2;
  for (auto at = line.begin() + static_cast<std::ptrdiff_t>(close) + 1; filled < count;) {
    const auto start = std::find_if_not(at, line.end(), IsBlank);
    if (start == line.end()) return std::nullopt;
    at = std::find_if(start, line.end(), IsBlank);
    fields[++filled] = {start, at};
  }
  ProcessStatus status;
  status.state = fields[3].front();
  status.hasTerminal = fields[7] != "0";
  status.shortName = line.substr(open + 1, close - open - 1);
  const bool whole = ReadNumber(fields[4], status.parent) && ReadNumber(fields[9], status.flags) &&
                     ReadNumber(fields[19], status.nice) && ReadNumber(fields[20], status.threads) &&
                     ReadNumber(fields[22], status.startTime) && ReadNumber(fields[41], status.policy);
  return whole ? std::optional(std::move(status)) : std::nullopt;
}

std::optional<ProcessStatus> ReadStatus(std::uint32_t processId) {
  return ParseStatus(ReadSmall(AT_FDCWD, "/proc/" + std::to_string(processId) + "/stat", 1024));
}

}  // namespace onlinux
