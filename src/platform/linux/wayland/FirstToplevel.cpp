#include <optional>
#include <ranges>
#include <set>
#include <utility>

#include "platform/linux/desktop/Twins.h"
#include "platform/linux/processes/Descent.h"
#include "platform/linux/wayland/Calls.h"
#include "platform/linux/wayland/Compositor.h"

namespace onlinux {
namespace {

// A window of X is that one's who looks out there.
bool IsOnX(const Toplevel& window) {
  const auto* x = TheXCalls();
  return x && FindTwins({TraitsOf(window)}, x->TraitsOf(x->Windows())).front();
}

class FirstToplevel : public FirstWindow {
 public:
  FirstToplevel(Descent descent, ShowState state) : descent_(std::move(descent)), state_(state) {
    for (const auto* window : compositor_.Windows()) before_.insert(window->number);
  }
  bool Can() { return compositor_.Protocol() != nullptr; }
  int Line() const override { return compositor_.Socket(); }
  bool HasNews() override { return compositor_.Hear(); }
  Stage Look() override {
    auto* window = window_ ? compositor_.Find(window_) : FindFirst();
    window_ = window ? window->number : 0;
    if (!window) return Stage::None;
    program_ = window->program;
    if (IsInState(*window)) return Stage::Reached;
    if (state_ == ShowState::Maximized)
      compositor_.Protocol()->Maximize(*window);
    else
      compositor_.Protocol()->Minimize(*window, true);
    compositor_.Hear();
    return Stage::Asked;
  }

 private:
  bool IsInState(const Toplevel& window) const {
    return state_ == ShowState::Maximized ? window.maximized : window.minimized;
  }
  // Where nobody tells whose a window is, it is the next that comes while something of the start runs, and then the
  // next of the same kind.
  bool BelongsTo(const Toplevel& window) const {
    if (window.process != 0) return CameFrom(window.process, descent_);
    return (!program_ || *program_ == window.program) && StillRuns(descent_);
  }
  Toplevel* FindFirst() {
    for (auto* window : compositor_.Windows() | std::views::reverse)
      if (!before_.contains(window->number) && BelongsTo(*window) && !IsOnX(*window)) return window;
    return nullptr;
  }

  Compositor compositor_;
  Descent descent_;
  ShowState state_;
  std::set<platform::WindowHandle> before_;
  platform::WindowHandle window_ = 0;
  std::optional<std::string> program_;  // of a window that was found
};

}  // namespace

std::unique_ptr<FirstWindow> LookOnWayland(const Descent& descent, ShowState state) {
  auto first = std::make_unique<FirstToplevel>(descent, state);
  return first->Can() ? std::move(first) : nullptr;
}

}  // namespace onlinux
