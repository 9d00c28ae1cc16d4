#pragma once

#include "platform/linux/desktop/WindowCalls.h"
#include "platform/linux/wayland/Line.h"
#include "platform/linux/wayland/Toplevels.h"

namespace onlinux {

// The Wayland compositor of the user's desktop, and what it tells of windows.
class Compositor {
 public:
  Compositor();

  // True where it said what it offers.
  bool HasAnswered() const { return answered_; }
  // True while it can be asked.
  bool Works() const { return answered_ && line_.Works(); }
  // What can be read from as soon as it tells something; below 0 when it will tell nothing more.
  int Socket() const { return Works() ? ::wl_display_get_fd(line_.Display()) : -1; }
  // Sends what it was asked for, and hears what it told. True where it told something.
  bool Hear() { return line_.HandleWaiting(); }
  // The protocol that it offers this program, null for none.
  Toplevels* Protocol() { return toplevels_.get(); }
  // True for Plasma's, which offers its protocol to programs of its choice.
  bool IsPlasmas() const;
  // The windows as they are now, from front to back. They live until the next question.
  std::vector<Toplevel*> Windows();
  // A window by its number, null where it has gone.
  Toplevel* Find(platform::WindowHandle number);
  // True where a window that was asked for something has come to it, after as long as a compositor takes that does it.
  bool Comes(const Toplevel& window, const std::function<bool(const Toplevel&)>& toIt);

 private:
  struct EndRegistry {
    void operator()(wl_registry* registry) const { ::wl_registry_destroy(registry); }
  };

  Line line_;
  bool answered_ = false;
  Offers offers_;
  std::unique_ptr<wl_registry, EndRegistry> registry_;
  std::unique_ptr<Toplevels> toplevels_;
};

// What tells a window again.
WindowTraits TraitsOf(const Toplevel& window);
// The compositor, connected to at first use, by each process for itself; null where it does not answer.
Compositor* TheCompositor();

}  // namespace onlinux
