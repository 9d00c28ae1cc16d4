#pragma once

#include <cstdint>
#include <functional>

namespace onlinux {

// The class that a program is given where one is asked for: High in place of Real Time where that would leave nothing
// of a core to other programs, since the kernel keeps no share of the time for them or there is but one core.
std::uint32_t SafeClass(std::uint32_t priorityClass);
// True where this program may give the threads of a process the nice value of a class.
bool MayRaise(std::uint32_t processId, std::uint32_t priorityClass);
// Gives one thread, 0 for the caller's, the policy and nice value of the safe class, both in one step. What is
// refused is left as it was; false then, and for a number that is no class.
bool SetThreadClass(std::uint32_t threadId, std::uint32_t priorityClass);
// Gives a process the safe class in place of a priority class: all of its threads or none. A thread with a real-time or
// batch policy of its own keeps it, and under Real Time a thread that is real-time already. `gone` is asked before each
// thread and stops the change, since threads are named by numbers alone, and those are free for others once the process
// is gone. False where it was refused.
bool SetProcessClass(std::uint32_t processId, std::uint32_t priorityClass, const std::function<bool()>& gone);

}  // namespace onlinux
