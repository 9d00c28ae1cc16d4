#include "platform/linux/processes/OwnClass.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/auxv.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include "platform/kernel32.h"
#include "platform/linux/ground/Descriptor.h"
#include "platform/linux/processes/NiceGroup.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/processes/SetClass.h"
#include "platform/linux/processes/UnitClass.h"

namespace onlinux {
namespace {

bool HasTerminal() { return static_cast<bool>(Descriptor(::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY))); }

std::string NameOf(std::uint32_t priorityClass) {
  switch (priorityClass) {
    case platform::REALTIME_PRIORITY_CLASS:
      return "Real Time";
    case platform::HIGH_PRIORITY_CLASS:
      return "High";
    case platform::IDLE_PRIORITY_CLASS:
      return "Idle";
    default:
      return "Normal";
  }
}

}  // namespace

Taken TakeClass(std::uint32_t priorityClass) {
  Taken taken{.asked = priorityClass};
  const auto safe = SafeClass(priorityClass);
  taken.isSpared = safe != priorityClass;
  const auto take = [&](std::uint32_t wanted) {
    const bool granted = SetThreadClass(0, wanted);
    if (granted) taken.got = wanted;
    return granted;
  };
  if (priorityClass != 0 && !take(safe) && safe == platform::REALTIME_PRIORITY_CLASS)
    take(platform::HIGH_PRIORITY_CLASS);
  taken.now = ClassOfBasePriority(BasePriority(::sched_getscheduler(0), ::getpriority(PRIO_PROCESS, 0)));
  return taken;
}

bool TakeUnit(Taken& taken, bool apart) {
  if (taken.asked == 0 || !TakeUnitClass(taken.asked, taken.got == 0, apart)) return false;
  if (taken.got == platform::REALTIME_PRIORITY_CLASS) return true;
  const auto safe = SafeClass(taken.asked);
  taken.got = safe == platform::REALTIME_PRIORITY_CLASS ? platform::HIGH_PRIORITY_CLASS : safe;
  taken.now = taken.got;
  return true;
}

bool TakeGroup(std::uint32_t priorityClass) {
  const auto nice = NiceOfClass(priorityClass);
  if (!nice) return true;
  const auto group = GroupOf(static_cast<std::uint32_t>(::getpid()));
  if (group.isControlGroup) return false;
  if (::getsid(0) != ::getpid() && (HasTerminal() || ::setsid() < 0)) return false;
  // The files of a program that has a right which its user lacks are no longer the user's.
  if (::getauxval(AT_SECURE) != 0) ::prctl(PR_SET_DUMPABLE, 1);
  SetGroupNice(OpenGroup(group), *nice);
  return true;
}

std::string Shortfall(const Taken& taken, const std::string& program) {
  if (taken.got == taken.asked) return {};
  const std::string why = taken.isSpared ? LeavesNoRoom : "is refused to this user";
  const auto what = taken.got == 0 ? " keeps the priority that it is started with" : " gets " + NameOf(taken.got);
  return NameOf(taken.asked) + ' ' + why + ": " + program + what;
}

}  // namespace onlinux
