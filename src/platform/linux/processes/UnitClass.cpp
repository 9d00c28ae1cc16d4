#include "platform/linux/processes/UnitClass.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "platform/kernel32.h"
#include "platform/linux/processes/Family.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/processes/ServiceManager.h"
#include "platform/linux/processes/SetClass.h"
#include "platform/linux/processes/Unit.h"

namespace onlinux {
namespace {

using Clock = std::chrono::steady_clock;

bool HasShare(const Unit& unit) { return ::access((unit.folder + "/cpu.weight.nice").c_str(), F_OK) == 0; }

// The manager answers before it is done. True as soon as a process is in a unit of that name and has its share.
bool Holds(std::uint32_t process, const std::string& unit, int nice) {
  constexpr std::chrono::seconds limit{1};
  constexpr std::uint32_t pause = 1;  // milliseconds
  for (const auto end = Clock::now() + limit; Clock::now() < end; platform::Sleep(pause))
    if (const auto now = UnitOf(process); now && now->name == unit && HasShare(*now) && UnitNice(*now) == nice)
      return true;
  return false;
}

// When a process was started that has run for a second now, in clock ticks since the machine's start.
std::uint64_t ASecondAgo() {
  timespec now{};
  ::clock_gettime(CLOCK_BOOTTIME, &now);
  return static_cast<std::uint64_t>(std::max<time_t>(now.tv_sec - 1, 0)) *
         static_cast<std::uint64_t>(::sysconf(_SC_CLK_TCK));
}

// The numbers of a process and of what came from it before a moment.
std::vector<pid_t> WithDescendants(std::uint32_t process, std::uint64_t before) {
  std::vector<pid_t> family = {static_cast<pid_t>(process)};
  for (const auto& other : DescendantsInUnit(process))
    if (other.status.startTime < before) family.push_back(static_cast<pid_t>(other.id));
  return family;
}

// Each attempt asks for the members of the family, and there is none any more where it has none.
template <class Family>
bool Give(std::uint32_t process, std::uint32_t priorityClass, bool refused, bool apart, Family family) {
  const auto safe = SafeClass(priorityClass);
  const auto weight = WeightOfClass(safe);
  const int nice = NiceOfClass(safe).value_or(*NiceOfClass(platform::HIGH_PRIORITY_CLASS));
  const auto unit = UnitOf(process);
  if (!unit && !refused) return false;
  if (unit && !apart && IsAppOf(*unit, process))
    return UnitNice(*unit) == nice || (SetUnitWeight(unit->name, weight) && Holds(process, unit->name, nice));
  // To be as everybody takes no unit, but where what others share has another class.
  if (nice == 0 && !apart && (!unit || UnitNice(*unit) == 0)) return false;
  const auto name = "velmaro-" + std::to_string(process) + ".scope";
  for (int attempt = 0;; ++attempt) {
    const auto members = family(attempt);
    if (members.empty()) return false;
    if (StartScope(name, members, weight)) return Holds(process, name, nice);
  }
}

}  // namespace

bool SetUnitClass(std::uint32_t processId, std::uint32_t priorityClass, bool refused) {
  // One of a family that ends at that moment spoils it for all: a script starts and ends programs all the time. Those
  // that have just begun are left behind then.
  constexpr int attempts = 4;
  return Give(processId, priorityClass, refused, false, [&](int attempt) {
    if (attempt == attempts) return std::vector<pid_t>();
    return WithDescendants(processId, attempt == 0 ? std::numeric_limits<std::uint64_t>::max() : ASecondAgo());
  });
}

bool TakeUnitClass(std::uint32_t priorityClass, bool refused, bool apart) {
  return Give(static_cast<std::uint32_t>(::getpid()), priorityClass, refused, apart,
              [](int attempt) { return attempt == 0 ? std::vector{::getpid()} : std::vector<pid_t>(); });
}

int NiceAgainstOthers(std::uint32_t processId, int nice) {
  const auto unit = UnitOf(processId);
  if (!unit || !HasShare(*unit)) return nice;
  if (const int shared = UnitNice(*unit); shared != 0) return shared;
  return nice == 0 || IsAppOf(*unit, processId) ? nice : 0;
}

void TakeUnitsIntoAccount(std::vector<ProcessRecord>& processes) {
  const auto nices = ReadUnitNices();
  for (auto& process : processes) {
    auto& nice = process.status.nice;
    if (const auto at = nices.find(process.id); at != nices.end())
      nice = at->second;
    else if (nice != 0)
      nice = NiceAgainstOthers(process.id, nice);
  }
}

}  // namespace onlinux
