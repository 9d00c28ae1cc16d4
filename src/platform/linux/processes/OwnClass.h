#pragma once

#include <cstdint>
#include <string>

namespace onlinux {

// What this process got of a priority class that it asked for.
struct Taken {
  std::uint32_t asked = 0;
  std::uint32_t got = 0;  // 0: it was left as it is
  bool isSpared = false;  // Real Time was not asked of the kernel, since it would stop the rest of the machine
  std::uint32_t now = 0;  // read back
};

// Why Real Time is spared.
inline constexpr const char* LeavesNoRoom = "would leave nothing of a core to other programs";

// Gives this process, which is about to become a program, a priority class; 0 leaves it as it is. What is no Real Time
// can still be High.
Taken TakeClass(std::uint32_t priorityClass);
// Has the user's service manager give the class to the unit of this process, which with `apart` is a new one, and notes
// what it got by that. False where no manager does so.
bool TakeUnit(Taken& taken, bool apart);
// Makes the nice value of a class count against programs of other sessions too, where this process has one of its own
// or can begin one without the loss of a terminal. False where its group is shared with others.
bool TakeGroup(std::uint32_t priorityClass);
// One sentence on what a program did not get; empty where it got all.
std::string Shortfall(const Taken& taken, const std::string& program);

}  // namespace onlinux
