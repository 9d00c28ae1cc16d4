#include "platform/linux/desktop/CompositorLine.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <string>

#include "platform/linux/ground/Environment.h"

namespace onlinux {

bool NamesCompositor() { return !Told("WAYLAND_DISPLAY").empty(); }

Descriptor LineToCompositor() {
  auto path = Told("WAYLAND_DISPLAY");
  if (path.empty()) return {};
  if (path.front() != '/') path = Told("XDG_RUNTIME_DIR") + '/' + path;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return {};
  path.copy(address.sun_path, path.size());
  Descriptor line(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!line || ::connect(line.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return {};
  return line;
}

}  // namespace onlinux
