#include <plasma-window-management-client.h>

#include <algorithm>

#include "platform/linux/wayland/Toplevels.h"

namespace onlinux {
namespace {

// The first version that names windows by what no other window ever has, and the one that this is written for.
constexpr std::uint32_t oldest = 13;
constexpr std::uint32_t newest = 16;

struct EndManager {
  void operator()(org_kde_plasma_window_management* manager) const {
    ::org_kde_plasma_window_management_destroy(manager);
  }
};

org_kde_plasma_window* HandleOf(const Toplevel& window) {
  return reinterpret_cast<org_kde_plasma_window*>(window.proxy.get());
}

void HearState(Toplevel& window, std::uint32_t state) {
  window.minimized = (state & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED) != 0;
  window.maximized = (state & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MAXIMIZED) != 0;
  window.active = (state & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE) != 0;
  window.above = (state & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_KEEP_ABOVE) != 0;
  constexpr auto anyUsers =
      ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_CLOSEABLE | ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZABLE;
  window.isPart = (state & anyUsers) == 0;
}

void HearWindow(Toplevel& window, std::string_view event, const wl_argument* values) {
  if (event == "title_changed") window.title = values[0].s;
  if (event == "app_id_changed") window.program = values[0].s;
  if (event == "pid_changed") window.process = values[0].u;
  if (event == "state_changed") HearState(window, values[0].u);
  if (event == "initial_state") window.known = true;
  if (event == "unmapped") window.gone = true;
}

void Set(Toplevel& window, std::uint32_t flag, bool on) {
  ::org_kde_plasma_window_set_state(HandleOf(window), flag, on ? flag : 0);
}

class Plasma : public Toplevels {
 public:
  Plasma(wl_registry* registry, const Offer& manager)
      : manager_(static_cast<org_kde_plasma_window_management*>(::wl_registry_bind(
            registry, manager.name, &org_kde_plasma_window_management_interface, std::min(manager.version, newest)))) {
    Listen(reinterpret_cast<wl_proxy*>(manager_.get()), hear_);
  }
  void Activate(Toplevel& window) override { Set(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE, true); }
  void Minimize(Toplevel& window, bool minimized) override {
    Set(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED, minimized);
  }
  void Maximize(Toplevel& window) override { Set(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MAXIMIZED, true); }
  void KeepAbove(Toplevel& window, bool above) override {
    Set(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_KEEP_ABOVE, above);
  }
  std::vector<Toplevel*> FrontToBack() override {
    auto windows = Toplevels::FrontToBack();
    // From back to front, and not found for one that is not in it yet.
    std::ranges::stable_sort(windows, std::greater(), [&](const Toplevel* window) { return order_.find(window->id); });
    return windows;
  }

 private:
  void Take(const std::string& id) {
    const auto end = [](wl_proxy* proxy) {
      ::org_kde_plasma_window_destroy(reinterpret_cast<org_kde_plasma_window*>(proxy));
    };
    auto* handle = ::org_kde_plasma_window_management_get_window_by_uuid(manager_.get(), id.c_str());
    Add(Proxy(reinterpret_cast<wl_proxy*>(handle), end), HearWindow).id = id;
  }

  const Hear hear_ = [this](std::string_view event, const wl_argument* values) {
    if (event == "window_with_uuid") Take(values[1].s);
    if (event == "stacking_order_uuid_changed") order_ = values[0].s;
  };
  std::string order_;
  std::unique_ptr<org_kde_plasma_window_management, EndManager> manager_;
};

}  // namespace

std::unique_ptr<Toplevels> PlasmaWindows(wl_registry* registry, const Offers& offers) {
  const auto manager = offers.find(org_kde_plasma_window_management_interface.name);
  if (manager == offers.end() || manager->second.version < oldest) return nullptr;
  return std::make_unique<Plasma>(registry, manager->second);
}

}  // namespace onlinux
