#include "platform/linux/ground/Bus.h"

#include <dlfcn.h>

namespace onlinux {
namespace {

template <class Function>
bool Find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(::dlsym(library, name));
  return function != nullptr;
}

const BusLibrary* Load() {
  static BusLibrary bus;
  auto* library = ::dlopen("libsystemd.so.0", RTLD_LAZY | RTLD_NODELETE);
  const bool whole =
      library && Find(library, "sd_bus_open_user", bus.openUser) &&
      Find(library, "sd_bus_open_system", bus.openSystem) && Find(library, "sd_bus_flush_close_unref", bus.close) &&
      Find(library, "sd_bus_message_new_method_call", bus.newCall) &&
      Find(library, "sd_bus_message_append", bus.append) &&
      Find(library, "sd_bus_message_open_container", bus.openContainer) &&
      Find(library, "sd_bus_message_close_container", bus.closeContainer) &&
      Find(library, "sd_bus_message_set_auto_start", bus.setAutoStart) && Find(library, "sd_bus_call", bus.call) &&
      Find(library, "sd_bus_message_read_basic", bus.readBasic) &&
      Find(library, "sd_bus_get_unique_name", bus.uniqueName) && Find(library, "sd_bus_message_unref", bus.unref) &&
      Find(library, "sd_bus_error_free", bus.freeError) && Find(library, "sd_uid_get_display", bus.displayOf);
  return whole ? &bus : nullptr;
}

OwnedBus Open(int (*BusLibrary::*open)(Bus**)) {
  const auto* library = TheBusLibrary();
  Bus* bus = nullptr;
  return OwnedBus(library && (library->*open)(&bus) >= 0 ? bus : nullptr);
}

// What a service says in place of an answer, as the library holds it.
struct Error {
  const char* name = nullptr;
  const char* message = nullptr;
  int needsFree = 0;
};

}  // namespace

void FreeOfBus::operator()(Bus* bus) const { TheBusLibrary()->close(bus); }
void FreeOfBus::operator()(Message* message) const { TheBusLibrary()->unref(message); }

const BusLibrary* TheBusLibrary() {
  static const auto* const library = Load();
  return library;
}

OwnedBus OpenUserBus() { return Open(&BusLibrary::openUser); }
OwnedBus OpenSystemBus() { return Open(&BusLibrary::openSystem); }

OwnedMessage Call(Bus& bus, const Method& method, const std::function<bool(Message&)>& fill, std::string* refusal) {
  constexpr std::uint64_t limit = 1000000;  // microseconds
  const auto& library = *TheBusLibrary();
  Message* made = nullptr;
  if (library.newCall(&bus, &made, method.service, method.path, method.interface, method.name) < 0) return nullptr;
  const OwnedMessage message(made);
  Message* reply = nullptr;
  Error error;
  const bool done =
      library.setAutoStart(made, 0) >= 0 && fill(*made) && library.call(&bus, made, limit, &error, &reply) >= 0;
  if (refusal && error.message) *refusal = error.message;
  library.freeError(&error);
  return OwnedMessage(done ? reply : nullptr);
}

}  // namespace onlinux
