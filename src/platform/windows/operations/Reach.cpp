#include "platform/reach.h"

namespace platform {

// Windows lists and moves all windows for every program.
std::string WhyWindowsAreMissing() { return {}; }

std::string WindowRemark(WindowHandle) { return {}; }

std::string WhyOutOfReach(WindowHandle, std::uint32_t) { return {}; }

}  // namespace platform
