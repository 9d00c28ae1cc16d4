#include "platform/linux/PriorityClass.h"

#include <sched.h>
#include <sys/resource.h>

#include <optional>

#include "platform/kernel32.h"

namespace onlinux {
namespace {

// Named by the kernel's headers only, which don't go together with those of the library.
constexpr int DeadlinePolicy = 6;

struct Scheduling {
  int policy;
  int realTimePriority;
  std::optional<int> nice;
};

std::optional<Scheduling> SchedulingOf(std::uint32_t priorityClass) {
  switch (priorityClass) {
    case platform::REALTIME_PRIORITY_CLASS:
      return Scheduling{SCHED_RR, 1, std::nullopt};
    case platform::HIGH_PRIORITY_CLASS:
      return Scheduling{SCHED_OTHER, 0, -10};
    case platform::NORMAL_PRIORITY_CLASS:
      return Scheduling{SCHED_OTHER, 0, 0};
    case platform::IDLE_PRIORITY_CLASS:
      return Scheduling{SCHED_OTHER, 0, 19};
    default:
      return std::nullopt;
  }
}

}  // namespace

std::int32_t BasePriority(int policy, int nice) {
  if (policy == SCHED_FIFO || policy == SCHED_RR || policy == DeadlinePolicy) return 24;
  if (policy == SCHED_IDLE || nice >= 15) return 4;
  if (nice <= -10) return 13;
  if (nice < 0) return 10;
  return nice == 0 ? 8 : 6;
}

bool SetThreadClass(std::uint32_t threadId, std::uint32_t priorityClass) {
  const auto wanted = SchedulingOf(priorityClass);
  if (!wanted) return false;
  const sched_param parameters{.sched_priority = wanted->realTimePriority};
  const bool policySet = ::sched_setscheduler(static_cast<pid_t>(threadId), wanted->policy, &parameters) == 0;
  const bool niceSet = !wanted->nice || ::setpriority(PRIO_PROCESS, threadId, *wanted->nice) == 0;
  return policySet && niceSet;
}

}  // namespace onlinux
