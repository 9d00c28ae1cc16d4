#include "platform/linux/processes/PriorityClass.h"

#include <sched.h>

#include "platform/kernel32.h"
#include "platform/rights.h"

namespace onlinux {

bool IsRealTime(std::uint32_t policy) {
  constexpr int deadline = 6;  // named by the kernel's headers only
  return policy == SCHED_FIFO || policy == SCHED_RR || policy == deadline;
}

std::int32_t BasePriority(int policy, int nice) {
  if (IsRealTime(static_cast<std::uint32_t>(policy))) return 24;
  if (policy == SCHED_IDLE || nice >= 15) return 4;
  if (nice <= -10) return 13;
  if (nice < 0) return 10;
  return nice == 0 ? 8 : 6;
}

std::uint32_t ClassOfBasePriority(std::int32_t basePriority) {
  switch (basePriority) {
    case 4:
      return platform::IDLE_PRIORITY_CLASS;
    case 6:
      return platform::BELOW_NORMAL_PRIORITY_CLASS;
    case 10:
      return platform::ABOVE_NORMAL_PRIORITY_CLASS;
    case 13:
      return platform::HIGH_PRIORITY_CLASS;
    case 24:
      return platform::REALTIME_PRIORITY_CLASS;
    default:
      return platform::NORMAL_PRIORITY_CLASS;
  }
}

std::uint64_t WeightOfClass(std::uint32_t priorityClass) {
  switch (priorityClass) {
    case platform::IDLE_PRIORITY_CLASS:
      return 1;
    case platform::HIGH_PRIORITY_CLASS:
    case platform::REALTIME_PRIORITY_CLASS:
      return 932;
    default:
      return 100;
  }
}

std::optional<int> NiceOfClass(std::uint32_t priorityClass) {
  switch (priorityClass) {
    case platform::HIGH_PRIORITY_CLASS:
      return -10;
    case platform::NORMAL_PRIORITY_CLASS:
      return 0;
    case platform::IDLE_PRIORITY_CLASS:
      return 19;
    default:
      return std::nullopt;
  }
}

}  // namespace onlinux
