#pragma once

#include "platform/windows/ground/System.h"
#include "runtime/Types.h"

namespace windows {

// The modifier keys that are down in the message at hand, as the runtime tells them.
inline int ShiftState() {
  const auto down = [](int key) { return ::GetKeyState(key) < 0; };
  return (down(VK_SHIFT) ? velmaro::ShiftKey::Shift : 0) | (down(VK_CONTROL) ? velmaro::ShiftKey::Ctrl : 0) |
         (down(VK_MENU) ? velmaro::ShiftKey::Alt : 0);
}

}  // namespace windows
