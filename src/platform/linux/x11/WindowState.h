#pragma once

#include "platform/linux/desktop/WindowCalls.h"
#include "platform/linux/x11/XServer.h"

namespace onlinux {

// True where some program manages the windows of all others, old ones that understand no newer requests among them.
bool HasAnyManager(XServer& server);
// Takes a window from the screen as its own program would. True when the server did so.
bool Withdraw(XServer& server, xcb_window_t window);
// Asks the window manager to bring a window into a state, and does it by hand where none is there. True when the
// request went out.
bool RequestState(XServer& server, xcb_window_t window, ShowState state);
// True when a window is in that state.
bool IsInState(XServer& server, xcb_window_t window, ShowState state);

}  // namespace onlinux
