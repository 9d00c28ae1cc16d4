#include "platform/linux/SharedGroup.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <string>

#include "platform/linux/Autogroup.h"
#include "platform/linux/ProcFolder.h"

namespace onlinux {
namespace {

using Parents = std::map<std::uint32_t, std::uint32_t>;

// True where one process descends from another. Numbers change hands while they are read, so the way up could run in a
// circle.
bool Descends(const Parents& parents, std::uint32_t from, std::uint32_t to) {
  std::size_t steps = parents.size();
  for (; from != to && steps > 0; --steps) {
    const auto at = parents.find(from);
    if (at == parents.end()) return false;
    from = at->second;
  }
  return from == to;
}

// True where a group holds but a process, what belongs to it, those who wait for it, and the rest of its pipe.
bool IsForOne(pid_t process, const std::string& group) {
  const auto processes = ReadProcesses();
  if (!processes) return false;
  Parents parents;
  for (const auto& other : *processes) parents[other.id] = other.status.parent;
  const auto one = static_cast<std::uint32_t>(process);
  for (const auto& other : *processes) {
    if (Descends(parents, one, other.id) || Descends(parents, other.id, one)) continue;
    if (GroupOf(other.id) == group && ::getpgid(static_cast<pid_t>(other.id)) != ::getpgid(process)) return false;
  }
  return true;
}

}  // namespace

void LendGroup(pid_t process, int descriptor, int nice) {
  // The process will be gone in the end; the one that began its session is of the same group.
  const auto session = ::getsid(process);
  const auto group = session > 0 ? GroupOf(static_cast<std::uint32_t>(session)) : std::string();
  if (group.empty() || GroupOf(static_cast<std::uint32_t>(process)) != group || !IsForOne(process, group)) return;
  const auto leader = std::to_string(session);
  const int before = GroupNice(static_cast<std::uint32_t>(session));
  if (before == nice || !SetGroupNice(leader, nice)) return;
  pollfd wait{.fd = descriptor, .events = POLLIN, .revents = 0};
  while (::poll(&wait, 1, -1) < 0 && errno == EINTR) continue;
  SetGroupNice(leader, before);
}

}  // namespace onlinux
