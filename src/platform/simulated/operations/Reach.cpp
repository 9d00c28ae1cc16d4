#include "platform/reach.h"

#include "platform/simulated/Desktop.h"

using simulated::TheDesktop;

namespace platform {

std::string WhyWindowsAreMissing() { return TheDesktop().whyWindowsAreMissing; }

std::string WindowRemark(WindowHandle handle) {
  const auto* window = TheDesktop().FindWindow(handle);
  return window ? window->remark : std::string();
}

std::string WhyOutOfReach(WindowHandle handle, std::uint32_t) {
  const auto* window = TheDesktop().FindWindow(handle);
  return window && window->outOfReach ? "This desktop keeps its windows to itself." : "";
}

}  // namespace platform
