#pragma once

#include <plasma-window-management-client.h>
#include <wayland-server.h>

#include "Children.h"

// A window of the stand-in for Plasma's compositor.
struct StandInWindow {
  std::string title;
  std::uint32_t process = 0;
  bool closes = false;  // as soon as it is told to do something
  bool late = false;    // it comes only after somebody has asked for the windows
  std::uint32_t state = ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_CLOSEABLE;
};

// Plasma's compositor, as far as programs see it that look at windows. It pins none, whatever it is told.
class StandInCompositor {
 public:
  StandInCompositor(const std::string& socket, std::vector<StandInWindow> windows) : windows_(std::move(windows)) {
    ::wl_display_add_socket(display_, socket.c_str());
    ::wl_global_create(display_, &Manager, 16, this,
                       [](wl_client* client, void* data, std::uint32_t, std::uint32_t id) {
                         auto& self = *static_cast<StandInCompositor*>(data);
                         self.manager_ = self.New(client, Manager, id, Manage, data);
                         Tell(self.manager_, Manager, "stacking_order_uuid_changed", "0;1;2;3;4");
                         self.TellOf(false);
                         ::wl_event_source_timer_update(self.timer_, 200);
                       });
  }
  void Run() { ::wl_display_run(display_); }

 private:
  static constexpr auto& Manager = org_kde_plasma_window_management_interface;
  static constexpr auto& Window = org_kde_plasma_window_interface;

  static wl_resource* New(wl_client* client, const wl_interface& kind, std::uint32_t id, wl_dispatcher_func_t hear,
                          void* data) {
    auto* object = ::wl_resource_create(client, &kind, 16, id);
    ::wl_resource_set_dispatcher(object, hear, data, data, nullptr);
    return object;
  }
  template <class... T>
  static void Tell(wl_resource* object, const wl_interface& kind, const std::string& event, T... values) {
    for (int i = 0; i < kind.event_count; ++i)
      if (kind.events[i].name == event) ::wl_resource_post_event(object, static_cast<std::uint32_t>(i), values...);
  }
  void TellOf(bool late) {
    for (std::size_t i = 0; i < windows_.size(); ++i)
      if (windows_[i].late == late) Tell(manager_, Manager, "window_with_uuid", 0, std::to_string(i).c_str());
  }
  static int Late(void* data) {
    auto& self = *static_cast<StandInCompositor*>(data);
    self.TellOf(true);
    for (auto& window : self.windows_) window.late = false;
    return 0;
  }
  static int Manage(const void* data, void* object, std::uint32_t, const wl_message* request, wl_argument* values) {
    if (request->name != std::string("get_window_by_uuid")) return 0;
    auto& window =
        const_cast<StandInCompositor*>(static_cast<const StandInCompositor*>(data))->windows_[std::stoul(values[1].s)];
    auto* handle = New(::wl_resource_get_client(static_cast<wl_resource*>(object)), Window, values[0].n, Do, &window);
    Tell(handle, Window, "title_changed", window.title.c_str());
    Tell(handle, Window, "pid_changed", window.process);
    Tell(handle, Window, "state_changed", window.state);
    Tell(handle, Window, "initial_state");
    return 0;
  }
  static int Do(const void*, void* object, std::uint32_t, const wl_message* request, wl_argument* values) {
    auto* handle = static_cast<wl_resource*>(object);
    auto& window = *static_cast<StandInWindow*>(::wl_resource_get_user_data(handle));
    if (request->name == std::string("destroy")) ::wl_resource_destroy(handle);
    if (request->name != std::string("set_state")) return 0;
    const auto taken = values[0].u & ~static_cast<std::uint32_t>(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_KEEP_ABOVE);
    window.state = (window.state & ~taken) | (values[1].u & taken);
    window.closes ? Tell(handle, Window, "unmapped") : Tell(handle, Window, "state_changed", window.state);
    return 0;
  }

  wl_display* display_ = ::wl_display_create();
  wl_event_source* timer_ = ::wl_event_loop_add_timer(::wl_display_get_event_loop(display_), Late, this);
  std::vector<StandInWindow> windows_;
  wl_resource* manager_ = nullptr;  // of the last who asked
};
