#include "platform/linux/starts/FollowIntoUnits.h"

#include <algorithm>
#include <chrono>

#include "platform/kernel32.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/processes/ServiceManager.h"
#include "platform/linux/processes/Unit.h"
#include "platform/linux/processes/UnitClass.h"
#include "platform/linux/starts/Activation.h"

namespace onlinux {

Before NoteBefore(const std::vector<std::string>& words) {
  Before before{.units = {}, .apps = AppsToCome(words)};
  ForEachApp([&](const Unit& unit) { before.units.insert(unit.name); });
  return before;
}

void FollowIntoUnits(const Descent& descent, std::uint32_t priorityClass, Before before) {
  using std::chrono::milliseconds;
  using std::chrono::steady_clock;
  constexpr milliseconds enough{10'000};
  constexpr milliseconds limit{60'000};
  constexpr milliseconds::rep shortest = 50;
  constexpr milliseconds::rep longest = 500;
  const auto cameFrom = [&](pid_t process) { return CameFrom(static_cast<std::uint32_t>(process), descent); };
  const auto start = steady_clock::now();
  milliseconds left{0};
  for (milliseconds passed{0}; passed < limit && passed - left < enough;) {
    ForEachApp([&](const Unit& unit) {
      if (before.units.contains(unit.name) || !std::ranges::any_of(ProcessesOf(unit), cameFrom)) return;
      // A manager that is busy doesn't answer in time, and is asked again.
      if (SetUnitWeight(unit.name, WeightOfClass(priorityClass))) before.units.insert(unit.name);
    });
    // The bus starts such an app, so that nothing else tells whose it is.
    std::erase_if(before.apps, [&](const std::string& app) {
      const auto process = OwnerOnBus(app);
      return process != 0 && SetUnitClass(static_cast<std::uint32_t>(process), priorityClass, false);
    });
    platform::Sleep(static_cast<std::uint32_t>(std::clamp(passed.count() / 100, shortest, longest)));
    passed = std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
    // Between the end of who asks the desktop for a program and the program's begin there may be nothing of either.
    if (StillRuns(descent)) left = passed;
  }
}

}  // namespace onlinux
