#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "platform/linux/processes/Descent.h"

namespace onlinux {

// The names of the units in which the user's service manager runs apps now.
std::set<std::string> AppUnits();
// Gives a priority class to the units that a start makes for itself within a minute, as sandboxes and desktops do for
// what they run. Returns earlier, but not within ten seconds, where nothing of the start is left. `before` are the
// units that there were before it.
void FollowIntoUnits(const Descent& descent, std::uint32_t priorityClass, std::set<std::string> before);

}  // namespace onlinux
