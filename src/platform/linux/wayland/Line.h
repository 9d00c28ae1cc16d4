#pragma once

#include <wayland-client.h>

#include <chrono>
#include <functional>
#include <memory>

namespace onlinux {

// The program's line to the Wayland compositor. Nothing on it waits longer than a moment: less than users wait for a
// window, where the compositor hangs. A line that broke stays so.
class Line {
 public:
  static constexpr std::chrono::milliseconds Patience{700};

  Line();

  // True while the line holds.
  bool Works() const;
  wl_display* Display() const { return display_.get(); }
  // Sends what was asked for, and handles what has come. True where something had.
  bool HandleWaiting();
  // Waits until something holds. False when that took too long.
  bool WaitUntil(const std::function<bool()>& holds, std::chrono::milliseconds longest = Patience);
  // Waits until all that was asked for is answered. False when that took too long.
  bool AwaitAnswers();

 private:
  using Clock = std::chrono::steady_clock;
  // How many events were handled, below 0 where the line broke.
  int Handle(Clock::duration longest);

  struct Disconnect {
    void operator()(wl_display* display) const { ::wl_display_disconnect(display); }
  };
  std::unique_ptr<wl_display, Disconnect> display_;
};

}  // namespace onlinux
