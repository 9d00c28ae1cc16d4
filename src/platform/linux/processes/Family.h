#pragma once

#include <cstdint>
#include <vector>

#include "platform/linux/processes/ProcFolder.h"

namespace onlinux {

// What came from a process and is in its unit still, or in none as it is: what has left for another belongs there.
std::vector<ProcessRecord> DescendantsInUnit(std::uint32_t processId);
// True where the programs of this user's session share one unit that is none of his manager's, and a process is in
// there.
bool SharesSession(std::uint32_t processId);
// What came from a process that shares its session, and goes along when that gets a class: with High, or back from it,
// as it would in a unit of its own, unless it has another nice value. Nothing elsewhere.
std::vector<ProcessRecord> FollowersOf(std::uint32_t processId, std::uint32_t priorityClass);

}  // namespace onlinux
