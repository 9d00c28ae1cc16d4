#pragma once

#include <cstdint>

namespace onlinux {

// The base priority that a scheduling policy and a nice value stand for: 24, 13, 10, 8, 6 or 4.
std::int32_t BasePriority(int policy, int nice);
// Gives one thread the policy and nice value of a priority class. What is refused is left as it was; false then, and
// for a number that is no class.
bool SetThreadClass(std::uint32_t threadId, std::uint32_t priorityClass);

}  // namespace onlinux
