#pragma once

#include <chrono>

#include "platform/linux/desktop/WindowCalls.h"

namespace onlinux {

// Waits for the first window that a started program shows, itself or by a child, on X or on Wayland, and brings it into
// a state. Tells how far that has come within the limit.
FirstWindow::Stage ShowFirstWindow(const Descent& descent, ShowState state, std::chrono::milliseconds limit);

}  // namespace onlinux
