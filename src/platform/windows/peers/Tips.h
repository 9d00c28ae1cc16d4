#pragma once

#include <string>
#include <vector>

#include "platform/windows/peers/NativeWindow.h"

namespace windows {

// The plain tooltips of one form's controls. Its window is made when the pointer first rests on one of them.
class Tips {
 public:
  // Lets a control show a tip from now on.
  void Offer(HWND form, HWND control, const std::string& text);
  // Takes on a changed text, where the control shows a tip at all.
  void Update(HWND control, const std::string& text);

 private:
  void Send(UINT message, HWND control, const std::string& text);

  OwnedWindow window_;
  std::vector<HWND> offered_;
};

}  // namespace windows
