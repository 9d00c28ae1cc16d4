#include "platform/linux/Toolkit.h"

#include <dlfcn.h>

#include <cstdio>
#include <string>

#include "platform/linux/Display.h"
#include "platform/linux/Places.h"

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
  const auto path = ToolkitPath();
  if (path.empty()) return Missing("velmaro-toolkit.so is missing");
  // The library stays for good: its objects live to the program's end.
  void* library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_NODELETE);
  if (!library) return Missing(::dlerror());
  const auto entry = reinterpret_cast<Toolkit* (*)()>(::dlsym(library, ToolkitEntry));
  if (!entry) return Missing(::dlerror());
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
