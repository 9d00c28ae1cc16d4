#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "platform/linux/processes/Descent.h"

namespace onlinux {

// The names of the units in which the user's service manager runs apps now.
std::set<std::string> AppUnits();
// Gives a priority class to the units that a start makes for itself within ten seconds, as sandboxes and desktops do
// for what they run. `before` are those that there were before the start.
void FollowIntoUnits(const Descent& descent, std::uint32_t priorityClass, std::set<std::string> before);

}  // namespace onlinux
