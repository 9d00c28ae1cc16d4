#include "platform/linux/Toolkit.h"

#include <string>

#include "platform/linux/Display.h"
#include "platform/linux/Environment.h"
#include "platform/linux/FontsAhead.h"
#include "platform/linux/Library.h"
#include "platform/linux/Say.h"
#include "platform/linux/WindowCalls.h"

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

Toolkit* Missing(const std::string& why) {
  Say("no window can be shown: " + why);
  return nullptr;
}

Toolkit* Load() {
  ClearForeignVariables();
  const auto ways = WaysToShow();
  if (ways.empty()) return Missing("no display answers (neither DISPLAY nor WAYLAND_DISPLAY leads to one)");
  // The toolkit needs it, and would look for it by itself where only this program looks safely.
  TheWindowCalls();
  const auto fonts = ReadFontsAhead();
  std::string error;
  const auto entry = reinterpret_cast<Toolkit* (*)(const char*)>(LoadEntry(ToolkitName, ToolkitEntry, error));
  if (!entry) return Missing(error);
  auto* toolkit = entry(ways.c_str());
  return toolkit ? toolkit
                 : Missing("Qt has no plugin for " + ways + " (that for Wayland is in qt6-wayland), or no screen");
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
