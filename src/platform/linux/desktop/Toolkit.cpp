#include "platform/linux/desktop/Toolkit.h"

#include <string>
#include <thread>

#include "platform/linux/desktop/Display.h"
#include "platform/linux/desktop/Means.h"
#include "platform/linux/desktop/WindowCalls.h"
#include "platform/linux/ground/Ahead.h"
#include "platform/linux/ground/Environment.h"
#include "platform/linux/ground/FontsAhead.h"
#include "platform/linux/ground/Library.h"
#include "platform/linux/ground/Places.h"
#include "platform/linux/ground/Say.h"
#include "platform/linux/ground/Trust.h"

namespace onlinux {
namespace {

using Entry = Toolkit* (*)(const char* ways, const char* shunned);

struct Place {
  Toolkit* toolkit = nullptr;
  bool tried = false;
  bool begun = false;
  Entry entry = nullptr;
  std::string error;
  std::string shunned;  // where the program lies, if others may lay plugins there
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
  TheXCalls();
  place.entry = reinterpret_cast<Entry>(LoadEntry(ToolkitName, ToolkitEntry, place.error));
  if (place.entry && !HasMeansForToolkit()) {
    place.entry = nullptr;
    place.error = "this program gets too few threads or open files, or too little memory";
  }
  if (!IsOnlyOurs(ProgramFolder())) place.shunned = ProgramFolder();
  // To shun a folder the toolkit needs the environment for itself.
  if (place.entry && place.shunned.empty()) place.fonts = ReadFontsAhead();
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
  if (place.loading.joinable()) place.loading.join();
  if (!place.entry) return Missing(place.error);
  auto* toolkit = place.entry(ways.c_str(), place.shunned.c_str());
  return toolkit ? toolkit
                 : Missing("Qt has no plugin for " + ways + " (that for Wayland is in qt6-wayland), or no screen");
}

}  // namespace

void ExpectToolkit() {
  auto& place = ThePlace();
  if (place.begun) return;
  place.begun = true;
  ClearForeignVariables();
  place.loading = Ahead([&place] { LoadLibraries(place); });
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
