#include "platform/linux/processes/Unit.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "platform/linux/ground/GroupPlace.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/processes/Descent.h"
#include "platform/linux/processes/ProcessStatus.h"

namespace onlinux {
namespace {

namespace fs = std::filesystem;

constexpr const char* Groups = "/sys/fs/cgroup";

std::string OwnManager() { return "user@" + std::to_string(::getuid()) + ".service"; }

// The folder of the groups that this user's manager makes.
std::string ManagersFolder() {
  return Groups + ("/user.slice/user-" + std::to_string(::getuid()) + ".slice/") + OwnManager();
}

bool IsUnit(const std::string& name) { return name.ends_with(".scope") || name.ends_with(".service"); }

// The manager's own names for what a user starts; all others are the session's own.
bool IsApp(const std::string& name) {
  constexpr const char* beginnings[] = {"app-", "velmaro-", "run-", "dbus-:", "snap."};
  return std::ranges::any_of(beginnings, [&](const char* beginning) { return name.starts_with(beginning); });
}

// Made for one start, whoever waits at a terminal in there.
bool IsOwn(const std::string& name) { return name.starts_with("velmaro-"); }

// By these, an app in a sandbox is known to the desktop: none of its processes may leave.
bool IsWhole(const std::string& name) { return name.starts_with("app-flatpak-") || name.starts_with("snap."); }

// Visits the folders of the groups below one, as deep as units may lie.
template <class Visit>
void ForEachGroup(const std::string& folder, Visit visit) {
  std::error_code error;
  for (fs::recursive_directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    std::error_code unknown;
    if (!at->is_directory(unknown)) continue;
    const auto name = at->path().filename().string();
    if (!IsUnit(name)) continue;
    at.disable_recursion_pending();
    visit(Unit{name, at->path().string()});
  }
}

}  // namespace

bool HasManager() { return ::access(ManagersFolder().c_str(), F_OK) == 0; }

std::optional<Unit> FindUnit(const std::string& groups) {
  const auto path = GroupPath(groups, SecondVersion).value_or("");
  const auto manager = path.find('/' + OwnManager() + '/');
  if (manager == std::string::npos) return std::nullopt;
  for (auto at = path.find('/', manager + 1); at != std::string::npos;) {
    const auto end = path.find('/', at + 1);
    const auto name = path.substr(at + 1, end == std::string::npos ? end : end - at - 1);
    if (IsUnit(name)) return Unit{name, Groups + path.substr(0, end)};
    at = end;
  }
  return std::nullopt;
}

std::optional<Unit> UnitOf(std::uint32_t processId) {
  return FindUnit(ReadWhole("/proc/" + std::to_string(processId) + "/cgroup"));
}

std::vector<pid_t> ProcessesOf(const Unit& unit) {
  std::vector<pid_t> processes;
  const auto read = [&](const std::string& folder) {
    std::istringstream numbers(ReadWhole(folder + "/cgroup.procs"));
    for (pid_t process = 0; numbers >> process;) processes.push_back(process);
  };
  read(unit.folder);
  std::error_code error;
  for (fs::recursive_directory_iterator at(unit.folder, error), end; !error && at != end; at.increment(error)) {
    std::error_code unknown;
    if (at->is_directory(unknown)) read(at->path().string());
  }
  return processes;
}

bool IsAppOf(const Unit& unit, std::uint32_t processId) {
  if (!IsApp(unit.name)) return false;
  if (IsWhole(unit.name)) return true;
  const auto processes = ProcessesOf(unit);
  // What runs below another program there is a part of that one: a library of games, a browser, a script.
  if (const auto status = ReadStatus(processId))
    if (std::ranges::find(processes, static_cast<pid_t>(status->parent)) != processes.end()) return false;
  if (IsOwn(unit.name)) return true;
  return std::ranges::none_of(processes, [&](pid_t other) {
    const auto id = static_cast<std::uint32_t>(other);
    const auto status = ReadStatus(id);
    return status && status->hasTerminal && !CameFrom(id, {processId, ""});
  });
}

int UnitNice(const Unit& unit) {
  const auto text = ReadWhole(unit.folder + "/cpu.weight.nice");
  int nice = 0;
  std::from_chars(text.data(), text.data() + text.size(), nice);
  return nice;
}

std::map<std::uint32_t, int> ReadUnitNices() {
  std::map<std::uint32_t, int> nices;
  ForEachApp([&](const Unit& unit) {
    if (const int nice = UnitNice(unit); nice != 0)
      for (const auto process : ProcessesOf(unit)) nices[static_cast<std::uint32_t>(process)] = nice;
  });
  return nices;
}

void ForEachApp(const std::function<void(const Unit&)>& visit) {
  ForEachGroup(ManagersFolder() + "/app.slice", [&](const Unit& unit) {
    if (IsApp(unit.name)) visit(unit);
  });
}

}  // namespace onlinux
