#include "platform/linux/starts/FollowIntoUnits.h"

#include <algorithm>
#include <chrono>

#include "platform/kernel32.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/processes/ServiceManager.h"
#include "platform/linux/processes/Unit.h"

namespace onlinux {

std::set<std::string> AppUnits() {
  std::set<std::string> names;
  ForEachApp([&](const Unit& unit) { names.insert(unit.name); });
  return names;
}

void FollowIntoUnits(const Descent& descent, std::uint32_t priorityClass, std::set<std::string> before) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::seconds limit{10};
  constexpr std::uint32_t pause = 50;  // milliseconds
  const auto cameFrom = [&](pid_t process) { return CameFrom(static_cast<std::uint32_t>(process), descent); };
  for (const auto end = Clock::now() + limit; Clock::now() < end; platform::Sleep(pause))
    ForEachApp([&](const Unit& unit) {
      if (before.contains(unit.name) || !std::ranges::any_of(ProcessesOf(unit), cameFrom)) return;
      before.insert(unit.name);
      SetUnitWeight(unit.name, WeightOfClass(priorityClass));
    });
}

}  // namespace onlinux
