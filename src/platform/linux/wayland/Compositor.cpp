#include "platform/linux/wayland/Compositor.h"

#include <unistd.h>

namespace onlinux {
namespace {

void HearOffer(void* offers, wl_registry*, std::uint32_t name, const char* kind, std::uint32_t version) {
  static_cast<Offers*>(offers)->insert({kind, {name, version}});
}

constexpr wl_registry_listener listener{.global = HearOffer,
                                        .global_remove = [](void*, wl_registry*, std::uint32_t) {}};

}  // namespace

Compositor::Compositor() {
  if (!line_.Works()) return;
  registry_.reset(::wl_display_get_registry(line_.Display()));
  ::wl_registry_add_listener(registry_.get(), &listener, &offers_);
  answered_ = line_.AwaitAnswers();
  toplevels_ = PlasmaWindows(registry_.get(), offers_);
  if (!toplevels_) toplevels_ = ForeignToplevels(registry_.get(), offers_);
}

bool Compositor::IsPlasmas() const {
  const auto at = offers_.lower_bound("org_kde_");
  return at != offers_.end() && at->first.starts_with("org_kde_");
}

std::vector<Toplevel*> Compositor::Windows() {
  if (!toplevels_ || !Works()) return {};
  // One that hangs leaves those that it told of before.
  if (line_.AwaitAnswers()) line_.WaitUntil([this] { return toplevels_->AreKnown(); });
  return Works() ? toplevels_->FrontToBack() : std::vector<Toplevel*>();
}

Toplevel* Compositor::Find(platform::WindowHandle number) {
  if (!toplevels_) return nullptr;
  Hear();
  return Works() ? toplevels_->Find(number) : nullptr;
}

bool Compositor::Comes(const Toplevel& window, const std::function<bool(const Toplevel&)>& toIt) {
  constexpr std::chrono::milliseconds longest(300);
  line_.WaitUntil([&] { return window.gone || toIt(window); }, longest);
  return toIt(window);
}

WindowTraits TraitsOf(const Toplevel& window) {
  WindowTraits traits{window.title, {window.program}, {}};
  if (window.process != 0) traits.processes = {window.process};
  return traits;
}

Compositor* TheCompositor() {
  struct Held {
    pid_t holder = 0;
    std::unique_ptr<Compositor> compositor;
  };
  static Held held;
  if (held.holder != ::getpid() || !held.compositor->HasAnswered()) {
    // A line that was taken over from a parent is the parent's, and not even to be closed.
    if (held.holder != ::getpid()) static_cast<void>(held.compositor.release());
    held = {::getpid(), std::make_unique<Compositor>()};
  }
  return held.compositor->Works() ? held.compositor.get() : nullptr;
}

}  // namespace onlinux
