#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>

#include "platform/linux/processes/OwnClass.h"
#include "platform/linux/starts/Command.h"

namespace onlinux {

// What shells end with where a program is not there, and where it can't be run.
inline constexpr int NotThere = 127;
inline constexpr int CanNotBeRun = 126;

// Becomes a program, and comes back only with the system's error. A file that may be executed and is no program after
// all, since it names no interpreter, is run by the shell where its name ends in ".sh" and else opened as a document,
// here and below.
int Become(const Command& command);

// A program that was started apart from this one.
struct Apart {
  int error = 0;  // the system's; 0 where it runs
  pid_t id = 0;
  Taken taken;
};
// Starts a program apart from this one, with a priority class or, for 0, this one's: it takes over none of its open
// files and outlives it and its terminal. An empty folder leaves the current one. Returns when the program runs.
Apart StartApart(const Command& command, const std::string& folder, std::uint32_t priorityClass = 0);

}  // namespace onlinux
