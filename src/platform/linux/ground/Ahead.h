#pragma once

#include <functional>
#include <thread>

namespace onlinux {

// Does work in a thread of its own, which joins with the object; at once, and without a thread, where the system gives
// no more of them.
std::jthread Ahead(const std::function<void()>& work);

}  // namespace onlinux
