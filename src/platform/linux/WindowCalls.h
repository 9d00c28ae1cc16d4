#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/types.h"

namespace onlinux {

// All that the platform asks of the X server: what its functions of these names do. The libraries that lead to the
// server take longer to load than a program takes to start, so all of it stands behind a library of its own.
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
};

// The calls, from their library, which is loaded at first use. Null where it is missing; the error output then says
// so, once.
const WindowCalls* TheWindowCalls();

// The library, and the name under which it gives its calls away.
inline constexpr const char* WindowCallsName = "velmaro-x11.so";
inline constexpr const char* WindowCallsEntry = "VelmaroWindowCalls";

}  // namespace onlinux
