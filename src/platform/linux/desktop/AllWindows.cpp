#include "platform/linux/desktop/AllWindows.h"

#include <unistd.h>

#include <algorithm>

#include "platform/linux/desktop/Twins.h"

namespace onlinux {
namespace {

struct Listed {
  std::vector<SeenWindow> windows;
  std::vector<WindowTraits> traits;
};

Listed Ask(const WindowCalls* calls, bool forTraits) {
  Listed listed;
  if (calls) listed.windows = calls->Windows();
  if (calls && forTraits) listed.traits = calls->TraitsOf(listed.windows);
  return listed;
}

WindowTraits TraitsOf(const OwnWindow& form) {
  return {form.Title(), {"velmaro"}, {static_cast<std::uint32_t>(::getpid())}};
}

void TitleByForm(std::vector<SeenWindow>& windows) {
  for (auto& window : windows)
    if (const auto* own = FindOwn(window.number); own && own->IsForm()) window.title = own->Title();
}

// The forms that X does not list. A compositor knows those that show.
Listed OwnBeside(const std::vector<SeenWindow>& onX) {
  Listed own;
  for (const auto* form : OwnForms()) {
    if (std::ranges::count(onX, form->Number(), &SeenWindow::number) != 0) continue;
    own.windows.push_back({form->Number(), form->Title()});
    own.traits.push_back(!IsOnX(form->Number()) && form->Shows() ? TraitsOf(*form) : WindowTraits());
  }
  return own;
}

platform::WindowHandle FindAtCompositor(const WindowTraits& traits) {
  const auto seen = Ask(TheCompositorCalls(), true);
  const auto twin = FindTwins({traits}, seen.traits).front();
  return twin ? seen.windows[*twin].number : 0;
}

}  // namespace

std::vector<SeenWindow> AllWindows() {
  const auto* compositor = TheCompositorCalls();
  const auto seen = Ask(compositor, true);
  // The place of a window is the compositor's, which knows them all; its number that of whoever can do more with it.
  auto onX = Ask(TheXCalls(), !seen.windows.empty());
  TitleByForm(onX.windows);
  auto all = OwnBeside(onX.windows);
  const auto twins = FindTwins(seen.traits, all.traits);
  std::vector<WindowTraits> left;
  for (std::size_t i = 0; i < twins.size(); ++i) left.push_back(twins[i] ? WindowTraits() : seen.traits[i]);
  const auto onXToo = FindTwins(left, onX.traits);
  std::vector<bool> placed(onX.windows.size());
  for (std::size_t i = 0; i < seen.windows.size(); ++i) {
    if (twins[i]) continue;
    all.windows.push_back(onXToo[i] ? onX.windows[*onXToo[i]] : seen.windows[i]);
    if (onXToo[i]) placed[*onXToo[i]] = true;
  }
  for (std::size_t i = 0; i < onX.windows.size(); ++i)
    if (!placed[i]) all.windows.push_back(std::move(onX.windows[i]));
  return std::move(all.windows);
}

platform::WindowHandle ToCompositor(const OwnWindow& form) {
  return IsOnX(form.Number()) || !form.Shows() ? 0 : FindAtCompositor(TraitsOf(form));
}

platform::WindowHandle ToCompositor(const SeenWindow& onX) {
  const auto* x = TheXCalls();
  return x ? FindAtCompositor(x->TraitsOf({onX}).front()) : 0;
}

const WindowCalls* CallsFor(platform::WindowHandle window) {
  if (IsOnX(window)) return TheXCalls();
  return IsOfCompositor(window) ? TheCompositorCalls() : nullptr;
}

}  // namespace onlinux
