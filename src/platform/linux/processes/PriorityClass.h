#pragma once

#include <cstdint>
#include <optional>

namespace onlinux {

// True for a scheduling policy whose threads run before all others.
bool IsRealTime(std::uint32_t policy);
// The base priority that a scheduling policy and a nice value stand for: 24, 13, 10, 8, 6 or 4.
std::int32_t BasePriority(int policy, int nice);
// The priority class that such a base priority stands for.
std::uint32_t ClassOfBasePriority(std::int32_t basePriority);
// The weight of a control group that stands for a priority class, as the kernel holds the nice value of the class; for
// Real Time, which no group has, that of High.
std::uint64_t WeightOfClass(std::uint32_t priorityClass);
// The nice value of a priority class; nothing for Real Time, which has none, and for a number that is no class.
std::optional<int> NiceOfClass(std::uint32_t priorityClass);
}  // namespace onlinux
