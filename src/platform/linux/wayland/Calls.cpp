#include "platform/linux/wayland/Calls.h"

#include <algorithm>

#include "platform/linux/wayland/Compositor.h"

namespace onlinux {
namespace {

using platform::WindowHandle;

Toplevel* Find(WindowHandle window) {
  auto* compositor = TheCompositor();
  return compositor ? compositor->Find(window) : nullptr;
}

std::vector<SeenWindow> Windows() {
  std::vector<SeenWindow> windows;
  auto* compositor = TheCompositor();
  if (!compositor) return windows;
  for (const auto* window : compositor->Windows()) windows.push_back({window->number, window->title});
  return windows;
}

std::string TitleOf(WindowHandle number) {
  const auto* window = Find(number);
  return window ? window->title : std::string();
}

// A window that its user minimized counts as one that shows, as on X.
bool Shows(WindowHandle window) { return Find(window) != nullptr; }

bool IsMinimized(WindowHandle number) {
  const auto* window = Find(number);
  return window && window->minimized;
}

// No program can take the window of another one off the screen but by minimizing it.
bool Show(WindowHandle number, bool show) {
  auto* window = Find(number);
  if (!window || window->minimized != show) return window != nullptr;
  TheCompositor()->Protocol()->Minimize(*window, !show);
  return TheCompositor()->Comes(*window, [&](const Toplevel& now) { return now.minimized != show; });
}

bool BringToFront(WindowHandle number) {
  auto* window = Find(number);
  if (!window) return false;
  if (window->minimized) TheCompositor()->Protocol()->Minimize(*window, false);
  TheCompositor()->Protocol()->Activate(*window);
  return TheCompositor()->Comes(*window, &Toplevel::active);
}

bool KeepAbove(WindowHandle number, bool above) {
  auto* window = Find(number);
  if (!window || window->above == above) return window != nullptr;
  TheCompositor()->Protocol()->KeepAbove(*window, above);
  return TheCompositor()->Comes(*window, [&](const Toplevel& now) { return now.above == above; });
}

std::vector<WindowTraits> TraitsOf(const std::vector<SeenWindow>& windows) {
  std::vector<WindowTraits> all;
  for (const auto& seen : windows) {
    const auto* window = Find(seen.number);
    all.push_back(window ? onlinux::TraitsOf(*window) : WindowTraits());
  }
  return all;
}

std::string WhyMissing() {
  auto* compositor = TheCompositor();
  if (!compositor || compositor->Protocol()) return {};
  const std::string others =
      "This desktop tells Velmaro of no windows of other programs, except for those that use X11.";
  return others + (compositor->IsPlasmas() ? " Plasma tells of all windows once Velmaro is installed." : "");
}

}  // namespace
}  // namespace onlinux

// The one function of the library that others find by its name.
extern "C" const onlinux::CompositorCalls* VelmaroCompositorCalls() {
  using namespace onlinux;
  static constexpr CompositorCalls calls{{.Windows = Windows,
                                          .TitleOf = TitleOf,
                                          .Shows = Shows,
                                          .Show = Show,
                                          .BringToFront = BringToFront,
                                          .KeepAbove = KeepAbove,
                                          .TraitsOf = TraitsOf,
                                          .LookOut = LookOnWayland},
                                         IsMinimized,
                                         WhyMissing};
  return &calls;
}
