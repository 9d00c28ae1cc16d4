#pragma once

#include <cstdint>
#include <vector>

#include "platform/linux/x11/XServer.h"

namespace onlinux {

// The processes that may have made a window: the one at the other end of the server's line to its program, and the one
// that the window itself names. Empty where nobody tells.
std::vector<std::uint32_t> OwnersOf(XServer& server, xcb_window_t window);

}  // namespace onlinux
