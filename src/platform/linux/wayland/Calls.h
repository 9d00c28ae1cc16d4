#pragma once

#include "platform/linux/desktop/WindowCalls.h"

namespace onlinux {

// Looks out for the first window of a start, on a line of its own. Null where no compositor tells of windows.
std::unique_ptr<FirstWindow> LookOnWayland(const Descent& descent, ShowState state);

}  // namespace onlinux
