#pragma once

#include <optional>

#include "platform/linux/desktop/WindowCalls.h"

namespace onlinux {

// For each of some windows of one server which of another's windows is the same one: its place among those, or nothing.
// A window that bears no process of the other, or no name of its kind, is another one. Titles decide between those that
// are left; they may change between two looks, so what stays over is paired in order.
std::vector<std::optional<std::size_t>> FindTwins(const std::vector<WindowTraits>& windows,
                                                  const std::vector<WindowTraits>& others);

}  // namespace onlinux
