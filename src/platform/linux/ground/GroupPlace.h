#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace onlinux {

// Which of the kernel's two kinds of control groups.
struct GroupVersion {
  std::string_view fileSystem;
  std::string_view
      controller;  // that the groups are asked for; empty for the second version, which has all in one tree
};
inline constexpr GroupVersion SecondVersion{"cgroup2", ""};

// The path of a process's group among the groups of a version, such as "/user.slice", from the text of its groups.
std::optional<std::string> GroupPath(std::string_view groups, const GroupVersion& version);

struct GroupMount {
  std::string root;  // the group that the folder shows
  std::string folder;
};
// Where the groups of a version are shown, from the text of a process's mounts.
std::optional<GroupMount> FindMount(std::string_view mounts, const GroupVersion& version);

}  // namespace onlinux
