#include <algorithm>
#include <array>
#include <ranges>
#include <utility>

#include "platform/linux/processes/Descent.h"
#include "platform/linux/x11/Calls.h"
#include "platform/linux/x11/TopLevels.h"
#include "platform/linux/x11/WindowOwner.h"
#include "platform/linux/x11/WindowState.h"

namespace onlinux {
namespace {

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

void Listen(XServer& server) {
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
  ::xcb_change_window_attributes(server.Line(), server.Root(), XCB_CW_EVENT_MASK, &events);
}

class FirstXWindow : public FirstWindow {
 public:
  FirstXWindow(Descent descent, ShowState state) : descent_(std::move(descent)), state_(state) {
    if (server_.Works()) Listen(server_);
  }
  int Line() const override { return server_.Works() ? ::xcb_get_file_descriptor(server_.Line()) : -1; }
  bool HasNews() override {
    bool news = false;
    while (const Reply<xcb_generic_event_t> event{::xcb_poll_for_event(server_.Line())})
      news = TellsOfWindows(server_, *event) || news;
    return news;
  }
  Stage Look() override {
    // The number of a window that went away can be a stranger's by now.
    const bool had = window_ != XCB_NONE;
    if (had && (!ReadFacts(server_, window_) || !BelongsTo(server_, window_, descent_))) window_ = XCB_NONE;
    if (!had) window_ = FindFirst(server_, descent_);
    if (window_ == XCB_NONE) return Stage::None;
    if (IsInState(server_, window_, state_)) return Stage::Reached;
    RequestState(server_, window_, state_);
    return Stage::Asked;
  }

 private:
  XServer server_;
  Descent descent_;
  ShowState state_;
  xcb_window_t window_ = XCB_NONE;
};

}  // namespace

std::unique_ptr<FirstWindow> LookOnX(const Descent& descent, ShowState state) {
  auto first = std::make_unique<FirstXWindow>(descent, state);
  return first->Line() >= 0 ? std::move(first) : nullptr;
}

}  // namespace onlinux
