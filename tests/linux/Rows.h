#pragma once

#include <string>
#include <vector>

#include "platform/reach.h"
#include "platform/user32.h"

using Texts = std::vector<std::string>;

// The windows with a title, from front to back, each with what is remarked about it.
inline Texts Rows() {
  Texts rows;
  platform::EnumWindows([&](platform::WindowHandle window) {
    std::string title(static_cast<std::size_t>(platform::GetWindowTextLengthA(window)), '\0');
    platform::GetWindowTextA(window, title.data(), static_cast<int>(title.size()) + 1);
    if (!title.empty()) rows.push_back(title + platform::WindowRemark(window));
    return true;
  });
  return rows;
}

// Why a window is not hidden, or not pinned; empty where it is.
inline std::string Refusal(platform::WindowHandle window, std::uint32_t flags,
                           std::int32_t after = platform::HWND_NOTOPMOST) {
  const auto all = platform::SWP_NOMOVE | platform::SWP_NOSIZE | flags;
  return platform::SetWindowPos(window, after, 0, 0, 0, 0, all) ? "" : platform::WhyOutOfReach(window, flags);
}
