#include <xcb/xtest.h>

#include <chrono>
#include <thread>

#include "platform/linux/x11/Calls.h"
#include "platform/linux/x11/XServer.h"

namespace onlinux {
namespace {

constexpr xcb_keysym_t Enter = 0xFF0D;

// The number of the first key that gives a symbol on this keyboard, 0 for none.
xcb_keycode_t KeyFor(XServer& server, xcb_keysym_t symbol) {
  const auto* setup = ::xcb_get_setup(server.Line());
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const Reply<xcb_get_keyboard_mapping_reply_t> reply(::xcb_get_keyboard_mapping_reply(
      server.Line(), ::xcb_get_keyboard_mapping(server.Line(), setup->min_keycode, count), nullptr));
  if (!reply || reply->keysyms_per_keycode == 0) return 0;
  const auto* symbols = ::xcb_get_keyboard_mapping_keysyms(reply.get());
  for (int i = 0; i < ::xcb_get_keyboard_mapping_keysyms_length(reply.get()); ++i)
    if (symbols[i] == symbol) return static_cast<xcb_keycode_t>(setup->min_keycode + i / reply->keysyms_per_keycode);
  return 0;
}

// Presses or releases a key as the user's own keyboard would.
bool Strike(XServer& server, std::uint8_t what, xcb_keycode_t key) {
  return server.Did(::xcb_test_fake_input_checked(server.Line(), what, key, XCB_CURRENT_TIME, server.Root(), 0, 0, 0));
}

// What is left where the server simulates no keyboard; not every program listens to it.
bool SendStroke(XServer& server, std::uint8_t what, xcb_keycode_t key) {
  const Reply<xcb_get_input_focus_reply_t> focus(
      ::xcb_get_input_focus_reply(server.Line(), ::xcb_get_input_focus(server.Line()), nullptr));
  if (!focus) return false;
  xcb_key_press_event_t event{};
  event.response_type = what;
  event.detail = key;
  event.root = server.Root();
  event.event = focus->focus;
  event.same_screen = 1;
  return server.Did(::xcb_send_event_checked(server.Line(), 1, focus->focus, XCB_EVENT_MASK_KEY_PRESS,
                                             reinterpret_cast<const char*>(&event)));
}

}  // namespace

bool SendKeys(const std::string& keys) {
  auto* server = keys == "~" ? TheXServer() : nullptr;
  const auto key = server ? KeyFor(*server, Enter) : xcb_keycode_t{0};
  if (key == 0) return false;
  // A window that was just brought to the front gets the keyboard a moment later.
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  const bool simulated = ::xcb_get_extension_data(server->Line(), &xcb_test_id)->present != 0;
  const auto strike = [&](std::uint8_t what) {
    return simulated ? Strike(*server, what, key) : SendStroke(*server, what, key);
  };
  const bool pressed = strike(XCB_KEY_PRESS);
  return strike(XCB_KEY_RELEASE) && pressed;
}

}  // namespace onlinux
