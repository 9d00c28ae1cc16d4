#include "platform/rights.h"

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <optional>
#include <string>

#include "platform/kernel32.h"
#include "platform/linux/desktop/RunToEnd.h"
#include "platform/linux/ground/Places.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/processes/EndProcess.h"
#include "platform/linux/processes/Family.h"
#include "platform/linux/processes/Handles.h"
#include "platform/linux/processes/OwnClass.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/processes/SetClass.h"
#include "platform/linux/processes/Unit.h"
#include "platform/linux/processes/UnitClass.h"
#include "platform/linux/starts/Agent.h"
#include "platform/linux/starts/Command.h"

namespace platform {
namespace {

// The group whose members may raise classes, by the limits that come with the program.
constexpr const char* Group = "velmaro";
// What the policy calls that which an administrator's password is asked for.
constexpr const char* Action = "example.velmaro.set-class";

// The desktop's own program that asks for a password; empty where there is none in the folders of PATH.
std::string Asker() {
  const auto path = onlinux::FindFile("pkexec");
  return path.starts_with('/') ? path : std::string();
}

// What is run with the right: a program that sets one class and does nothing else. Only an installation has it, since
// the policy names its whole path.
std::string Helper() {
  const auto prefix = onlinux::InstalledPrefix();
  return prefix.empty() ? prefix : prefix + "/libexec/velmaro/velmaro-set-class";
}

// The user whom a process belongs to; nobody's number, which is all ones, when it is gone.
uid_t OwnerOf(std::uint32_t processId) {
  const auto status = onlinux::ReadWhole("/proc/" + std::to_string(processId) + "/status");
  constexpr std::string_view line = "\nUid:\t";
  uid_t owner = ~uid_t{0};
  if (const auto at = status.find(line); at != std::string::npos)
    std::from_chars(status.data() + at + line.size(), status.data() + status.size(), owner);
  return owner;
}

// The status of an opened process; nothing where it has ended, even if its number is another's by now.
std::optional<onlinux::ProcessStatus> StatusOf(Handle handle) {
  const auto* process = onlinux::FindAs<onlinux::OpenedProcess>(handle);
  auto status = process ? onlinux::ReadStatus(process->id) : std::nullopt;
  if (!status) return std::nullopt;
  return onlinux::HasEnded(process->descriptor, 0) ? std::nullopt : status;
}

std::string NameOf(uid_t user) {
  const auto* entry = ::getpwuid(user);
  return entry ? entry->pw_name : std::to_string(user);
}

bool IsMember(const std::string& user) {
  const auto* group = ::getgrnam(Group);
  for (auto member = group ? group->gr_mem : nullptr; member && *member; ++member)
    if (user == *member) return true;
  return false;
}

// Given a moment ago, or by a rule.
bool RightIsGiven() {
  const auto checker = onlinux::FindFile("pkcheck");
  if (!checker.starts_with('/')) return false;
  constexpr std::chrono::seconds limit{1};
  return onlinux::RunSilently({checker, "--action-id", Action, "--process", std::to_string(::getpid())}, limit) == 0;
}

}  // namespace

bool ClassIsReadBack() { return true; }

std::uint32_t GetPriorityClass(Handle handle) {
  const auto status = StatusOf(handle);
  if (!status) return 0;
  const auto nice = onlinux::NiceAgainstOthers(onlinux::FindAs<onlinux::OpenedProcess>(handle)->id, status->nice);
  return onlinux::ClassOfBasePriority(onlinux::BasePriority(status->policy, nice));
}

std::string WhySpared(std::uint32_t priorityClass) {
  return onlinux::SafeClass(priorityClass) == priorityClass ? std::string()
                                                            : std::string("it ") + onlinux::LeavesNoRoom;
}

std::string WhatHighIsWorth(Handle handle) {
  const auto status = StatusOf(handle);
  // Where this program is in no unit of the manager's, the session's programs share one that is not, and the process
  // has left it.
  if (!status || status->nice < 0 || !onlinux::SharesSession(static_cast<std::uint32_t>(::getpid()))) return {};
  const auto unit = onlinux::UnitOf(onlinux::FindAs<onlinux::OpenedProcess>(handle)->id);
  if (!unit || onlinux::UnitNice(*unit) >= 0) return {};
  return "It gets half of a core and all other programs of this session the other half: more takes the right to raise "
         "priorities.";
}

bool HighLeavesSession(Handle handle) {
  const auto* process = onlinux::FindAs<onlinux::OpenedProcess>(handle);
  if (!process || OwnerOf(process->id) != ::geteuid() || !onlinux::SharesSession(process->id)) return false;
  const auto groups = [](const std::string& id) { return onlinux::ReadWhole("/proc/" + id + "/cgroup"); };
  if (groups(std::to_string(process->id)) != groups("self")) return false;
  return !onlinux::MayRaise(process->id, HIGH_PRIORITY_CLASS);
}

std::string WhatWouldHelp(Handle handle) {
  const auto* process = onlinux::FindAs<onlinux::OpenedProcess>(handle);
  const auto owner = process ? OwnerOf(process->id) : ::geteuid();
  if (owner != ::geteuid()) return "it belongs to " + NameOf(owner) + ", so only an administrator may change it";
  const auto user = NameOf(owner);
  const std::string group = Group;
  if (IsMember(user)) return "log in again, and your membership of the group " + group + " counts";
  return "members of the group " + group + " may do so (sudo groupadd -f " + group + " && sudo usermod -aG " + group +
         ' ' + user + ", then log in again)";
}

RoadToRight FindRoadToRight() {
  if (::access(Helper().c_str(), X_OK) != 0 || Asker().empty()) return RoadToRight::None;
  if (RightIsGiven()) return RoadToRight::Open;
  return onlinux::AgentRuns() ? RoadToRight::Password : RoadToRight::None;
}

bool SetPriorityClassAsking(Handle handle, std::uint32_t priorityClass) {
  const auto status = StatusOf(handle);
  if (!status) return false;
  const auto process = onlinux::FindAs<onlinux::OpenedProcess>(handle)->id;
  // Without an agent of the desktop's nobody is asked: a prompt in some terminal would look like a window that hangs.
  std::vector<std::string> words = {Asker(),
                                    "--disable-internal-agent",
                                    Helper(),
                                    std::to_string(priorityClass),
                                    std::to_string(process),
                                    std::to_string(status->startTime)};
  constexpr std::size_t most = 200;  // words, well within what a program may be told
  for (const auto& follower : onlinux::FollowersOf(process, priorityClass))
    if (words.size() < most)
      words.insert(words.end(), {std::to_string(follower.id), std::to_string(follower.status.startTime)});
  return onlinux::RunToEnd(words) == 0;
}

}  // namespace platform
