#pragma once

#include <cstdint>
#include <functional>

namespace onlinux {

// Gives one thread, 0 for the caller's, the policy and nice value of a priority class, both in one step. What is
// refused is left as it was; false then, and for a number that is no class.
bool SetThreadClass(std::uint32_t threadId, std::uint32_t priorityClass);
// Gives a process a priority class: all of its threads or none. A thread with a real-time or batch policy of its own
// keeps it, and under Real Time a thread that is real-time already. `gone` is asked before each thread and stops the
// change, since threads are named by numbers alone, and those are free for others once the process is gone. False where
// it was refused.
bool SetProcessClass(std::uint32_t processId, std::uint32_t priorityClass, const std::function<bool()>& gone);

}  // namespace onlinux
