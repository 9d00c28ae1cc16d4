#include "platform/linux/Display.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <cstdlib>
#include <string>

#include "platform/linux/Descriptor.h"
#include "platform/linux/WindowCalls.h"

namespace onlinux {
namespace {

std::string Told(const char* variable) {
  const char* value = std::getenv(variable);
  return value ? value : "";
}

bool IsWaylandThere() {
  auto path = Told("WAYLAND_DISPLAY");
  if (path.empty()) return false;
  if (path.front() != '/') path = Told("XDG_RUNTIME_DIR") + '/' + path;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return false;
  path.copy(address.sun_path, path.size());
  const Descriptor line(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  return line && ::connect(line.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

}  // namespace

bool IsDisplayThere() {
  // A user who names another way of showing windows, or none at all, is trusted.
  const auto way = Told("QT_QPA_PLATFORM");
  if (!way.empty() && !way.starts_with("xcb") && !way.starts_with("wayland")) return true;
  const auto* calls = TheWindowCalls();
  return (calls && calls->HasServer()) || IsWaylandThere();
}

}  // namespace onlinux
