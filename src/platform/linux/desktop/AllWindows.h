#pragma once

#include "platform/linux/desktop/WindowCalls.h"
#include "platform/linux/ground/OwnWindows.h"

namespace onlinux {

// The windows of all programs, of X and of Wayland, each once, from front to back; with this program's forms, shown or
// not.
std::vector<SeenWindow> AllWindows();
// What a compositor that was asked before knows a form of this program as; 0 for nothing.
platform::WindowHandle ToCompositor(const OwnWindow& form);
// What the compositor knows a window of X as; 0 for nothing.
platform::WindowHandle ToCompositor(const SeenWindow& onX);
// The calls that lead to a window, null where nothing does: a form of this program that X does not know is reached by
// itself.
const WindowCalls* CallsFor(platform::WindowHandle window);

}  // namespace onlinux
