#pragma once

#include <wayland-client.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/types.h"

namespace onlinux {

// Hears all events of an object of the compositor's, by their names.
using Hear = std::function<void(std::string_view event, const wl_argument* values)>;
// An object of the compositor's that this program knows, and what ends it.
using Proxy = std::unique_ptr<wl_proxy, void (*)(wl_proxy*)>;

// A window, as the compositor tells of it.
struct Toplevel {
  platform::WindowHandle number = 0;
  std::string id;  // the compositor's own, where it tells one
  std::string title;
  std::string program;        // the name of its program's menu entry, or its class on X
  std::uint32_t process = 0;  // that made it; 0 where nobody tells
  bool minimized = false;
  bool maximized = false;
  bool active = false;
  bool above = false;
  bool isPart = false;  // of the desktop, as a panel is
  bool known = false;   // all of this has been told
  bool gone = false;
  Hear hear;
  Proxy proxy{nullptr, nullptr};
};

// What the compositor offers: the number and the version of each kind of object that there is one of.
struct Offer {
  std::uint32_t name = 0;
  std::uint32_t version = 0;
};
using Offers = std::map<std::string, Offer, std::less<>>;

// A protocol by which a compositor tells of the windows of all programs. What it is asked to do becomes true, or
// doesn't, in what it then tells.
class Toplevels {
 public:
  Toplevels() = default;
  Toplevels(const Toplevels&) = delete;
  Toplevels& operator=(const Toplevels&) = delete;
  virtual ~Toplevels() = default;

  virtual void Activate(Toplevel& window) = 0;
  virtual void Minimize(Toplevel& window, bool minimized) = 0;
  virtual void Maximize(Toplevel& window) = 0;
  virtual void KeepAbove(Toplevel&, bool) {}
  // The windows, from front to back as far as that is told.
  virtual std::vector<Toplevel*> FrontToBack();
  // One of them by its number, null where it has gone.
  Toplevel* Find(platform::WindowHandle number) const;

  // True where all there is to be told of the windows was told.
  bool AreKnown() const;

 protected:
  // Takes up a window, and hears what is told of it from then on.
  Toplevel& Add(Proxy proxy, std::function<void(Toplevel&, std::string_view, const wl_argument*)> hear);
  // Lets a function hear an object, for as long as both live.
  static void Listen(wl_proxy* proxy, const Hear& hear);
  // The protocol has come to an end.
  void LoseAll();

 private:
  std::vector<std::unique_ptr<Toplevel>> windows_;  // in the order in which they were made
  platform::WindowHandle last_ = 0;
};

// The protocols, null where they are not among the offers: that of Plasma's compositor, and that of those on wlroots.
std::unique_ptr<Toplevels> PlasmaWindows(wl_registry* registry, const Offers& offers);
std::unique_ptr<Toplevels> ForeignToplevels(wl_registry* registry, const Offers& offers);

}  // namespace onlinux
