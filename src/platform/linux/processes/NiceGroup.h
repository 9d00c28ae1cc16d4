#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/ground/Descriptor.h"

namespace onlinux {

// Nice values of processes count only inside one group, which has a nice value of its own against other groups. It is a
// control group where the desktop shares the processor out by those, else the session's group of the kernel.
struct NiceGroup {
  std::string name;  // empty where a process has none or is gone
  std::string file;  // that holds its nice value
  bool isControlGroup = false;
};

// The folder of the control group that has a share of the processor of its own, of these groups of a process (a text
// such as "0::/user.slice/app.scope"), below a folder of all control groups. Empty where there is none.
std::string ProcessorGroup(const std::string& groups, const std::string& folder = "/sys/fs/cgroup");
// The group of a process. A session's group is reached through that process and is lost with it.
NiceGroup GroupOf(std::uint32_t processId);
// The nice value of a group; 0 where there is none.
int GroupNice(const NiceGroup& group);
// What a group's nice value is written to; it may outlive the process that it was reached through. Empty where this
// user may not write it.
Descriptor OpenGroup(const NiceGroup& group);
// Gives a group a nice value. The kernel takes few such writes in a second from an ordinary user, so this waits its
// turn. False where it is refused.
bool SetGroupNice(const Descriptor& group, int nice);
// The group of a process where it and its descendants are alone in it; nothing where others are. A control group may
// also hold those who started it and wait, such as a script, but no shell of a terminal.
std::optional<NiceGroup> GroupOfItsOwn(std::uint32_t processId);

}  // namespace onlinux
