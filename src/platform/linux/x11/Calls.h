#pragma once

#include "platform/linux/desktop/WindowCalls.h"

namespace onlinux {

// What the functions of the platform that bear these names do.
platform::WindowHandle FindWindowA(const std::string& title);
bool ShowWindow(platform::WindowHandle window, int showCommand);
bool SetForegroundWindow(platform::WindowHandle window);
bool EnumWindows(const std::function<bool(platform::WindowHandle)>& callback);
int GetWindowTextLengthA(platform::WindowHandle window);
int GetWindowTextA(platform::WindowHandle window, char* buffer, int size);
bool SetWindowPos(platform::WindowHandle window, std::int32_t insertAfter, int x, int y, int width, int height,
                  std::uint32_t flags);
bool AppActivate(const std::string& title);
bool SendKeys(const std::string& keys);
// Waits for the first window of a start and brings it into a state. It has a line to the X server of its own.
bool ShowFirstWindow(const Descent& descent, ShowState state, std::chrono::milliseconds limit);

}  // namespace onlinux
