#pragma once

#include <sys/types.h>

#include "platform/linux/ground/Descriptor.h"

namespace onlinux {

// Gives the group that a process shares with the shell which waits for it a nice value, until the process, which
// is held, has ended. Returns at once where the group holds anybody else: it is none of the process's then.
void LendGroup(pid_t process, const Descriptor& held, int nice);

}  // namespace onlinux
