#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "platform/kernel32.h"
#include "platform/linux/Aside.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/OwnClass.h"
#include "platform/linux/PriorityClass.h"
#include "platform/linux/Say.h"
#include "platform/linux/SharedGroup.h"
#include "platform/linux/Start.h"
#include "platform/start.h"
#include "platform/user32.h"

namespace platform {
namespace {

using onlinux::Command;

std::vector<std::string> WordsOf(const std::string& command) {
  if (command.find('\0') == std::string::npos) return onlinux::SplitCommand(command);
  std::vector<std::string> words;
  for (std::size_t at = 0; at < command.size(); at = command.find('\0', at) + 1)
    words.emplace_back(command.c_str() + at);
  return words;
}

int ExitCodeOf(int error) { return error == ENOENT ? onlinux::NotThere : onlinux::CanNotBeRun; }

Started Failed(const std::string& program, int error) {
  onlinux::Say(program + ": " + std::strerror(error));
  return {.program = program, .exitCode = ExitCodeOf(error)};
}

std::string HomeFolder() {
  const char* home = std::getenv("HOME");
  return home && *home == '/' ? home : "/";
}

// What is done to the windows of a program once it runs, in a process of its own.
void TendWindows(const Start& start) {
  constexpr std::uint32_t delay = 750;
  if (!start.titleToHide) return;
  Sleep(delay);
  if (const auto window = FindWindowA(*start.titleToHide)) ShowWindow(window, SW_HIDE);
}

bool HasWindowsToTend(const Start& start) { return start.titleToHide.has_value(); }

// Does what is left to do beside a program that takes this one's place.
void Accompany(const Start& start, bool lends, std::uint32_t priorityClass) {
  const auto process = ::getpid();
  const auto nice = lends ? onlinux::NiceOfClass(priorityClass) : std::nullopt;
  if (!nice && !HasWindowsToTend(start)) return;
  const onlinux::Descriptor self(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
  if (nice) onlinux::DoAside(self.get(), [&] { onlinux::LendGroup(process, self.get(), *nice); });
  if (HasWindowsToTend(start)) onlinux::DoAside(-1, [&] { TendWindows(start); });
}

Started TakePlace(const Start& start, Command command) {
  const auto taken = onlinux::TakeClass(start.priorityClass);
  if (const auto line = onlinux::Shortfall(taken, command.path); !line.empty()) onlinux::Say(line);
  Accompany(start, !onlinux::TakeGroup(taken.got), taken.got);
  return Failed(command.path, onlinux::Become(command));
}

Started StartBeside(const Start& start, Command command) {
  const auto folder = start.atHome ? HomeFolder() : std::string();
  command.path = onlinux::Absolute(command.path);
  if (start.atHome) command.words.front() = command.path;
  const auto apart = onlinux::StartApart(command, folder, start.priorityClass);
  if (apart.error != 0) return Failed(command.path, apart.error);
  if (const auto line = onlinux::Shortfall(apart.taken, command.path); !line.empty()) onlinux::Say(line);
  if (HasWindowsToTend(start)) onlinux::DoAside(-1, [&] { TendWindows(start); });
  return {.program = command.path, .basePriority = apart.taken.basePriority};
}

}  // namespace

std::optional<Started> StartAtClass(const Start& start) {
  const auto words = WordsOf(start.command);
  int error = 0;
  const auto command = onlinux::Resolve(words, error);
  if (!command) return Failed(words.empty() ? std::string() : words.front(), error);
  return start.takesPlace ? TakePlace(start, *command) : StartBeside(start, *command);
}

}  // namespace platform
