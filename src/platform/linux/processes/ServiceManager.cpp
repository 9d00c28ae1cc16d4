#include "platform/linux/processes/ServiceManager.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <memory>

#include "platform/linux/processes/EndProcess.h"

namespace onlinux {
namespace {

struct Bus;
struct Message;

// What is used of the bus library, as its interface has declared it since it has one. It is there wherever such a
// manager is, and only then it is loaded.
struct Library {
  int (*openUser)(Bus**) = nullptr;
  Bus* (*close)(Bus*) = nullptr;
  int (*newCall)(Bus*, Message**, const char*, const char*, const char*, const char*) = nullptr;
  int (*append)(Message*, const char*, ...) = nullptr;
  int (*openContainer)(Message*, char, const char*) = nullptr;
  int (*closeContainer)(Message*) = nullptr;
  int (*setAutoStart)(Message*, int) = nullptr;
  int (*call)(Bus*, Message*, std::uint64_t, void*, Message**) = nullptr;
  int (*readBasic)(Message*, char, void*) = nullptr;
  int (*uniqueName)(Bus*, const char**) = nullptr;
  Message* (*unref)(Message*) = nullptr;
};

template <class Function>
bool Find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(::dlsym(library, name));
  return function != nullptr;
}

const Library* Load() {
  static Library bus;
  auto* library = ::dlopen("libsystemd.so.0", RTLD_LAZY | RTLD_NODELETE);
  const bool whole =
      library && Find(library, "sd_bus_open_user", bus.openUser) &&
      Find(library, "sd_bus_flush_close_unref", bus.close) &&
      Find(library, "sd_bus_message_new_method_call", bus.newCall) &&
      Find(library, "sd_bus_message_append", bus.append) &&
      Find(library, "sd_bus_message_open_container", bus.openContainer) &&
      Find(library, "sd_bus_message_close_container", bus.closeContainer) &&
      Find(library, "sd_bus_message_set_auto_start", bus.setAutoStart) && Find(library, "sd_bus_call", bus.call) &&
      Find(library, "sd_bus_message_read_basic", bus.readBasic) &&
      Find(library, "sd_bus_get_unique_name", bus.uniqueName) && Find(library, "sd_bus_message_unref", bus.unref);
  return whole ? &bus : nullptr;
}

const Library* TheLibrary() {
  static const auto* const library = Load();
  return library;
}

constexpr std::uint64_t Limit = 1000000;  // microseconds

struct Free {
  void operator()(Bus* bus) const { TheLibrary()->close(bus); }
  void operator()(Message* message) const { TheLibrary()->unref(message); }
};
using OwnedMessage = std::unique_ptr<Message, Free>;
using OwnedBus = std::unique_ptr<Bus, Free>;

OwnedBus OpenBus() {
  Bus* bus = nullptr;
  return OwnedBus(TheLibrary() && TheLibrary()->openUser(&bus) >= 0 ? bus : nullptr);
}

struct Method {
  const char* service;
  const char* path;
  const char* interface;
  const char* name;
};

constexpr Method ManagerMethod(const char* name) {
  return {"org.freedesktop.systemd1", "/org/freedesktop/systemd1", "org.freedesktop.systemd1.Manager", name};
}

// Calls a method with what `fill` appends, which gives false where it could not. Nothing where it fails.
OwnedMessage Call(Bus& bus, const Method& method, const std::function<bool(Message&)>& fill) {
  const auto& library = *TheLibrary();
  Message* made = nullptr;
  if (library.newCall(&bus, &made, method.service, method.path, method.interface, method.name) < 0) return nullptr;
  const OwnedMessage message(made);
  Message* reply = nullptr;
  const bool done =
      library.setAutoStart(made, 0) >= 0 && fill(*made) && library.call(&bus, made, Limit, nullptr, &reply) >= 0;
  return OwnedMessage(done ? reply : nullptr);
}

// What the bus takes for the number of the process that has a name there; 0 where none has.
pid_t NumberOf(Bus& bus, const char* name) {
  const auto& library = *TheLibrary();
  constexpr Method ask{"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                       "GetConnectionUnixProcessID"};
  const auto reply = Call(bus, ask, [&](Message& message) { return library.append(&message, "s", name) >= 0; });
  std::uint32_t number = 0;
  return reply && library.readBasic(reply.get(), 'u', &number) > 0 ? static_cast<pid_t>(number) : 0;
}

// The same of this process. Among processes of its own, that is another one than its own.
pid_t NumberOnTheBus(Bus& bus) {
  const char* name = nullptr;
  return TheLibrary()->uniqueName(&bus, &name) < 0 ? 0 : NumberOf(bus, name);
}

template <class Values>
bool AppendList(Message& message, const char* property, const char* type, const Values& values) {
  const auto& library = *TheLibrary();
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
  const auto& library = *TheLibrary();
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
  const auto bus = OpenBus();
  const auto fill = [&](Message& message) {
    return TheLibrary()->append(&message, "sba(sv)", unit.c_str(), 1, 1, "CPUWeight", "t", weight) >= 0;
  };
  return bus && Call(*bus, ManagerMethod("SetUnitProperties"), fill) != nullptr;
}

bool StartScope(const std::string& unit, const std::vector<pid_t>& processes, std::uint64_t weight) {
  const auto bus = OpenBus();
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
  const auto bus = OpenBus();
  return bus ? NumberOf(*bus, name.c_str()) : 0;
}

}  // namespace onlinux
