#include "platform/linux/starts/SharedGroup.h"

#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "platform/linux/processes/EndProcess.h"
#include "platform/linux/processes/NiceGroup.h"
#include "platform/linux/processes/ProcFolder.h"

namespace onlinux {
namespace {

// True for a process of this program, such as the one that does this aside.
bool IsOwn(std::uint32_t process) {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  return std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe", error) == program && !error;
}

// True where a group holds but a process, what belongs to it, those who wait for it, and the rest of its pipe.
bool IsForOne(pid_t process, const std::string& group) {
  const auto processes = ReadProcesses();
  if (!processes) return false;
  const Parents parents(*processes);
  const auto one = static_cast<std::uint32_t>(process);
  for (const auto& other : *processes) {
    if (parents.Descends(one, other.id) || parents.Descends(other.id, one)) continue;
    if (GroupOf(other.id).name != group || ::getpgid(static_cast<pid_t>(other.id)) == ::getpgid(process)) continue;
    if (!IsOwn(other.id)) return false;
  }
  return true;
}

}  // namespace

void LendGroup(pid_t process, const Descriptor& held, int nice) {
  auto group = GroupOf(static_cast<std::uint32_t>(process));
  // A session's group is reached through a process of it, and this one will be gone in the end.
  if (!group.isControlGroup) {
    auto session = GroupOf(static_cast<std::uint32_t>(std::max(::getsid(process), 0)));
    if (session.name != group.name) return;
    group = std::move(session);
  }
  if (group.name.empty() || !IsForOne(process, group.name)) return;
  const auto file = OpenGroup(group);
  // A program that ran there before may not have given the group back yet: where all is busy, that takes a while.
  while (::flock(file.get(), LOCK_EX) < 0 && errno == EINTR) continue;
  const int before = GroupNice(group);
  if (before == nice || !SetGroupNice(file, nice)) return;
  HasEnded(held, -1);
  SetGroupNice(file, before);
}

}  // namespace onlinux
