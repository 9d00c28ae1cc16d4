#pragma once

#include <cstdint>
#include <string>

namespace onlinux {

// Gives the autogroup of a process ("self" or its number) a nice value: those of processes count only inside one group.
// The kernel takes few such writes in a second from an ordinary user, so this waits its turn. False where it is
// refused.
bool SetGroupNice(const std::string& process, int nice);
// The name of the autogroup of a process; empty where it has none or is gone.
std::string GroupOf(std::uint32_t processId);
// The nice value of that group; 0 where there is none.
int GroupNice(std::uint32_t processId);
// True where a process and its descendants are alone in their autogroup.
bool IsAloneInGroup(std::uint32_t processId);

}  // namespace onlinux
