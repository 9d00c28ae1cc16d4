#pragma once

#include <cstdint>
#include <string>

#include "platform/types.h"

namespace platform {

// How far this program reaches to the windows of others, where a desktop keeps some of that to itself.

// Why EnumWindows leaves windows of other programs out, in whole sentences; empty where it doesn't.
std::string WhyWindowsAreMissing();
// What is to be said of a window behind its title, as where being hidden comes to something else; mostly empty.
std::string WindowRemark(WindowHandle window);
// Why SetWindowPos did not do what it was told about the stack or the showing of a window that is there, in a whole
// sentence; empty where nothing keeps it from that.
std::string WhyOutOfReach(WindowHandle window, std::uint32_t flags);

}  // namespace platform
