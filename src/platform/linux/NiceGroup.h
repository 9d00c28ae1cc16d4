#pragma once

#include <cstdint>
#include <string>

#include "platform/linux/Descriptor.h"

namespace onlinux {

// Nice values of processes count only inside one group, which has a nice value of its own against other groups. It is a
// control group where the desktop shares the processor out by those, else the session's group of the kernel.

// The folder of the control group that has a share of the processor of its own, of these groups of a process (a text
// such as "0::/user.slice/app.scope"), below a folder of all control groups. Empty where there is none.
std::string ProcessorGroup(const std::string& groups, const std::string& folder = "/sys/fs/cgroup");
// The name of the group of a process; empty where it has none or is gone.
std::string GroupOf(std::uint32_t processId);
// True for the name of a control group.
bool IsControlGroup(const std::string& group);
// The nice value of the group of a process; 0 where there is none.
int GroupNice(std::uint32_t processId);
// What a group's nice value is written to; it may outlive the process that it was opened for. Empty where this user may
// not write it.
Descriptor OpenGroup(std::uint32_t processId);
// Gives a group a nice value. The kernel takes few such writes in a second from an ordinary user, so this waits its
// turn. False where it is refused.
bool SetGroupNice(const Descriptor& group, int nice);
// True where a process and its descendants are alone in their group.
bool IsAloneInGroup(std::uint32_t processId);

}  // namespace onlinux
