#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace onlinux {

// What a control group leaves its processes of the memory that it may use, in bytes.
struct GroupMemory {
  std::uint64_t limit = 0;
  std::uint64_t left = 0;
  std::uint64_t strained = 0;  // how often it has come to its limit so far, by what it and the groups in it claimed
};

// The memory of the control group of this process, or of the group above it that leaves least; of either version.
// Nothing where no group has a limit. The texts are those of the process's groups and of its mounted file systems.
std::optional<GroupMemory> ReadGroupMemory(const std::string& groups = "/proc/self/cgroup",
                                           const std::string& mounts = "/proc/self/mountinfo");

}  // namespace onlinux
