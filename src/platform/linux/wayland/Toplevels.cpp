#include "platform/linux/wayland/Toplevels.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include "platform/linux/desktop/WindowCalls.h"

namespace onlinux {
namespace {

int Dispatch(const void* hear, void*, std::uint32_t, const wl_message* event, wl_argument* values) {
  (*static_cast<const Hear*>(hear))(event->name, values);
  return 0;
}

bool IsThere(const Toplevel& window) { return window.known && !window.isPart && !window.gone; }

}  // namespace

void Toplevels::Listen(wl_proxy* proxy, const Hear& hear) {
  ::wl_proxy_add_dispatcher(proxy, Dispatch, &hear, nullptr);
}

Toplevel& Toplevels::Add(Proxy proxy, std::function<void(Toplevel&, std::string_view, const wl_argument*)> hear) {
  auto& window = *windows_.emplace_back(std::make_unique<Toplevel>());
  window.proxy = std::move(proxy);
  window.number = FirstOfCompositor + last_++;
  window.hear = [&window, hear = std::move(hear)](std::string_view event, const wl_argument* values) {
    hear(window, event, values);
  };
  Listen(window.proxy.get(), window.hear);
  return window;
}

std::vector<Toplevel*> Toplevels::FrontToBack() {
  // Not as soon as they are gone: they may be those that just heard of it.
  std::erase_if(windows_, [](const auto& window) { return window->gone; });
  std::vector<Toplevel*> windows;
  for (const auto& window : windows_ | std::views::reverse)
    if (IsThere(*window)) windows.push_back(window.get());
  std::ranges::stable_partition(windows, &Toplevel::active);
  return windows;
}

Toplevel* Toplevels::Find(platform::WindowHandle number) const {
  const auto at = std::ranges::find(windows_, number, [](const auto& window) { return window->number; });
  return at != windows_.end() && IsThere(**at) ? at->get() : nullptr;
}

bool Toplevels::AreKnown() const {
  return std::ranges::all_of(windows_, [](const auto& window) { return window->known || window->gone; });
}

void Toplevels::LoseAll() {
  for (const auto& window : windows_) window->gone = true;
}

}  // namespace onlinux
