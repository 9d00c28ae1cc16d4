#pragma once

#include <cstdint>

#include "platform/linux/processes/ProcFolder.h"

namespace onlinux {

// Gives the app that a process is a part of a priority class, as the weight of its unit: it holds for all that runs in
// there, and needs no right. A process in a unit that is not its own gets one, with its descendants in there. `refused`
// tells that its threads did not get the class: only then a process leaves a session that no such manager runs, since
// it would lose its place among the programs there. False where that is not done.
bool SetUnitClass(std::uint32_t processId, std::uint32_t priorityClass, bool refused);
// The same for this process alone, which is about to become a program. With `apart`, in a unit of its own in any case.
bool TakeUnitClass(std::uint32_t priorityClass, bool refused, bool apart);
// The nice value by which a process has its time against those of other apps: that of its unit where it has one, none
// where the unit is shared with others, else its own.
int NiceAgainstOthers(std::uint32_t processId, int nice);
// Puts that in the place of the nice values of processes.
void TakeUnitsIntoAccount(std::vector<ProcessRecord>& processes);

}  // namespace onlinux
