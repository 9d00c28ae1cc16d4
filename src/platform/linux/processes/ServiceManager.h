#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace onlinux {

// What the service manager of the user is asked for. It runs his programs in units, each a control group of its own,
// and keeps their weights: one that is written past it is lost at its next look. All of it lasts as long as the unit.

// Gives a unit a weight, from 1 to 10000, against the units beside it; 100 is everybody's. False where no manager
// answers within a second, or it refuses.
bool SetUnitWeight(const std::string& unit, std::uint64_t weight);
// Puts running processes into a new unit with a weight. Returns when the request is taken, which is a moment before
// they are there. False as above, and where there is a unit of that name.
bool StartScope(const std::string& unit, const std::vector<pid_t>& processes, std::uint64_t weight);

// The process that has a name on the user's bus; 0 where none has, or no bus answers.
pid_t OwnerOnBus(const std::string& name);

}  // namespace onlinux
