#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace platform {

// What is to be started, and with what.
struct Start {
  std::string command;                          // a text as the user typed it, or words, each with a NUL behind it
  std::uint32_t priorityClass = 0;              // 0 leaves it as it is
  int showCommand = 1;                          // 0 hidden, 1 normal, 2 minimized, 3 maximized
  std::optional<std::string> titleToHide = {};  // of a window to hide three quarters of a second later
  bool takesPlace = false;                      // the program takes the place of this one
  bool atHome = false;                          // it begins in the user's home folder, not in the current one
};

// What became of it.
struct Started {
  std::string program;              // its path
  int exitCode = 0;                 // 0 where it runs, 127 where it is not there, 126 where it can't be run
  std::uint32_t priorityClass = 0;  // read back; 0 where nothing runs
  std::string shortfall = {};       // why it is not the one that was asked for, and what would help
};

// Does what comes before a start. Where the platform may end a program that claims memory, a process of its own does
// it: the worst then costs this work, and never the start.
void DoBeforeStart(const std::function<void()>& work);
// Starts a program with its priority class, so that nobody has to find its process by a name afterwards. Nothing where
// a start takes no class with it on this platform: nothing is started then. A start that takes this program's place
// comes back only where it failed. The error output tells a failure and a class that was refused.
std::optional<Started> StartAtClass(const Start& start);

}  // namespace platform
