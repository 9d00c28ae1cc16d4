#include "platform/linux/x11/XServer.h"

#include <unistd.h>

#include <chrono>
#include <cstring>
#include <future>

#include "platform/linux/ground/Ahead.h"

namespace onlinux {

XServer::XServer() {
  int screen = 0;
  line_ = ::xcb_connect(nullptr, &screen);
  if (!Works()) return;
  auto screens = ::xcb_setup_roots_iterator(::xcb_get_setup(line_));
  for (; screen > 0 && screens.rem > 1; --screen) ::xcb_screen_next(&screens);
  root_ = screens.data->root;
}

XServer::~XServer() { ::xcb_disconnect(line_); }

bool XServer::Works() const { return ::xcb_connection_has_error(line_) == 0; }

xcb_atom_t XServer::Atom(const std::string& name) {
  if (const auto at = atoms_.find(name); at != atoms_.end()) return at->second;
  const auto length = static_cast<std::uint16_t>(name.size());
  const Reply<xcb_intern_atom_reply_t> reply(
      ::xcb_intern_atom_reply(line_, ::xcb_intern_atom(line_, 0, length, name.c_str()), nullptr));
  if (!reply) return XCB_ATOM_NONE;
  return atoms_[name] = reply->atom;
}

xcb_get_property_cookie_t XServer::Ask(xcb_window_t window, const std::string& name) {
  constexpr std::uint32_t most = 65536;  // in units of four bytes
  return ::xcb_get_property(line_, 0, window, Atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, most);
}

Property XServer::Answer(xcb_get_property_cookie_t request) {
  const Reply<xcb_get_property_reply_t> reply(::xcb_get_property_reply(line_, request, nullptr));
  if (!reply || reply->type == XCB_ATOM_NONE) return {};
  const auto* bytes = static_cast<const char*>(::xcb_get_property_value(reply.get()));
  return {reply->type, std::string(bytes, static_cast<std::size_t>(::xcb_get_property_value_length(reply.get())))};
}

Property XServer::Read(xcb_window_t window, const std::string& name) { return Answer(Ask(window, name)); }

std::vector<std::pair<Property, Property>> XServer::ReadTwo(const std::vector<xcb_window_t>& windows,
                                                            const std::string& name, const std::string& other) {
  std::vector<std::pair<xcb_get_property_cookie_t, xcb_get_property_cookie_t>> requests;
  for (const auto window : windows) {
    const auto first = Ask(window, name);
    requests.emplace_back(first, Ask(window, other));
  }
  std::vector<std::pair<Property, Property>> properties;
  for (const auto& [first, second] : requests) {
    auto answer = Answer(first);
    properties.emplace_back(std::move(answer), Answer(second));
  }
  return properties;
}

std::vector<std::uint32_t> XServer::ReadNumbers(xcb_window_t window, const std::string& name) {
  const auto property = Read(window, name);
  std::vector<std::uint32_t> numbers(property.bytes.size() / sizeof(std::uint32_t));
  if (!numbers.empty()) std::memcpy(numbers.data(), property.bytes.data(), numbers.size() * sizeof(std::uint32_t));
  return numbers;
}

bool XServer::Did(xcb_void_cookie_t request) {
  const Reply<xcb_generic_error_t> error(::xcb_request_check(line_, request));
  return !error && Works();
}

bool XServer::AskManager(xcb_window_t window, const std::string& what, const std::array<std::uint32_t, 5>& data) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = Atom(what);
  std::memcpy(event.data.data32, data.data(), sizeof event.data.data32);
  constexpr auto whoListens = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
  return Did(::xcb_send_event_checked(line_, 0, root_, whoListens, reinterpret_cast<const char*>(&event)));
}

// The window that the manager leaves as its mark bears its own number; a mark left by a dead one does not.
bool XServer::HasManager() {
  const auto mark = ReadNumbers(root_, "_NET_SUPPORTING_WM_CHECK");
  return !mark.empty() && ReadNumbers(mark.front(), "_NET_SUPPORTING_WM_CHECK") == mark;
}

namespace {

// A server that hangs would hold up the connection for ever, wherever it is, so a thread makes it, which is left behind
// then. A second and a half is more than a busy machine needs, and less than users wait for a window.
std::unique_ptr<XServer> Connect() {
  constexpr std::chrono::milliseconds patience(1500);
  const auto promise = std::make_shared<std::promise<std::unique_ptr<XServer>>>();
  auto server = promise->get_future();
  auto thread = Ahead([promise] { promise->set_value(std::make_unique<XServer>()); });
  if (thread.joinable()) thread.detach();
  return server.wait_for(patience) == std::future_status::ready ? server.get() : nullptr;
}

}  // namespace

XServer* TheXServer() {
  struct Held {
    pid_t holder = 0;
    std::unique_ptr<XServer> server;
  };
  static Held held;
  if (held.holder != ::getpid()) {
    // A line that was taken over from a parent is the parent's, and not even to be closed.
    static_cast<void>(held.server.release());
    held = {::getpid(), Connect()};
  }
  return held.server && held.server->Works() ? held.server.get() : nullptr;
}

}  // namespace onlinux
