#include "platform/linux/processes/ServiceManager.h"

#include <unistd.h>

#include <algorithm>
#include <functional>

#include "platform/linux/ground/Bus.h"
#include "platform/linux/processes/EndProcess.h"

namespace onlinux {
namespace {

constexpr Method ManagerMethod(const char* name) {
  return {"org.freedesktop.systemd1", "/org/freedesktop/systemd1", "org.freedesktop.systemd1.Manager", name};
}

// What the bus takes for the number of the process that has a name there; 0 where none has.
pid_t NumberOf(Bus& bus, const char* name) {
  const auto& library = *TheBusLibrary();
  constexpr Method ask{"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                       "GetConnectionUnixProcessID"};
  const auto reply = Call(bus, ask, [&](Message& message) { return library.append(&message, "s", name) >= 0; });
  std::uint32_t number = 0;
  return reply && library.readBasic(reply.get(), 'u', &number) > 0 ? static_cast<pid_t>(number) : 0;
}

// The same of this process. Among processes of its own, that is another one than its own.
pid_t NumberOnTheBus(Bus& bus) {
  const char* name = nullptr;
  return TheBusLibrary()->uniqueName(&bus, &name) < 0 ? 0 : NumberOf(bus, name);
}

template <class Values>
bool AppendList(Message& message, const char* property, const char* type, const Values& values) {
  const auto& library = *TheBusLibrary();
  const std::string list = std::string("a") + type;
  bool done = library.openContainer(&message, 'r', ("sv")) >= 0 && library.append(&message, "s", property) >= 0 &&
              library.openContainer(&message, 'v', list.c_str()) >= 0 &&
              library.openContainer(&message, 'a', type) >= 0;
  for (const auto& value : values) done = done && library.append(&message, type, value) >= 0;
  for (int i = 0; i < 3; ++i) done = done && library.closeContainer(&message) >= 0;
  return done;
}

using AppendProcesses = std::function<bool(Message&)>;

bool Start(Bus& bus, const std::string& unit, std::uint64_t weight, const AppendProcesses& appendProcesses) {
  const auto& library = *TheBusLibrary();
  const auto fill = [&](Message& message) {
    return library.append(&message, "ss", unit.c_str(), "fail") >= 0 &&
           library.openContainer(&message, 'a', "(sv)") >= 0 && appendProcesses(message) &&
           library.append(&message, "(sv)(sv)", "CPUWeight", "t", weight, "CollectMode", "s", "inactive-or-failed") >=
               0 &&
           library.closeContainer(&message) >= 0 && library.append(&message, "a(sa(sv))", 0) >= 0;
  };
  return Call(bus, ManagerMethod("StartTransientUnit"), fill) != nullptr;
}

}  // namespace

bool SetUnitWeight(const std::string& unit, std::uint64_t weight) {
  const auto bus = OpenUserBus();
  const auto fill = [&](Message& message) {
    return TheBusLibrary()->append(&message, "sba(sv)", unit.c_str(), 1, 1, "CPUWeight", "t", weight) >= 0;
  };
  return bus && Call(*bus, ManagerMethod("SetUnitProperties"), fill) != nullptr;
}

bool StartScope(const std::string& unit, const std::vector<pid_t>& processes, std::uint64_t weight) {
  const auto bus = OpenUserBus();
  if (!bus) return false;
  // By numbers the manager could mean others: those of a container are not its own, and one may change hands.
  std::vector<Descriptor> held;
  std::vector<int> descriptors;
  for (const auto process : processes) descriptors.push_back(held.emplace_back(HoldProcess(process)).get());
  const auto byDescriptors = [&](Message& message) { return AppendList(message, "PIDFDs", "h", descriptors); };
  const bool allHeld = std::ranges::none_of(descriptors, [](int one) { return one < 0; });
  if (allHeld && Start(*bus, unit, weight, byDescriptors)) return true;
  // Managers before version 253 know numbers only.
  return NumberOnTheBus(*bus) == ::getpid() &&
         Start(*bus, unit, weight, [&](Message& message) { return AppendList(message, "PIDs", "u", processes); });
}

pid_t OwnerOnBus(const std::string& name) {
  const auto bus = OpenUserBus();
  return bus ? NumberOf(*bus, name.c_str()) : 0;
}

}  // namespace onlinux
