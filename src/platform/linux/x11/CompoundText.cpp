#include "platform/linux/x11/CompoundText.h"

#include <X11/Xutil.h>

#include <memory>

namespace onlinux {
namespace {

struct CloseDisplay {
  void operator()(Display* display) const { ::XCloseDisplay(display); }
};

}  // namespace

std::string FromCompoundText(const std::string& bytes) {
  // The library asks a line of its own for the numbers of names. It ends the program when that line breaks, so it is
  // kept no longer than needed.
  const std::unique_ptr<Display, CloseDisplay> display(::XOpenDisplay(nullptr));
  if (!display) return {};
  std::string value = bytes;
  const XTextProperty property{reinterpret_cast<unsigned char*>(value.data()),
                               ::XInternAtom(display.get(), "COMPOUND_TEXT", False), 8, value.size()};
  char** texts = nullptr;
  int count = 0;
  // A positive result is the number of characters that have no counterpart: the others are there all the same.
  if (::Xutf8TextPropertyToTextList(display.get(), &property, &texts, &count) < 0) return {};
  const std::unique_ptr<char*, decltype(&::XFreeStringList)> owned(texts, &::XFreeStringList);
  return count > 0 ? texts[0] : "";
}

}  // namespace onlinux
