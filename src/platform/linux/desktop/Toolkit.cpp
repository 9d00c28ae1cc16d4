#include "platform/linux/desktop/Toolkit.h"

#include <string>
#include <thread>

#include "platform/linux/desktop/Display.h"
#include "platform/linux/desktop/WindowCalls.h"
#include "platform/linux/ground/Environment.h"
#include "platform/linux/ground/FontsAhead.h"
#include "platform/linux/ground/Library.h"
#include "platform/linux/ground/Say.h"

namespace onlinux {
namespace {

using Entry = Toolkit* (*)(const char*);

struct Place {
  Toolkit* toolkit = nullptr;
  bool tried = false;
  Entry entry = nullptr;
  std::string error;
  std::jthread fonts;
  std::jthread loading;
};

Place& ThePlace() {
  static Place place;
  return place;
}

void LoadLibraries(Place& place) {
  // The toolkit needs it, and would look for it by itself where only this program looks safely. As soon as it is there,
  // the X server can be asked.
  TheWindowCalls();
  place.entry = reinterpret_cast<Entry>(LoadEntry(ToolkitName, ToolkitEntry, place.error));
  place.fonts = ReadFontsAhead();
}

Toolkit* Missing(const std::string& why) {
  Say("no window can be shown: " + why);
  return nullptr;
}

Toolkit* Load() {
  ClearForeignVariables();
  const auto ways = WaysToShow();
  if (ways.empty()) return Missing("no display answers (neither DISPLAY nor WAYLAND_DISPLAY leads to one)");
  ExpectToolkit();
  auto& place = ThePlace();
  place.loading.join();
  if (!place.entry) return Missing(place.error);
  auto* toolkit = place.entry(ways.c_str());
  return toolkit ? toolkit
                 : Missing("Qt has no plugin for " + ways + " (that for Wayland is in qt6-wayland), or no screen");
}

}  // namespace

void ExpectToolkit() {
  auto& place = ThePlace();
  if (place.tried || place.loading.joinable()) return;
  ClearForeignVariables();
  place.loading = std::jthread([&place] { LoadLibraries(place); });
}

Toolkit* TheToolkit() {
  auto& place = ThePlace();
  if (!place.tried) {
    place.toolkit = Load();
    place.tried = true;
  }
  return place.toolkit;
}

Toolkit* LoadedToolkit() { return ThePlace().toolkit; }

}  // namespace onlinux
