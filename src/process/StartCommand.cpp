#include "process/StartCommand.h"

#include <array>

#include "platform/kernel32.h"
#include "platform/shell32.h"
#include "platform/user32.h"
#include "process/ClassChange.h"
#include "runtime/Boxes.h"

namespace velmaro {
namespace {

std::uint32_t ClassOfMode(std::int16_t mode) {
  constexpr std::array classes = {platform::NORMAL_PRIORITY_CLASS, platform::HIGH_PRIORITY_CLASS,
                                  platform::REALTIME_PRIORITY_CLASS, platform::IDLE_PRIORITY_CLASS};
  const auto at = static_cast<std::size_t>(mode);
  return at < classes.size() ? classes[at] : 0;
}

}  // namespace

void StartCommand(const std::string& command, int showCommand) {
  constexpr int notFound = 2;
  // With arguments behind it, a command is no file that the shell finds.
  if (platform::ShellExecuteA(0, "", command, "", "C:\\", showCommand) == notFound)
    platform::WinExec(command, showCommand);
}

std::optional<platform::Started> StartAtMode(platform::Start start, std::int16_t mode, bool quiet) {
  start.priorityClass = ClassOfMode(mode);
  auto started = platform::StartAtClass(start);
  if (quiet || !started || started->priorityClass == 0) return started;
  const ClassOutcome outcome{.made = started->shortfall.empty(), .now = started->priorityClass};
  const auto sentence = ClassSentence(started->program, start.priorityClass, outcome, started->shortfall + '.');
  MsgBox(sentence, platform::MB_ICONINFORMATION);
  return started;
}

}  // namespace velmaro
