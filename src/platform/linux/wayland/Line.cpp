#include "platform/linux/wayland/Line.h"

#include <poll.h>

#include "platform/linux/desktop/CompositorLine.h"

namespace onlinux {
namespace {

struct EndCallback {
  void operator()(wl_callback* callback) const { ::wl_callback_destroy(callback); }
};

}  // namespace

Line::Line() {
  auto line = LineToCompositor();
  if (line) display_.reset(::wl_display_connect_to_fd(line.Release()));
}

bool Line::Works() const { return display_ && ::wl_display_get_error(display_.get()) == 0; }

int Line::Handle(Clock::duration longest) {
  auto* display = display_.get();
  int handled = 0;
  while (::wl_display_prepare_read(display) != 0) {
    const int more = ::wl_display_dispatch_pending(display);
    if (more < 0) return more;
    handled += more;
  }
  ::wl_display_flush(display);
  pollfd line{.fd = ::wl_display_get_fd(display), .events = POLLIN, .revents = 0};
  const auto wait = handled > 0 ? std::chrono::milliseconds(0) : std::chrono::ceil<std::chrono::milliseconds>(longest);
  if (::poll(&line, 1, static_cast<int>(wait.count())) != 1) {
    ::wl_display_cancel_read(display);
    return handled;
  }
  if (::wl_display_read_events(display) != 0) return -1;
  const int more = ::wl_display_dispatch_pending(display);
  return more < 0 ? more : handled + more;
}

bool Line::HandleWaiting() { return Works() && Handle({}) > 0; }

bool Line::WaitUntil(const std::function<bool()>& holds, std::chrono::milliseconds longest) {
  const auto end = Clock::now() + longest;
  while (!holds()) {
    const auto left = end - Clock::now();
    if (left <= Clock::duration() || !Works() || Handle(left) < 0) return false;
  }
  return true;
}

bool Line::AwaitAnswers() {
  if (!Works()) return false;
  bool answered = false;
  const std::unique_ptr<wl_callback, EndCallback> callback(::wl_display_sync(display_.get()));
  static constexpr wl_callback_listener listener{
      .done = [](void* data, wl_callback*, std::uint32_t) { *static_cast<bool*>(data) = true; }};
  ::wl_callback_add_listener(callback.get(), &listener, &answered);
  return WaitUntil([&] { return answered; });
}

}  // namespace onlinux
