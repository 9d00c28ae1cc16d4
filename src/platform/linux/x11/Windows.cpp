#include <algorithm>
#include <array>
#include <cstring>

#include "platform/linux/ground/OwnWindows.h"
#include "platform/linux/x11/Calls.h"
#include "platform/linux/x11/TopLevels.h"
#include "platform/linux/x11/WindowState.h"
#include "platform/machine.h"
#include "platform/user32.h"

namespace onlinux {
namespace {

using platform::WindowHandle;

constexpr std::uint32_t keepOrder = 4;

// The number of a window of the X server has its three highest bits clear.
bool IsOnX(WindowHandle window) { return window != 0 && window < 0x20000000; }

// True for a request that came from a tool of the user and not from the window's own program.
constexpr std::uint32_t FromUsersTool = 2;

struct Titled {
  WindowHandle window = 0;
  std::string title;
};

std::vector<Titled> AllWindows() {
  std::vector<WindowHandle> onServer;
  std::vector<std::string> titles;
  if (auto* server = TheXServer()) {
    onServer = TopLevels(*server);
    titles = TitlesOf(*server, onServer);
  }
  std::vector<Titled> windows;
  for (const auto* form : OwnForms())
    if (std::ranges::count(onServer, form->Number()) == 0) windows.push_back({form->Number(), form->Title()});
  for (std::size_t i = 0; i < onServer.size(); ++i) {
    const auto* own = FindOwn(onServer[i]);
    windows.push_back({onServer[i], own && own->IsForm() ? own->Title() : titles[i]});
  }
  return windows;
}

// The window at which an enumeration is: its title was read with those of all others.
Titled& TheEnumerated() {
  static Titled enumerated;
  return enumerated;
}

std::string TitleOf(WindowHandle window) {
  if (const auto& at = TheEnumerated(); window != 0 && window == at.window) return at.title;
  if (const auto* own = FindOwn(window); own && own->IsForm()) return own->Title();
  auto* server = IsOnX(window) ? TheXServer() : nullptr;
  return server ? TitlesOf(*server, {window}).front() : std::string();
}

bool Shows(WindowHandle window) {
  if (const auto* own = FindOwn(window)) return own->Shows();
  auto* server = IsOnX(window) ? TheXServer() : nullptr;
  return server && IsVisible(*server, window);
}

bool ShowOrHide(WindowHandle window, bool show) {
  if (auto* own = FindOwn(window)) {
    own->ShowOrHide(show);
    return true;
  }
  auto* server = IsOnX(window) ? TheXServer() : nullptr;
  if (!server) return false;
  if (!show) return Withdraw(*server, window);
  return server->Did(::xcb_map_window_checked(server->Line(), window));
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

bool KeepAbove(WindowHandle window, bool above) {
  auto* server = IsOnX(window) ? TheXServer() : nullptr;
  if (!server) return false;
  if (server->HasManager() && IsManaged(*server, window))
    return server->AskManager(window, "_NET_WM_STATE",
                              {above ? 1U : 0U, server->Atom("_NET_WM_STATE_ABOVE"), 0, FromUsersTool, 0});
  return WriteAbove(*server, window, above) && (!above || Raise(*server, window));
}

bool Place(WindowHandle window, std::array<int, 4> place, std::uint32_t flags) {
  auto* server = IsOnX(window) ? TheXServer() : nullptr;
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

bool KeepOwnAbove(OwnWindow& own, bool above) {
  own.KeepAbove(above);
  return true;
}

}  // namespace

WindowHandle FindWindowA(const std::string& title) {
  const auto wanted = platform::LowerCase(title);
  for (const auto& [window, text] : AllWindows())
    if (platform::LowerCase(text) == wanted) return window;
  return 0;
}

bool ShowWindow(WindowHandle window, int showCommand) {
  const bool before = Shows(window);
  return ShowOrHide(window, showCommand != platform::SW_HIDE) && before;
}

bool SetForegroundWindow(WindowHandle window) {
  if (auto* own = FindOwn(window)) {
    own->BringToFront();
    return true;
  }
  auto* server = IsOnX(window) ? TheXServer() : nullptr;
  if (!server) return false;
  if (server->HasManager()) return server->AskManager(window, "_NET_ACTIVE_WINDOW", {FromUsersTool, 0, 0, 0, 0});
  return Raise(*server, window) &&
         server->Did(::xcb_set_input_focus_checked(server->Line(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME));
}

bool EnumWindows(const std::function<bool(WindowHandle)>& callback) {
  auto windows = AllWindows();
  const bool all = std::ranges::all_of(windows, [&](Titled& titled) {
    const auto window = titled.window;
    TheEnumerated() = std::move(titled);
    return callback(window);
  });
  TheEnumerated() = {};
  return all;
}

int GetWindowTextLengthA(WindowHandle window) { return static_cast<int>(TitleOf(window).size()); }

int GetWindowTextA(WindowHandle window, char* buffer, int size) {
  if (size <= 0) return 0;
  const auto title = TitleOf(window);
  const auto length = std::min(title.size(), static_cast<std::size_t>(size) - 1);
  std::memcpy(buffer, title.data(), length);
  buffer[length] = '\0';
  return static_cast<int>(length);
}

bool SetWindowPos(WindowHandle window, std::int32_t insertAfter, int x, int y, int width, int height,
                  std::uint32_t flags) {
  bool done = true;
  if (!(flags & keepOrder) && (insertAfter == platform::HWND_TOPMOST || insertAfter == platform::HWND_NOTOPMOST)) {
    auto* own = FindOwn(window);
    const bool above = insertAfter == platform::HWND_TOPMOST;
    done = own && !(own->Shows() && IsOnX(window)) ? KeepOwnAbove(*own, above) : KeepAbove(window, above);
  }
  if (flags & (platform::SWP_SHOWWINDOW | platform::SWP_HIDEWINDOW))
    done = ShowOrHide(window, (flags & platform::SWP_SHOWWINDOW) != 0) && done;
  if ((flags & (platform::SWP_NOMOVE | platform::SWP_NOSIZE)) == (platform::SWP_NOMOVE | platform::SWP_NOSIZE))
    return done;
  return Place(window, {x, y, width, height}, flags) && done;
}

bool AppActivate(const std::string& title) {
  WindowHandle found = 0;
  for (const auto& [window, text] : AllWindows()) {
    if (!text.starts_with(title) || !Shows(window)) continue;
    if (text == title) {
      found = window;
      break;
    }
    if (found == 0) found = window;
  }
  return found != 0 && SetForegroundWindow(found);
}

}  // namespace onlinux
