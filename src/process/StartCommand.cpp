#include "process/StartCommand.h"

#include "platform/kernel32.h"
#include "platform/shell32.h"

namespace velmaro {

void StartCommand(const std::string& command, int showCommand) {
  constexpr int notFound = 2;
  // With arguments behind it, a command is no file that the shell finds.
  if (platform::ShellExecuteA(0, "", command, "", "C:\\", showCommand) == notFound)
    platform::WinExec(command, showCommand);
}

}  // namespace velmaro
