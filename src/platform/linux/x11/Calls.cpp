#include "platform/linux/x11/Calls.h"

#include "platform/linux/x11/XServer.h"

// The one function of the library that others find by its name.
extern "C" const onlinux::XCalls* VelmaroXCalls() {
  using namespace onlinux;
  static constexpr XCalls calls{{.Windows = Windows,
                                 .TitleOf = TitleOf,
                                 .Shows = Shows,
                                 .Show = Show,
                                 .BringToFront = BringToFront,
                                 .KeepAbove = KeepAbove,
                                 .TraitsOf = TraitsOf,
                                 .LookOut = LookOnX},
                                [] { return TheXServer() != nullptr; },
                                Place,
                                SendKeys};
  return &calls;
}
