#include "platform/linux/ground/Ahead.h"

#include <system_error>

namespace onlinux {

std::jthread Ahead(const std::function<void()>& work) {
  try {
    return std::jthread(work);
  } catch (const std::system_error&) {
    work();
    return {};
  }
}

}  // namespace onlinux
