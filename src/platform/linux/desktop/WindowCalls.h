#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "platform/linux/processes/Descent.h"
#include "platform/types.h"

namespace onlinux {

// How a program is to show its window, by the numbers of the show commands.
enum class ShowState { Hidden = 0, Normal = 1, Minimized = 2, Maximized = 3 };

// All that the platform asks of the X server: what its functions of these names do, and the one that follows a start.
// The libraries that lead to the server take longer to load than a program takes to start, so all of it stands behind a
// library of its own.
struct WindowCalls {
  bool (*HasServer)();
  platform::WindowHandle (*FindWindowA)(const std::string& title);
  bool (*ShowWindow)(platform::WindowHandle window, int showCommand);
  bool (*SetForegroundWindow)(platform::WindowHandle window);
  bool (*EnumWindows)(const std::function<bool(platform::WindowHandle)>& callback);
  int (*GetWindowTextLengthA)(platform::WindowHandle window);
  int (*GetWindowTextA)(platform::WindowHandle window, char* buffer, int size);
  bool (*SetWindowPos)(platform::WindowHandle window, std::int32_t insertAfter, int x, int y, int width, int height,
                       std::uint32_t flags);
  bool (*AppActivate)(const std::string& title);
  bool (*SendKeys)(const std::string& keys);
  // Waits for the first window that a started program shows, itself or by a child, and brings it into a state. True
  // when that was done within the limit.
  bool (*ShowFirstWindow)(const Descent& descent, ShowState state, std::chrono::milliseconds limit);
};

// The calls, from their library, which is loaded at first use. Null where it is missing; the error output then says
// so, once.
const WindowCalls* TheWindowCalls();

// The library, and the name under which it gives its calls away.
inline constexpr const char* WindowCallsName = "velmaro-x11.so";
inline constexpr const char* WindowCallsEntry = "VelmaroWindowCalls";

}  // namespace onlinux
