#include "platform/linux/starts/Agent.h"

#include <unistd.h>

#include <memory>
#include <string>

#include "platform/linux/ground/Bus.h"
#include "platform/linux/ground/FreeMemory.h"

namespace onlinux {
namespace {

// The user's session with a display, which his programs count to wherever they run; empty where he has none.
std::string DisplaySession() {
  char* session = nullptr;
  if (TheBusLibrary()->displayOf(::getuid(), &session) < 0) return {};
  return std::unique_ptr<char, FreeMemory>(session).get();
}

}  // namespace

bool AgentRuns() {
  const auto bus = OpenSystemBus();
  const auto session = bus ? DisplaySession() : std::string();
  if (session.empty()) return false;
  // Nothing tells which agents there are. But a session has one at most, so that a second one is refused; where this
  // is the first, it ends with the line, in the same moment.
  constexpr Method method{"org.freedesktop.PolicyKit1", "/org/freedesktop/PolicyKit1/Authority",
                          "org.freedesktop.PolicyKit1.Authority", "RegisterAuthenticationAgent"};
  const auto fill = [&](Message& message) {
    return TheBusLibrary()->append(&message, "(sa{sv})ss", "unix-session", 1, "session-id", "s", session.c_str(), "C",
                                   "/example/velmaro/NoAgent") >= 0;
  };
  std::string refusal;
  return !Call(*bus, method, fill, &refusal) && refusal.find("already exists") != std::string::npos;
}

}  // namespace onlinux
