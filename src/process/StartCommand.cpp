#include "process/StartCommand.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/kernel32.h"
#include "platform/machine.h"
#include "platform/shell32.h"
#include "platform/user32.h"
#include "process/ClassChange.h"
#include "runtime/Boxes.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

std::uint32_t ClassOfMode(std::int16_t mode) {
  constexpr std::array classes = {platform::NORMAL_PRIORITY_CLASS, platform::HIGH_PRIORITY_CLASS,
                                  platform::REALTIME_PRIORITY_CLASS, platform::IDLE_PRIORITY_CLASS};
  const auto at = static_cast<std::size_t>(mode);
  return at < classes.size() ? classes[at] : 0;
}

constexpr auto Root = "C:\\";

// The shell takes a program and what stands behind it apart, and looks for the program elsewhere.
void StartWithRights(const std::string& commandLine, const std::string& folder, int showCommand) {
  const auto [program, parameters] = PartsOf(commandLine);
  const auto whole = platform::FindProgram(program);
  platform::ShellExecuteA(0, "", whole.empty() ? program : whole, parameters, folder, showCommand);
}

}  // namespace

void StartCommand(const std::string& command, int showCommand) {
  constexpr int notFound = 2;
  // With arguments behind it, a command is no file that the shell finds.
  if (platform::ShellExecuteA(0, "", command, "", Root, showCommand) != notFound) return;
  if (platform::WinExec(command, showCommand) == platform::ERROR_ELEVATION_REQUIRED)
    StartWithRights(command, Root, showCommand);
}

void StartCommandLine(const std::string& commandLine) {
  constexpr int normalWithFocus = 1;
  if (platform::Shell(commandLine, normalWithFocus) == platform::ERROR_ELEVATION_REQUIRED)
    StartWithRights(commandLine, "", normalWithFocus);
}

CommandParts PartsOf(const std::string& commandLine) {
  const bool quoted = commandLine.starts_with('"');
  const std::size_t start = quoted ? 1 : 0;
  const auto ends = quoted ? "\"" : " \t";
  const auto parts = [&](std::size_t end) {
    const std::string_view line = commandLine;
    return CommandParts{.program = std::string(line.substr(start, end - start)),
                        .parameters = std::string(Trim(line.substr(std::min(line.size(), end + start))))};
  };
  const auto first = commandLine.find_first_of(ends, start);
  for (auto end = first; !quoted; end = commandLine.find_first_of(ends, end + 1)) {
    if (auto found = parts(std::min(end, commandLine.size())); !platform::FindProgram(found.program).empty())
      return found;
    if (end == std::string::npos) break;
  }
  return parts(std::min(first, commandLine.size()));
}

namespace {

void TellClass(const platform::Started& started, std::uint32_t asked) {
  const ClassOutcome outcome{.made = started.shortfall.empty(), .now = started.priorityClass};
  MsgBox(ClassSentence(started.program, asked, outcome, started.shortfall + '.'), platform::MB_ICONINFORMATION);
}

}  // namespace

void TellIfNotRaised(const platform::Started& started, std::int16_t mode) {
  const auto now = started.priorityClass;
  const bool isRaised = now == platform::HIGH_PRIORITY_CLASS || now == platform::REALTIME_PRIORITY_CLASS;
  if (now != 0 && !isRaised && !started.shortfall.empty()) TellClass(started, ClassOfMode(mode));
}

std::optional<platform::Started> StartAtMode(platform::Start start, std::int16_t mode, bool quiet) {
  start.priorityClass = ClassOfMode(mode);
  auto started = platform::StartAtClass(start);
  if (!quiet && started && started->priorityClass != 0) TellClass(*started, start.priorityClass);
  return started;
}

}  // namespace velmaro
