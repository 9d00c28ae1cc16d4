#include "platform/linux/desktop/Display.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <sstream>

#include "platform/linux/desktop/CompositorLine.h"
#include "platform/linux/desktop/WindowCalls.h"
#include "platform/linux/ground/Environment.h"
#include "platform/machine.h"

namespace onlinux {
namespace {

// Asks the compositor for a word and waits for it. One that is busy with an effect of its own answers late, and the
// window would be a blurred one of the other server's for as long as it is open.
bool Answers(const Descriptor& line) {
  constexpr int patience = 3000;  // milliseconds
  // The request "sync" of the object 1, 12 bytes long, whose answer is to bear the number 2.
  constexpr std::array<std::uint32_t, 3> sync = {1, 12U << 16, 2};
  if (::send(line.get(), sync.data(), sizeof sync, MSG_NOSIGNAL) != sizeof sync) return false;
  pollfd wait{.fd = line.get(), .events = POLLIN, .revents = 0};
  char byte = 0;
  return ::poll(&wait, 1, patience) == 1 && ::recv(line.get(), &byte, 1, 0) == 1;
}

bool IsWaylandThere() {
  const auto line = LineToCompositor();
  return line && Answers(line);
}

bool IsServerThere(const std::string& plugin) {
  if (plugin.starts_with("wayland")) return IsWaylandThere();
  if (!plugin.starts_with("xcb")) return true;
  const auto* calls = TheXCalls();
  return calls && calls->HasServer();
}

// A compositor may start an X server when it is first asked for one, which takes long, and nobody may need it.
bool IsSecondX(const std::string& plugin, const std::string& before) {
  return plugin.starts_with("xcb") && !before.empty() && !Told("DISPLAY").empty();
}

}  // namespace

std::string WaysToShow() {
  const auto named = Told("QT_QPA_PLATFORM");
  std::istringstream ways(named.empty() ? "wayland;xcb" : named);
  std::string there;
  for (std::string way; std::getline(ways, way, ';');)
    if (IsSecondX(platform::LowerCase(way), there) || IsServerThere(platform::LowerCase(way)))
      there += (there.empty() ? "" : ";") + way;
  return there;
}

}  // namespace onlinux
