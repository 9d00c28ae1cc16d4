#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/ground/FreeMemory.h"

namespace onlinux {

// An answer of the X server.
template <class T>
using Reply = std::unique_ptr<T, FreeMemory>;

// A property of a window: the name of its type and its bytes.
struct Property {
  xcb_atom_t type = XCB_ATOM_NONE;
  std::string bytes;
};

// The program's line to the X server, on which it looks at windows of all programs. A window may go away at any moment,
// and then what is asked of it is answered with nothing.
class XServer {
 public:
  XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;
  ~XServer();

  // True while the server answers.
  bool Works() const;
  xcb_connection_t* Line() const { return line_; }
  xcb_window_t Root() const { return root_; }
  // The number of a name, asked for once.
  xcb_atom_t Atom(const std::string& name);
  // A property of a window, empty where it has none.
  Property Read(xcb_window_t window, const std::string& name);
  // The same, of a property that is a list of numbers of 32 bits.
  std::vector<std::uint32_t> ReadNumbers(xcb_window_t window, const std::string& name);
  // Two properties of each of some windows, all asked for before the first answer is awaited.
  std::vector<std::pair<Property, Property>> ReadTwo(const std::vector<xcb_window_t>& windows, const std::string& name,
                                                     const std::string& other);
  // True where the server did what it was asked.
  bool Did(xcb_void_cookie_t request);
  // Asks the window manager for something about a window.
  bool AskManager(xcb_window_t window, const std::string& what, const std::array<std::uint32_t, 5>& data);
  // True where a window manager that understands such requests runs.
  bool HasManager();

 private:
  xcb_get_property_cookie_t Ask(xcb_window_t window, const std::string& name);
  Property Answer(xcb_get_property_cookie_t request);

  xcb_connection_t* line_;
  xcb_window_t root_ = XCB_NONE;
  std::map<std::string, xcb_atom_t> atoms_;
};

// The X server of the user's desktop, connected to at first use, by each process for itself; null where there is none.
XServer* TheXServer();

}  // namespace onlinux
