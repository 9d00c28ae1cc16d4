#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/processes/Descent.h"

namespace onlinux {

// What is noted before a start, all of it by names.
struct Before {
  std::set<std::string> units;    // in which the user's service manager runs apps already
  std::vector<std::string> apps;  // that the start has the desktop run, and that don't run yet
};
Before NoteBefore(const std::vector<std::string>& words);
// Gives a priority class to the units that a start makes for itself within a minute, as sandboxes and desktops do for
// what they run, and to the apps that it has the desktop start. Returns earlier where nothing of the start has been
// left for ten seconds.
void FollowIntoUnits(const Descent& descent, std::uint32_t priorityClass, Before before);

}  // namespace onlinux
