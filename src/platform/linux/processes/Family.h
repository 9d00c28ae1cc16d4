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
// Those of them that go along when a process that shares its session gets a class: with High, or back from it, they
// follow as they would in a unit of their own, unless they have another nice value than it. None elsewhere.
std::vector<ProcessRecord> FollowersOf(std::uint32_t processId, std::uint32_t priorityClass);

}  // namespace onlinux
