#include <poll.h>

#include <algorithm>
#include <array>
#include <ranges>

#include "platform/linux/processes/Descent.h"
#include "platform/linux/x11/Calls.h"
#include "platform/linux/x11/TopLevels.h"
#include "platform/linux/x11/WindowOwner.h"
#include "platform/linux/x11/WindowState.h"

namespace onlinux {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Many a game takes its first window away and shows another, or the same again, before it settles.
constexpr milliseconds settlingTime{1000};

// What a program shows beside its windows, or before the first of them.
bool IsForShow(XServer& server, xcb_window_t window) {
  constexpr std::array kinds{"SPLASH",        "TOOLTIP", "NOTIFICATION", "MENU", "POPUP_MENU",
                             "DROPDOWN_MENU", "COMBO",   "DND",          "DOCK", "DESKTOP"};
  const auto types = server.ReadNumbers(window, "_NET_WM_WINDOW_TYPE");
  return !types.empty() && std::ranges::any_of(kinds, [&](const std::string kind) {
    return types.front() == server.Atom("_NET_WM_WINDOW_TYPE_" + kind);
  });
}

// A window that its manager has not yet taken over would lose what it is told.
bool IsReady(XServer& server, xcb_window_t window, bool managed) {
  const auto facts = ReadFacts(server, window);
  return facts && facts->map_state == XCB_MAP_STATE_VIEWABLE && !facts->override_redirect &&
         (!managed || IsManaged(server, window)) && !IsForShow(server, window);
}

bool BelongsTo(XServer& server, xcb_window_t window, const Descent& descent) {
  return std::ranges::any_of(OwnersOf(server, window), [&](auto owner) { return CameFrom(owner, descent); });
}

// Of several windows the hindmost, which came first.
xcb_window_t FindFirst(XServer& server, const Descent& descent) {
  const bool managed = HasAnyManager(server);
  for (const auto window : TopLevels(server) | std::views::reverse)
    if (IsReady(server, window, managed) && BelongsTo(server, window, descent)) return window;
  return XCB_NONE;
}

// True for an event that may have brought a window, or its manager's work on it, to an end.
bool TellsOfWindows(XServer& server, const xcb_generic_event_t& event) {
  const auto what = event.response_type & 0x7F;
  if (what != XCB_PROPERTY_NOTIFY) return what == XCB_MAP_NOTIFY || what == XCB_REPARENT_NOTIFY;
  const auto name = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
  return name == server.Atom("_NET_CLIENT_LIST") || name == server.Atom("_NET_CLIENT_LIST_STACKING");
}

// Waits for such an event, and no longer than a moment: what a program or a manager writes on a window that it has
// shown is told to nobody else.
void AwaitNews(XServer& server, milliseconds left) {
  const auto end = Clock::now() + std::min(left, milliseconds(200));
  for (;;) {
    bool news = false;
    while (const Reply<xcb_generic_event_t> event{::xcb_poll_for_event(server.Line())})
      news = TellsOfWindows(server, *event) || news;
    const auto rest = std::chrono::ceil<milliseconds>(end - Clock::now());
    if (news || rest.count() <= 0 || !server.Works()) return;
    pollfd line{::xcb_get_file_descriptor(server.Line()), POLLIN, 0};
    ::poll(&line, 1, static_cast<int>(rest.count()));
  }
}

void Listen(XServer& server) {
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
  ::xcb_change_window_attributes(server.Line(), server.Root(), XCB_CW_EVENT_MASK, &events);
}

}  // namespace

bool ShowFirstWindow(const Descent& descent, ShowState state, milliseconds limit) {
  if (state == ShowState::Normal) return true;
  XServer server;
  if (!server.Works()) return false;
  Listen(server);
  const auto end = Clock::now() + limit;
  xcb_window_t window = XCB_NONE;
  constexpr auto notYet = Clock::time_point::max();
  auto settled = notYet;  // when the window will have kept its state for long enough
  for (auto left = limit; server.Works() && left.count() > 0;
       left = std::chrono::ceil<milliseconds>(end - Clock::now())) {
    // The number of a window that went away can be a stranger's by now.
    if (!ReadFacts(server, window) || !BelongsTo(server, window, descent)) {
      window = FindFirst(server, descent);
      settled = notYet;
    }
    if (window != XCB_NONE && IsInState(server, window, state)) {
      settled = std::min(settled, Clock::now() + settlingTime);
      if (Clock::now() >= settled) return true;
    } else if (window != XCB_NONE) {
      RequestState(server, window, state);
      settled = notYet;
    }
    AwaitNews(server, left);
  }
  return settled != notYet;
}

}  // namespace onlinux
