#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "platform/kernel32.h"
#include "platform/linux/desktop/FirstWindow.h"
#include "platform/linux/ground/Say.h"
#include "platform/linux/processes/Descent.h"
#include "platform/linux/processes/EndProcess.h"
#include "platform/linux/processes/OwnClass.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/processes/Unit.h"
#include "platform/linux/starts/Aside.h"
#include "platform/linux/starts/FollowIntoUnits.h"
#include "platform/linux/starts/SharedGroup.h"
#include "platform/linux/starts/Start.h"
#include "platform/reach.h"
#include "platform/rights.h"
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

void HideByTitle(const std::string& title) {
  constexpr std::uint32_t delay = 750;
  Sleep(delay);
  const auto window = FindWindowA(title);
  if (window && !ShowWindow(window, SW_HIDE) && !WhyOutOfReach(window, SWP_HIDEWINDOW).empty())
    onlinux::Say("the desktop has not hidden the window " + title);
}

void ShowFirst(const onlinux::Descent& descent, int showCommand, const std::string& program) {
  constexpr std::chrono::seconds limit{10};
  const auto state = static_cast<onlinux::ShowState>(showCommand);
  if (onlinux::ShowFirstWindow(descent, state, limit) != onlinux::FirstWindow::Stage::Asked) return;
  const std::array words = {"hidden", "shown", "minimized", "maximized"};
  onlinux::Say(std::string("the desktop has not ") + words.at(static_cast<std::size_t>(state)) + " the window of " +
               program);
}

// What is done to a program that starts and to its windows: each task by a process of its own, none where there is
// none.
class Tasks {
 public:
  Tasks(const Start& start, const Command& command) : start_(start), program_(command.path) {
    // Without a manager of units nothing makes one for itself.
    if (start.priorityClass != 0 && onlinux::HasManager()) before_ = onlinux::NoteBefore(command.words);
    if (start.showCommand != SW_SHOWNORMAL || before_) mark_.emplace();
  }
  void Begin(pid_t process, std::uint32_t priorityClass) const {
    const int errors = onlinux::ErrorOutputToKeep();
    if (start_.titleToHide) onlinux::DoAside(errors, [&] { HideByTitle(*start_.titleToHide); });
    if (!mark_) return;
    const onlinux::Descent descent{static_cast<std::uint32_t>(process), mark_->Line()};
    if (start_.showCommand != SW_SHOWNORMAL)
      onlinux::DoAside(errors, [&] { ShowFirst(descent, start_.showCommand, program_); });
    if (before_ && priorityClass != 0)
      onlinux::DoAside(-1, [&] { onlinux::FollowIntoUnits(descent, priorityClass, *before_); });
  }

 private:
  const Start& start_;
  std::string program_;
  std::optional<onlinux::Before> before_;  // where the start is followed
  std::optional<onlinux::Mark> mark_;      // stands in the environment while the program starts
};

// Lends the group that this program shares with others its class for as long as it runs.
void LendGroup(std::uint32_t priorityClass) {
  const auto nice = onlinux::NiceOfClass(priorityClass);
  if (!nice) return;
  const auto process = ::getpid();
  const auto self = onlinux::HoldProcess(process);
  onlinux::DoAside(self.get(), [&] { onlinux::LendGroup(process, self, *nice); });
}

std::string WhyLess(const onlinux::Taken& taken) {
  if (taken.got == taken.asked) return {};
  const auto spared = WhySpared(taken.asked);
  return spared.empty() ? WhatWouldHelp(0) : spared;
}

Started TakePlace(const Start& start, Command command) {
  auto taken = onlinux::TakeClass(start.priorityClass);
  if (!onlinux::TakeUnit(taken, false) && !onlinux::TakeGroup(taken.got)) LendGroup(taken.got);
  if (const auto line = onlinux::Shortfall(taken, command.path); !line.empty()) onlinux::Say(line);
  const Tasks tasks(start, command);
  tasks.Begin(::getpid(), taken.got);
  return Failed(command.path, onlinux::Become(command));
}

Started StartBeside(const Start& start, Command command) {
  const auto folder = start.atHome ? HomeFolder() : std::string();
  command.path = onlinux::Absolute(command.path);
  if (start.atHome) command.words.front() = command.path;
  const Tasks tasks(start, command);
  const auto apart = onlinux::StartApart(command, folder, start.priorityClass);
  if (apart.error != 0) return Failed(command.path, apart.error);
  if (const auto line = onlinux::Shortfall(apart.taken, command.path); !line.empty()) onlinux::Say(line);
  tasks.Begin(apart.id, apart.taken.got);
  return {.program = command.path, .priorityClass = apart.taken.now, .shortfall = WhyLess(apart.taken)};
}

}  // namespace

std::optional<Started> StartAtClass(const Start& start) {
  const auto words = WordsOf(start.command);
  onlinux::Refusal refusal;
  const auto command = onlinux::Resolve(words, refusal);
  if (!command) return Failed(refusal.name, refusal.error);
  return start.takesPlace ? TakePlace(start, *command) : StartBeside(start, *command);
}

}  // namespace platform
