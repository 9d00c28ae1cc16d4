#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace onlinux {

// What the service manager of the user runs an app in: a control group with a share of the processor of its own.
struct Unit {
  std::string name;    // such as "app-star-emu-4711.scope"
  std::string folder;  // of its control group
};

// True where this user has a service manager that makes control groups.
bool HasManager();
// The unit of a process, of these groups of it (a text such as "0::/user.slice/..."). Nothing where it is in none of
// this user's manager.
std::optional<Unit> FindUnit(const std::string& groups);
std::optional<Unit> UnitOf(std::uint32_t processId);
// The processes in a unit, those of groups inside it too.
std::vector<pid_t> ProcessesOf(const Unit& unit);
// True where a unit is that of the app which a process began, and not that of a program which has started it, of a
// terminal, of the session or of a service of it, which others share. An app in a sandbox is taken as a whole.
bool IsAppOf(const Unit& unit, std::uint32_t processId);
// The nice value that stands for the weight of a unit; 0 where it has none of its own.
int UnitNice(const Unit& unit);
// The nice values of all processes whose unit has one that is not 0.
std::map<std::uint32_t, int> ReadUnitNices();
// Visits the units of apps that there are now.
void ForEachApp(const std::function<void(const Unit&)>& visit);

}  // namespace onlinux
