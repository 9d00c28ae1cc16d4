#pragma once

#include <string>
#include <vector>

#include "platform/types.h"

namespace onlinux {

// A window or control of this program, which other parts of the platform reach by its number.
class OwnWindow {
 public:
  OwnWindow();
  OwnWindow(const OwnWindow&) = delete;
  OwnWindow& operator=(const OwnWindow&) = delete;
  virtual ~OwnWindow();

  // The number. It is the X server's own for a form on an X desktop, and above all of those for everything else.
  virtual platform::WindowHandle Number() const = 0;
  // The size of the inside in pixels.
  virtual platform::PixelRect Inside() const = 0;
  // True for a form, false for a control.
  virtual bool IsForm() const { return false; }
  virtual std::string Title() const { return {}; }
  virtual bool Shows() const { return false; }
  virtual void ShowOrHide(bool) {}
  virtual void KeepAbove(bool) {}
  virtual void BringToFront() {}

 protected:
  // A number that no X server gives to a window.
  static platform::WindowHandle NewNumber();
};

// A window or control of this program by its number, null for none.
OwnWindow* FindOwn(platform::WindowHandle number);
// The program's forms, those that were made last first.
std::vector<OwnWindow*> OwnForms();

}  // namespace onlinux
