#include "platform/linux/x11/Calls.h"

#include "platform/linux/x11/XServer.h"

// The one function of the library that others find by its name.
extern "C" const onlinux::WindowCalls* VelmaroWindowCalls() {
  using namespace onlinux;
  static constexpr WindowCalls calls{.HasServer = [] { return TheXServer() != nullptr; },
                                     .FindWindowA = FindWindowA,
                                     .ShowWindow = ShowWindow,
                                     .SetForegroundWindow = SetForegroundWindow,
                                     .EnumWindows = EnumWindows,
                                     .GetWindowTextLengthA = GetWindowTextLengthA,
                                     .GetWindowTextA = GetWindowTextA,
                                     .SetWindowPos = SetWindowPos,
                                     .AppActivate = AppActivate,
                                     .SendKeys = SendKeys,
                                     .ShowFirstWindow = ShowFirstWindow};
  return &calls;
}
