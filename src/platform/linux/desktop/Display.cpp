#include "platform/linux/desktop/Display.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <sstream>
#include <utility>

#include "platform/linux/desktop/CompositorLine.h"
#include "platform/linux/desktop/WindowCalls.h"
#include "platform/linux/ground/Environment.h"
#include "platform/machine.h"

namespace onlinux {
namespace {

// One that is busy with an effect of its own answers late, and the window would be a blurred one of the other server's
// for as long as it is open. Right after a login on a slow machine neither answers for some seconds.
constexpr int Patience = 3000;      // milliseconds, where there may be another way
constexpr int LastPatience = 6000;  // more, where there is none

// A line to the compositor on which it was asked for a word; none where it can't be asked.
Descriptor AskCompositor() {
  auto line = LineToCompositor();
  // The request "sync" of the object 1, 12 bytes long, whose answer is to bear the number 2.
  constexpr std::array<std::uint32_t, 3> sync = {1, 12U << 16, 2};
  const bool asked = line && ::send(line.get(), sync.data(), sizeof sync, MSG_NOSIGNAL) == sizeof sync;
  return asked ? std::move(line) : Descriptor();
}

bool Answers(const Descriptor& line, int patience) {
  pollfd wait{.fd = line.get(), .events = POLLIN, .revents = 0};
  char byte = 0;
  return line && ::poll(&wait, 1, patience) == 1 && ::recv(line.get(), &byte, 1, 0) == 1;
}

bool IsServerThere(const std::string& plugin, const Descriptor& compositor) {
  if (plugin.starts_with("wayland")) return Answers(compositor, Patience);
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
  std::string there, late;
  Descriptor compositor;
  for (std::string way; std::getline(ways, way, ';');) {
    const auto plugin = platform::LowerCase(way);
    if (plugin.starts_with("wayland") && (compositor = AskCompositor())) late = way;
    if (IsSecondX(plugin, there) || IsServerThere(plugin, compositor)) there += (there.empty() ? "" : ";") + way;
  }
  return there.empty() && Answers(compositor, LastPatience) ? late : there;
}

}  // namespace onlinux
