#include <algorithm>
#include <cstring>
#include <string>

#include "platform/linux/desktop/AllWindows.h"
#include "platform/linux/desktop/CompositorLine.h"
#include "platform/linux/desktop/WindowCalls.h"
#include "platform/linux/ground/Library.h"
#include "platform/linux/ground/OwnWindows.h"
#include "platform/linux/ground/Say.h"
#include "platform/machine.h"
#include "platform/reach.h"
#include "platform/user32.h"

namespace onlinux {
namespace {

bool& AskedCompositor() {
  static bool asked = false;
  return asked;
}

template <class Calls>
const Calls* Load(const char* library, const char* name) {
  std::string error;
  const auto entry = reinterpret_cast<const Calls* (*)()>(LoadEntry(library, name, error));
  if (!entry) Say("windows can't be found: " + error);
  return entry ? entry() : nullptr;
}

// The window at which an enumeration is: its title was read with those of all others.
SeenWindow& TheEnumerated() {
  static SeenWindow enumerated;
  return enumerated;
}

std::string TitleOf(platform::WindowHandle window) {
  if (const auto& at = TheEnumerated(); window != 0 && window == at.number) return at.title;
  if (const auto* own = FindOwn(window); own && own->IsForm()) return own->Title();
  const auto* calls = CallsFor(window);
  return calls ? calls->TitleOf(window) : std::string();
}

bool Shows(platform::WindowHandle window) {
  if (const auto* own = FindOwn(window)) return own->Shows();
  const auto* calls = CallsFor(window);
  return calls && calls->Shows(window);
}

bool ShowOrHide(platform::WindowHandle window, bool show) {
  if (auto* own = FindOwn(window)) {
    own->ShowOrHide(show);
    return true;
  }
  const auto* calls = CallsFor(window);
  return calls && calls->Show(window, show);
}

// A form is pinned by the server that shows it; before it shows it remembers that. A compositor is not asked before the
// user has looked at its windows.
bool KeepOwnAbove(OwnWindow& own, bool above) {
  if (own.Shows() && IsOnX(own.Number())) return TheXCalls() && TheXCalls()->KeepAbove(own.Number(), above);
  own.KeepAbove(above);
  if (!own.IsForm() || !own.Shows() || !AskedCompositor()) return true;
  const auto known = ToCompositor(own);
  return known == 0 ? !above : TheCompositorCalls()->KeepAbove(known, above);
}

bool KeepAbove(platform::WindowHandle window, bool above) {
  if (auto* own = FindOwn(window)) return KeepOwnAbove(*own, above);
  const auto* calls = CallsFor(window);
  return calls && calls->KeepAbove(window, above);
}

}  // namespace

const XCalls* TheXCalls() {
  static const auto* const calls = Load<XCalls>(XCallsName, XCallsEntry);
  return calls;
}

const CompositorCalls* TheCompositorCalls() {
  if (!NamesCompositor()) return nullptr;
  AskedCompositor() = true;
  static const auto* const calls = Load<CompositorCalls>(CompositorCallsName, CompositorCallsEntry);
  return calls;
}

}  // namespace onlinux

// What the platform does with windows of all programs, through the libraries that reach them.
namespace platform {
namespace {

constexpr std::uint32_t keepOrder = 4;

}  // namespace

using namespace onlinux;

WindowHandle FindWindowA(const std::string& title) {
  const auto wanted = LowerCase(title);
  for (const auto& window : AllWindows())
    if (LowerCase(window.title) == wanted) return window.number;
  return 0;
}

bool ShowWindow(WindowHandle window, int showCommand) {
  const bool before = Shows(window);
  return ShowOrHide(window, showCommand != SW_HIDE) && before;
}

bool SetForegroundWindow(WindowHandle window) {
  if (auto* own = FindOwn(window)) {
    own->BringToFront();
    return true;
  }
  const auto* calls = CallsFor(window);
  // To a compositor the wish of an X server may be a mere hint, which marks the window and does no more.
  const auto* compositor = IsOnX(window) ? TheCompositorCalls() : nullptr;
  const auto known = compositor ? ToCompositor({window, TitleOf(window)}) : 0;
  return (known != 0 && compositor->BringToFront(known)) || (calls && calls->BringToFront(window));
}

bool EnumWindows(const std::function<bool(WindowHandle)>& callback) {
  auto windows = AllWindows();
  const bool all = std::ranges::all_of(windows, [&](SeenWindow& window) {
    const auto number = window.number;
    TheEnumerated() = std::move(window);
    return callback(number);
  });
  TheEnumerated() = {};
  return all;
}

int GetWindowTextLengthA(WindowHandle window) { return static_cast<int>(TitleOf(window).size()); }

int GetWindowTextA(WindowHandle window, char* buffer, int size) {
  if (size <= 0) return 0;
  const auto title = TitleOf(window);
  const auto length = std::min(title.size(), static_cast<std::size_t>(size) - 1);
  std::memcpy(buffer, title.data(), length);
  buffer[length] = '\0';
  return static_cast<int>(length);
}

bool SetWindowPos(WindowHandle window, std::int32_t insertAfter, int x, int y, int width, int height,
                  std::uint32_t flags) {
  bool done = true;
  if (!(flags & keepOrder) && (insertAfter == HWND_TOPMOST || insertAfter == HWND_NOTOPMOST))
    done = KeepAbove(window, insertAfter == HWND_TOPMOST);
  if (flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW)) done = ShowOrHide(window, (flags & SWP_SHOWWINDOW) != 0) && done;
  if ((flags & (SWP_NOMOVE | SWP_NOSIZE)) == (SWP_NOMOVE | SWP_NOSIZE)) return done;
  const auto* calls = IsOnX(window) ? TheXCalls() : nullptr;
  return calls && calls->Place(window, {x, y, width, height}, flags) && done;
}

bool GetClientRect(WindowHandle window, PixelRect& rect) {
  const auto* own = FindOwn(window);
  if (own) rect = own->Inside();
  return own != nullptr;
}

bool AppActivate(const std::string& title) {
  WindowHandle found = 0;
  for (const auto& window : AllWindows()) {
    if (!window.title.starts_with(title) || !Shows(window.number)) continue;
    if (found == 0 || window.title == title) found = window.number;
    if (window.title == title) break;
  }
  return found != 0 && SetForegroundWindow(found);
}

bool SendKeys(const std::string& keys) {
  const auto* calls = TheXCalls();
  return calls && calls->SendKeys(keys);
}

std::string WhyWindowsAreMissing() {
  const auto* calls = TheCompositorCalls();
  return calls ? calls->WhyMissing() : std::string();
}

std::string WindowRemark(WindowHandle window) {
  const auto* calls = IsOfCompositor(window) ? TheCompositorCalls() : nullptr;
  return calls && calls->IsMinimized(window) ? " (minimized)" : "";
}

std::string WhyOutOfReach(WindowHandle window, std::uint32_t flags) {
  if (!Shows(window)) return {};
  return flags & SWP_HIDEWINDOW ? "This desktop lets no program minimize windows of others."
                                : "This desktop lets no program keep windows on top.";
}

}  // namespace platform
