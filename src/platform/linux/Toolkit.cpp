#include "platform/linux/Toolkit.h"

#include <cstdio>
#include <string>

#include "platform/linux/Display.h"
#include "platform/linux/Library.h"

namespace onlinux {
namespace {

struct Place {
  Toolkit* toolkit = nullptr;
  bool tried = false;
};

Place& ThePlace() {
  static Place place;
  return place;
}

Toolkit* Missing(const char* why) {
  std::fprintf(stderr, "velmaro: no window can be shown: %s\n", why);
  return nullptr;
}

Toolkit* Load() {
  if (!IsDisplayThere()) return Missing("there is no display (neither DISPLAY nor WAYLAND_DISPLAY leads to one)");
  std::string error;
  const auto entry = reinterpret_cast<Toolkit* (*)()>(LoadEntry(ToolkitName, ToolkitEntry, error));
  if (!entry) return Missing(error.c_str());
  auto* toolkit = entry();
  return toolkit ? toolkit : Missing("Qt has no plugin for this display (for Wayland it is qt6-wayland)");
}

}  // namespace

Toolkit* TheToolkit() {
  auto& place = ThePlace();
  if (!place.tried) {
    place.tried = true;
    place.toolkit = Load();
  }
  return place.toolkit;
}

Toolkit* LoadedToolkit() { return ThePlace().toolkit; }

}  // namespace onlinux
