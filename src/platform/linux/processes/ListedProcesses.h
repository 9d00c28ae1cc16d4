#pragma once

#include <optional>
#include <vector>

#include "platform/linux/processes/ProcFolder.h"

namespace onlinux {

// The same as `ReadProcesses`, for a list that is only looked at. Names and classes are those of this moment; what else
// was read for the last such list serves again where the process still runs the same program. What acts on a process
// must not go by these.
std::optional<std::vector<ProcessRecord>> ReadListedProcesses();

}  // namespace onlinux
