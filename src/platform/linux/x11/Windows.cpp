#include <algorithm>
#include <array>

#include "platform/linux/ground/OwnWindows.h"
#include "platform/linux/x11/Calls.h"
#include "platform/linux/x11/TopLevels.h"
#include "platform/linux/x11/WindowOwner.h"
#include "platform/linux/x11/WindowState.h"
#include "platform/user32.h"

namespace onlinux {
namespace {

using platform::WindowHandle;

// True for a request that came from a tool of the user and not from the window's own program.
constexpr std::uint32_t FromUsersTool = 2;

// The toolkit makes windows for its own ends, on the line on which it makes those of the forms.
void LeaveOutOwnHelpers(XServer& server, std::vector<xcb_window_t>& windows) {
  const auto lineOf = [&](WindowHandle window) { return window & ~::xcb_get_setup(server.Line())->resource_id_mask; };
  for (const auto* form : OwnForms()) {
    if (!IsOnX(form->Number())) continue;
    std::erase_if(windows, [&](xcb_window_t window) {
      return lineOf(window) == lineOf(form->Number()) && !FindOwn(window) && !IsVisible(server, window);
    });
    return;
  }
}

bool Raise(XServer& server, WindowHandle window) {
  constexpr std::uint32_t above = XCB_STACK_MODE_ABOVE;
  return server.Did(::xcb_configure_window_checked(server.Line(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above));
}

// Nobody changes the state of a window that no manager looks after: it is read when one takes the window over.
bool WriteAbove(XServer& server, WindowHandle window, bool above) {
  auto states = server.ReadNumbers(window, "_NET_WM_STATE");
  std::erase(states, server.Atom("_NET_WM_STATE_ABOVE"));
  if (above) states.push_back(server.Atom("_NET_WM_STATE_ABOVE"));
  const auto count = static_cast<std::uint32_t>(states.size());
  return server.Did(::xcb_change_property_checked(server.Line(), XCB_PROP_MODE_REPLACE, window,
                                                  server.Atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32, count,
                                                  states.data()));
}

}  // namespace

std::vector<SeenWindow> Windows() {
  auto* server = TheXServer();
  if (!server) return {};
  auto numbers = TopLevels(*server);
  LeaveOutOwnHelpers(*server, numbers);
  auto titles = TitlesOf(*server, numbers);
  std::vector<SeenWindow> windows;
  for (std::size_t i = 0; i < numbers.size(); ++i) windows.push_back({numbers[i], std::move(titles[i])});
  return windows;
}

std::string TitleOf(WindowHandle window) {
  auto* server = TheXServer();
  return server ? TitlesOf(*server, {window}).front() : std::string();
}

bool Shows(WindowHandle window) {
  auto* server = TheXServer();
  return server && IsVisible(*server, window);
}

bool Show(WindowHandle window, bool show) {
  auto* server = TheXServer();
  if (!server) return false;
  if (!show) return Withdraw(*server, window);
  return server->Did(::xcb_map_window_checked(server->Line(), window));
}

bool BringToFront(WindowHandle window) {
  auto* server = TheXServer();
  if (!server) return false;
  if (server->HasManager()) return server->AskManager(window, "_NET_ACTIVE_WINDOW", {FromUsersTool, 0, 0, 0, 0});
  return Raise(*server, window) &&
         server->Did(::xcb_set_input_focus_checked(server->Line(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME));
}

bool KeepAbove(WindowHandle window, bool above) {
  auto* server = TheXServer();
  if (!server) return false;
  const bool managed = server->HasManager() && IsManaged(*server, window);
  const auto can = managed ? server->ReadNumbers(server->Root(), "_NET_SUPPORTED") : std::vector<std::uint32_t>();
  if (managed && above && std::ranges::count(can, server->Atom("_NET_WM_STATE_ABOVE")) == 0) return false;
  if (managed)
    return server->AskManager(window, "_NET_WM_STATE",
                              {above ? 1U : 0U, server->Atom("_NET_WM_STATE_ABOVE"), 0, FromUsersTool, 0});
  return WriteAbove(*server, window, above) && (!above || Raise(*server, window));
}

bool Place(WindowHandle window, const std::array<int, 4>& place, std::uint32_t flags) {
  auto* server = TheXServer();
  if (!server) return false;
  std::uint16_t mask = 0;
  std::array<std::uint32_t, 4> values{};
  std::size_t count = 0;
  const auto add = [&](std::uint16_t bit, int value) {
    mask |= bit;
    values[count++] = static_cast<std::uint32_t>(value);
  };
  if (!(flags & platform::SWP_NOMOVE)) add(XCB_CONFIG_WINDOW_X, place[0]), add(XCB_CONFIG_WINDOW_Y, place[1]);
  if (!(flags & platform::SWP_NOSIZE)) add(XCB_CONFIG_WINDOW_WIDTH, place[2]), add(XCB_CONFIG_WINDOW_HEIGHT, place[3]);
  return mask == 0 || server->Did(::xcb_configure_window_checked(server->Line(), window, mask, values.data()));
}

// A window that no manager looks after is unknown to a compositor too.
std::vector<WindowTraits> TraitsOf(const std::vector<SeenWindow>& windows) {
  std::vector<WindowTraits> all(windows.size());
  auto* server = TheXServer();
  for (std::size_t i = 0; server && i < windows.size(); ++i) {
    const auto window = windows[i].number;
    if (!IsManaged(*server, window)) continue;
    // Two names, each with a NUL behind it.
    const auto names = server->Read(window, "WM_CLASS").bytes;
    const std::string first = names.c_str();
    all[i] = {windows[i].title,
              {first, names.substr(std::min(names.size(), first.size() + 1)).c_str()},
              OwnersOf(*server, window)};
  }
  return all;
}

}  // namespace onlinux
