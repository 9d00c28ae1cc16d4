#include "platform/linux/x11/CompoundText.h"

#include <X11/Xutil.h>
#include <unistd.h>

#include <memory>

namespace onlinux {
namespace {

struct CloseDisplay {
  void operator()(Display* display) const { ::XCloseDisplay(display); }
};

// The library asks a line of its own for the numbers of names. To make one takes longer than all the rest, so it is
// kept, by each process for itself. It would end the program when the line breaks: here the next title gets a new one.
Display* TheDisplay() {
  struct Held {
    pid_t holder = 0;
    bool isBroken = false;
    std::unique_ptr<Display, CloseDisplay> display;
  };
  // At the program's end it goes with the process: to close it would be another complaint where the server died.
  static auto& held = *std::make_unique<Held>().release();
  if (held.holder == ::getpid() && held.display && !held.isBroken) return held.display.get();
  // What is left of a broken line can't be closed without another end, and that of a parent is the parent's.
  static_cast<void>(held.display.release());
  held.holder = ::getpid();
  held.isBroken = false;
  held.display.reset(::XOpenDisplay(nullptr));
  const auto note = [](Display*, void* isBroken) { *static_cast<bool*>(isBroken) = true; };
  if (held.display) ::XSetIOErrorExitHandler(held.display.get(), note, &held.isBroken);
  return held.display.get();
}

}  // namespace

std::string FromCompoundText(const std::string& bytes) {
  auto* const display = TheDisplay();
  if (!display) return {};
  std::string value = bytes;
  const XTextProperty property{reinterpret_cast<unsigned char*>(value.data()),
                               ::XInternAtom(display, "COMPOUND_TEXT", False), 8, value.size()};
  char** texts = nullptr;
  int count = 0;
  // A positive result is the number of characters that have no counterpart: the others are there all the same.
  if (::Xutf8TextPropertyToTextList(display, &property, &texts, &count) < 0) return {};
  const std::unique_ptr<char*, decltype(&::XFreeStringList)> owned(texts, &::XFreeStringList);
  return count > 0 ? texts[0] : "";
}

}  // namespace onlinux
