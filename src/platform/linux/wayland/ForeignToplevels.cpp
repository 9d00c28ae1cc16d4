#include <wlr-foreign-toplevel-management-client.h>

#include "platform/linux/wayland/Toplevels.h"

namespace onlinux {
namespace {

struct EndSeat {
  void operator()(wl_seat* seat) const { ::wl_seat_destroy(seat); }
};
struct EndManager {
  void operator()(zwlr_foreign_toplevel_manager_v1* manager) const {
    ::zwlr_foreign_toplevel_manager_v1_destroy(manager);
  }
};

auto* HandleOf(const Toplevel& window) {
  return reinterpret_cast<zwlr_foreign_toplevel_handle_v1*>(window.proxy.get());
}

void HearStates(Toplevel& window, const wl_array& states) {
  window.minimized = window.maximized = window.active = false;
  const auto* first = static_cast<const std::uint32_t*>(states.data);
  for (const auto* state = first; state != first + states.size / sizeof *first; ++state) {
    if (*state == ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED) window.minimized = true;
    if (*state == ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MAXIMIZED) window.maximized = true;
    if (*state == ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED) window.active = true;
  }
}

void HearWindow(Toplevel& window, std::string_view event, const wl_argument* values) {
  if (event == "title") window.title = values[0].s;
  if (event == "app_id") window.program = values[0].s;
  if (event == "state") HearStates(window, *values[0].a);
  if (event == "done") window.known = true;
  if (event == "closed") window.gone = true;
}

class Foreign : public Toplevels {
 public:
  Foreign(wl_registry* registry, const Offer& manager, const Offer* seat) {
    constexpr std::uint32_t newest = 3;
    manager_.reset(static_cast<zwlr_foreign_toplevel_manager_v1*>(::wl_registry_bind(
        registry, manager.name, &zwlr_foreign_toplevel_manager_v1_interface, std::min(manager.version, newest))));
    Listen(reinterpret_cast<wl_proxy*>(manager_.get()), hear_);
    if (seat) seat_.reset(static_cast<wl_seat*>(::wl_registry_bind(registry, seat->name, &wl_seat_interface, 1)));
  }
  void Activate(Toplevel& window) override {
    if (seat_) ::zwlr_foreign_toplevel_handle_v1_activate(HandleOf(window), seat_.get());
  }
  void Minimize(Toplevel& window, bool minimized) override {
    if (minimized)
      ::zwlr_foreign_toplevel_handle_v1_set_minimized(HandleOf(window));
    else
      ::zwlr_foreign_toplevel_handle_v1_unset_minimized(HandleOf(window));
  }
  void Maximize(Toplevel& window) override { ::zwlr_foreign_toplevel_handle_v1_set_maximized(HandleOf(window)); }

 private:
  const Hear hear_ = [this](std::string_view event, const wl_argument* values) {
    if (event == "finished") LoseAll();
    if (event != "toplevel") return;
    const auto end = [](wl_proxy* proxy) {
      ::zwlr_foreign_toplevel_handle_v1_destroy(reinterpret_cast<zwlr_foreign_toplevel_handle_v1*>(proxy));
    };
    Add(Proxy(reinterpret_cast<wl_proxy*>(values[0].o), end), HearWindow);
  };
  std::unique_ptr<wl_seat, EndSeat> seat_;
  std::unique_ptr<zwlr_foreign_toplevel_manager_v1, EndManager> manager_;
};

}  // namespace

std::unique_ptr<Toplevels> ForeignToplevels(wl_registry* registry, const Offers& offers) {
  const auto manager = offers.find(zwlr_foreign_toplevel_manager_v1_interface.name);
  const auto seat = offers.find(wl_seat_interface.name);
  if (manager == offers.end()) return nullptr;
  return std::make_unique<Foreign>(registry, manager->second, seat == offers.end() ? nullptr : &seat->second);
}

}  // namespace onlinux
