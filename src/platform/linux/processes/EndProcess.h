#pragma once

#include <signal.h>
#include <sys/types.h>

#include "platform/linux/ground/Descriptor.h"

namespace onlinux {

// Holds on to a process: the descriptor stands for it alone, whoever has its number later, and can be read from once it
// has ended. None where there is no such process, or where the kernel keeps no such descriptors (before Linux 5.3).
Descriptor HoldProcess(pid_t id);

// True where a process that is held has ended, at the latest after so many milliseconds; -1 waits as long as it takes.
// False at once where nothing is held.
bool HasEnded(const Descriptor& held, int withinMilliseconds);

// Sends a process the signal that is to end it. The number alone tells which one where it is not held. False where
// there is none or the right is missing, and always for a number below 2: to the system 0 and those below it are whole
// groups of processes, -1 is everything that runs, and 1 is what all else hangs on.
bool EndProcess(pid_t id, const Descriptor& held, int signal = SIGKILL);
bool EndProcess(pid_t id, int signal = SIGKILL);

}  // namespace onlinux
