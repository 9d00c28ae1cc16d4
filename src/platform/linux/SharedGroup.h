#pragma once

#include <sys/types.h>

namespace onlinux {

// Gives the group that a process shares with the shell which waits for it a nice value, until the process, whose
// descriptor is told, has ended. Returns at once where the group holds anybody else: it is none of the process's then.
void LendGroup(pid_t process, int descriptor, int nice);

}  // namespace onlinux
