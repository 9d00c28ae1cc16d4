#include "platform/linux/x11/WindowState.h"

#include <algorithm>
#include <array>

#include "platform/linux/x11/TopLevels.h"

namespace onlinux {
namespace {

constexpr std::uint32_t Iconic = 3;
constexpr std::uint32_t Add = 1;
constexpr std::uint32_t FromUsersTool = 2;
constexpr auto Tall = "_NET_WM_STATE_MAXIMIZED_VERT";
constexpr auto Wide = "_NET_WM_STATE_MAXIMIZED_HORZ";

using Geometry = Reply<xcb_get_geometry_reply_t>;

Geometry ReadGeometry(XServer& server, xcb_window_t window) {
  return Geometry(::xcb_get_geometry_reply(server.Line(), ::xcb_get_geometry(server.Line(), window), nullptr));
}

// An old manager can't be asked, but lets a window be as large as its program wants it.
bool Maximize(XServer& server, xcb_window_t window) {
  if (server.HasManager())
    return server.AskManager(window, "_NET_WM_STATE", {Add, server.Atom(Tall), server.Atom(Wide), FromUsersTool, 0});
  const auto screen = ReadGeometry(server, server.Root());
  if (!screen) return false;
  const std::array<std::uint32_t, 5> place{0, 0, screen->width, screen->height, 0};
  constexpr auto mask = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT |
                        XCB_CONFIG_WINDOW_BORDER_WIDTH;
  return server.Did(::xcb_configure_window_checked(server.Line(), window, mask, place.data()));
}

// Without a manager nobody marks a window as a minimized one, as which it stays in the list of windows, and which a
// manager that comes later heeds.
bool Minimize(XServer& server, xcb_window_t window) {
  if (HasAnyManager(server)) return server.AskManager(window, "WM_CHANGE_STATE", {Iconic, 0, 0, 0, 0});
  const std::array<std::uint32_t, 2> state{Iconic, XCB_NONE};
  const auto name = server.Atom("WM_STATE");
  return server.Did(::xcb_change_property_checked(server.Line(), XCB_PROP_MODE_REPLACE, window, name, name, 32, 2,
                                                  state.data())) &&
         server.Did(::xcb_unmap_window_checked(server.Line(), window));
}

bool FillsTheScreen(XServer& server, xcb_window_t window) {
  const auto screen = ReadGeometry(server, server.Root());
  const auto place = ReadGeometry(server, window);
  return screen && place && place->width == screen->width && place->height == screen->height;
}

bool BearsMaximizedMarks(XServer& server, xcb_window_t window) {
  const auto states = server.ReadNumbers(window, "_NET_WM_STATE");
  return std::ranges::count(states, server.Atom(Tall)) > 0 && std::ranges::count(states, server.Atom(Wide)) > 0;
}

}  // namespace

bool HasAnyManager(XServer& server) {
  const auto facts = ReadFacts(server, server.Root());
  return facts && (facts->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
}

// A window manager lets go of a window only when it is told by an event of its own that the window was withdrawn.
bool Withdraw(XServer& server, xcb_window_t window) {
  if (!server.Did(::xcb_unmap_window_checked(server.Line(), window))) return false;
  xcb_unmap_notify_event_t event{};
  event.response_type = XCB_UNMAP_NOTIFY;
  event.event = server.Root();
  event.window = window;
  constexpr auto whoListens = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
  return server.Did(
      ::xcb_send_event_checked(server.Line(), 0, server.Root(), whoListens, reinterpret_cast<const char*>(&event)));
}

bool RequestState(XServer& server, xcb_window_t window, ShowState state) {
  switch (state) {
    case ShowState::Hidden:
      return Withdraw(server, window);
    case ShowState::Minimized:
      return Minimize(server, window);
    case ShowState::Maximized:
      return Maximize(server, window);
    default:
      return true;
  }
}

bool IsInState(XServer& server, xcb_window_t window, ShowState state) {
  switch (state) {
    case ShowState::Hidden:
      return !IsVisible(server, window);
    case ShowState::Minimized: {
      const auto marks = server.ReadNumbers(window, "WM_STATE");
      return !marks.empty() && marks.front() == Iconic;
    }
    case ShowState::Maximized:
      return server.HasManager() ? BearsMaximizedMarks(server, window) : FillsTheScreen(server, window);
    default:
      return true;
  }
}

}  // namespace onlinux
