#pragma once

#include "platform/linux/desktop/WindowCalls.h"

namespace onlinux {

// What the calls of these names do.
std::vector<SeenWindow> Windows();
std::string TitleOf(platform::WindowHandle window);
bool Shows(platform::WindowHandle window);
bool Show(platform::WindowHandle window, bool show);
bool BringToFront(platform::WindowHandle window);
bool KeepAbove(platform::WindowHandle window, bool above);
bool Place(platform::WindowHandle window, const std::array<int, 4>& place, std::uint32_t flags);
std::vector<WindowTraits> TraitsOf(const std::vector<SeenWindow>& windows);
bool SendKeys(const std::string& keys);
// It has a line to the X server of its own.
std::unique_ptr<FirstWindow> LookOnX(const Descent& descent, ShowState state);

}  // namespace onlinux
