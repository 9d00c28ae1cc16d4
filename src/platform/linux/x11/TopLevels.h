#pragma once

#include <string>
#include <vector>

#include "platform/linux/x11/XServer.h"

namespace onlinux {

using WindowFacts = Reply<xcb_get_window_attributes_reply_t>;

// What the server knows of a window, null when it is gone.
WindowFacts ReadFacts(XServer& server, xcb_window_t window);

// The top-level windows of all programs, shown or not, from front to back: for a window in the frame of a window
// manager the window itself. Windows that can never show anything are left out.
std::vector<xcb_window_t> TopLevels(XServer& server);
// The titles of windows as UTF-8, empty for none.
std::vector<std::string> TitlesOf(XServer& server, const std::vector<xcb_window_t>& windows);
// True for a window that shows, or that its user minimized.
bool IsVisible(XServer& server, xcb_window_t window);
// True for a window that a window manager looks after, minimized or not.
bool IsManaged(XServer& server, xcb_window_t window);

}  // namespace onlinux
