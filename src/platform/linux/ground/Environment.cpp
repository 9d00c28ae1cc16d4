#include "platform/linux/ground/Environment.h"

#include <sys/auxv.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace onlinux {
namespace {

// What this program and the way to the display need, and what can name neither a library nor a folder of libraries. A
// list of what is harmful would never be complete.
constexpr std::array<std::string_view, 16> Harmless = {"HOME",
                                                       "USER",
                                                       "LOGNAME",
                                                       "SHELL",
                                                       "PATH",
                                                       "LANG",
                                                       "LANGUAGE",
                                                       "TERM",
                                                       "DISPLAY",
                                                       "XAUTHORITY",
                                                       "TZ",
                                                       "WAYLAND_DISPLAY",
                                                       "XDG_RUNTIME_DIR",
                                                       "XDG_CONFIG_HOME",
                                                       "DBUS_SESSION_BUS_ADDRESS",
                                                       "VELMARO_OPENS"};

struct Kept {
  std::vector<std::string> variables;
  std::vector<char*> pointers;
};

Kept& TheKept() {
  static Kept kept;
  return kept;
}

}  // namespace

std::string Told(const char* variable, const std::string& otherwise) {
  const char* value = std::getenv(variable);
  return value && *value ? value : otherwise;
}

void ClearForeignVariables() {
  auto& kept = TheKept();
  if (::getauxval(AT_SECURE) == 0 || !kept.pointers.empty()) return;
  for (auto variable = environ; *variable; ++variable) kept.variables.emplace_back(*variable);
  for (auto& variable : kept.variables) {
    kept.pointers.push_back(variable.data());
    const auto name = variable.substr(0, variable.find('='));
    if (!name.starts_with("LC_") && std::ranges::count(Harmless, name) == 0) ::unsetenv(name.c_str());
  }
  kept.pointers.push_back(nullptr);
}

char* const* StartEnvironment() {
  const auto& kept = TheKept();
  return kept.pointers.empty() ? environ : kept.pointers.data();
}

}  // namespace onlinux
