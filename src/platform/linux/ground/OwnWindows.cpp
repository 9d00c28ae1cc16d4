#include "platform/linux/ground/OwnWindows.h"

#include <algorithm>
#include <iterator>

namespace onlinux {
namespace {

std::vector<OwnWindow*>& All() {
  static std::vector<OwnWindow*> windows;
  return windows;
}

}  // namespace

OwnWindow::OwnWindow() { All().insert(All().begin(), this); }

OwnWindow::~OwnWindow() { std::erase(All(), this); }

platform::WindowHandle OwnWindow::NewNumber() {
  // Numbers of the X server never use the three highest bits.
  static platform::WindowHandle last = 0x40000000;
  return ++last;
}

OwnWindow* FindOwn(platform::WindowHandle number) {
  if (number == 0) return nullptr;
  const auto at = std::ranges::find_if(All(), [&](const auto* window) { return window->Number() == number; });
  return at == All().end() ? nullptr : *at;
}

std::vector<OwnWindow*> OwnForms() {
  std::vector<OwnWindow*> forms;
  std::ranges::copy_if(All(), std::back_inserter(forms), [](const auto* window) { return window->IsForm(); });
  return forms;
}

}  // namespace onlinux
