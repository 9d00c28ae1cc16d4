#include "platform/linux/processes/SetClass.h"

#include <linux/capability.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/kernel32.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/processes/ProcFolder.h"
#include "platform/rights.h"

namespace onlinux {
namespace {

// Named by the kernel's headers only, which don't go together with those of the library.
constexpr std::uint64_t ResetOnFork = 1;
struct Attributes {
  std::uint32_t size = 48;
  std::uint32_t policy = SCHED_OTHER;
  std::uint64_t flags = 0;
  std::int32_t nice = 0;
  std::uint32_t priority = 0;
  std::uint64_t runtime = 0, deadline = 0, period = 0;
};
static_assert(sizeof(Attributes) == 48, "the kernel's first record of this kind has a fixed size");

// How one thread is scheduled. A real-time thread has a nice value too, which counts when it ends to be one.
struct Scheduling {
  Attributes attributes;
  int nice = 0;
};

struct Changed {
  std::uint32_t thread;
  Scheduling before;
};

int ReadSetting(const std::string& name) {
  const auto text = ReadWhole("/proc/sys/kernel/" + name);
  int value = -1;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

// A program that never pauses has its core for itself under Real Time, but for the share that the kernel keeps.
bool RealTimeLeavesRoom() {
  const int most = ReadSetting("sched_rt_runtime_us");
  return most >= 0 && most < ReadSetting("sched_rt_period_us") && ::sysconf(_SC_NPROCESSORS_ONLN) > 1;
}

std::optional<Attributes> AttributesOf(std::uint32_t priorityClass) {
  priorityClass = SafeClass(priorityClass);
  if (priorityClass == platform::REALTIME_PRIORITY_CLASS) return Attributes{.policy = SCHED_RR, .priority = 1};
  const auto nice = NiceOfClass(priorityClass);
  return nice ? std::optional(Attributes{.nice = *nice}) : std::nullopt;
}

std::optional<Scheduling> Read(std::uint32_t thread) {
  Scheduling read;
  if (::syscall(SYS_sched_getattr, thread, &read.attributes, sizeof read.attributes, 0) != 0) return std::nullopt;
  errno = 0;
  read.nice = ::getpriority(PRIO_PROCESS, thread);
  return errno == 0 ? std::optional(read) : std::nullopt;
}

bool Set(std::uint32_t thread, const Attributes& attributes) {
  return ::syscall(SYS_sched_setattr, thread, &attributes, 0) == 0;
}

// Without rights nobody may take a thread's promise back that its children are ordinary ones.
bool SetFrom(const Scheduling& before, std::uint32_t thread, Attributes wanted) {
  wanted.flags = before.attributes.flags & ResetOnFork;
  return Set(thread, wanted);
}

void Restore(const Changed& change) {
  Set(change.thread, change.before.attributes);
  ::setpriority(PRIO_PROCESS, change.thread, change.before.nice);
}

// What a thread has and the process has not is the thread's own.
bool KeepsItsOwn(const Attributes& thread, const Attributes& process, const Attributes& wanted) {
  if (IsRealTime(wanted.policy)) return IsRealTime(thread.policy);
  if (thread.policy == process.policy && thread.priority == process.priority) return false;
  return IsRealTime(thread.policy) || thread.policy == SCHED_BATCH;
}

// What needs a right comes first: where it is refused, what was done before can be undone without one.
bool NeedsRight(const Scheduling& before, const Attributes& wanted) {
  if (IsRealTime(wanted.policy) || before.attributes.policy == SCHED_IDLE) return true;
  return wanted.nice < before.nice;
}

bool IsCapable(unsigned int capability) {
  __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
  std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> sets{};
  return ::syscall(SYS_capget, &header, sets.data()) == 0 && (sets.front().effective & CAP_TO_MASK(capability)) != 0;
}

}  // namespace

std::uint32_t SafeClass(std::uint32_t priorityClass) {
  const bool isSafe = priorityClass != platform::REALTIME_PRIORITY_CLASS || RealTimeLeavesRoom();
  return isSafe ? priorityClass : platform::HIGH_PRIORITY_CLASS;
}

bool MayRaise(std::uint32_t processId, std::uint32_t priorityClass) {
  const auto nice = NiceOfClass(priorityClass);
  const auto now = Read(processId);
  if (!nice || !now) return false;
  // The limit counts nice values from the other end, and it is that of the process which is raised.
  constexpr int nicest = 20;
  rlimit limit{};
  const bool isLimited = ::prlimit(static_cast<pid_t>(processId), RLIMIT_NICE, nullptr, &limit) != 0 ||
                         limit.rlim_cur < static_cast<rlim_t>(nicest - *nice);
  return now->nice <= *nice || !isLimited || IsCapable(CAP_SYS_NICE);
}

bool SetThreadClass(std::uint32_t threadId, std::uint32_t priorityClass) {
  const auto wanted = AttributesOf(priorityClass);
  const auto before = Read(threadId);
  return wanted && before && SetFrom(*before, threadId, *wanted);
}

bool SetProcessClass(std::uint32_t processId, std::uint32_t priorityClass, const std::function<bool()>& gone) {
  const auto wanted = AttributesOf(priorityClass);
  const auto process = Read(processId);
  if (!wanted || !process) return false;
  std::set<std::uint32_t> seen;
  std::vector<Changed> changed;
  // A thread that was not changed yet may have started others meanwhile. Later ones take the class from their makers.
  constexpr int passes = 10;
  for (int pass = 0; pass < passes; ++pass) {
    std::vector<Changed> next;
    for (const auto thread : ReadThreads(processId))
      if (const auto now = Read(thread); seen.insert(thread).second && now)
        if (!KeepsItsOwn(now->attributes, process->attributes, *wanted)) next.push_back({thread, *now});
    if (next.empty()) break;
    std::ranges::stable_partition(next, [&](const auto& thread) { return NeedsRight(thread.before, *wanted); });
    for (const auto& thread : next) {
      if (gone()) return false;
      if (SetFrom(thread.before, thread.thread, *wanted)) {
        changed.push_back(thread);
      } else if (errno != ESRCH) {
        std::ranges::for_each(changed, Restore);
        return false;
      }
    }
  }
  return !changed.empty();
}

}  // namespace onlinux
