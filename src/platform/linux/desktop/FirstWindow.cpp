#include "platform/linux/desktop/FirstWindow.h"

#include <poll.h>

#include <algorithm>

namespace onlinux {
namespace {

using Clock = std::chrono::steady_clock;
using Stage = FirstWindow::Stage;
using std::chrono::milliseconds;
using LookOuts = std::vector<std::unique_ptr<FirstWindow>>;

// Many a game takes its first window away and shows another, or the same again, before it settles.
constexpr milliseconds settlingTime{1000};

// Waits for news, and no longer than a moment: what a program or a manager writes on a window that it has shown is told
// to nobody else. False when no more can come.
bool AwaitNews(const LookOuts& lookOuts, milliseconds left) {
  const auto end = Clock::now() + std::min(left, milliseconds(200));
  for (;;) {
    bool news = false;
    std::vector<pollfd> lines;
    for (const auto& lookOut : lookOuts) {
      news = lookOut->HasNews() || news;
      if (const int line = lookOut->Line(); line >= 0) lines.push_back({line, POLLIN, 0});
    }
    const auto rest = std::chrono::ceil<milliseconds>(end - Clock::now());
    if (lines.empty()) return false;
    if (news || rest.count() <= 0) return true;
    ::poll(lines.data(), lines.size(), static_cast<int>(rest.count()));
  }
}

LookOuts AllLookOuts(const Descent& descent, ShowState state) {
  LookOuts lookOuts;
  const auto add = [&](const WindowCalls* calls) {
    if (auto lookOut = calls ? calls->LookOut(descent, state) : nullptr) lookOuts.push_back(std::move(lookOut));
  };
  // Before all else the one that may have to remember which windows there were before.
  add(TheCompositorCalls());
  add(TheXCalls());
  return lookOuts;
}

}  // namespace

FirstWindow::Stage ShowFirstWindow(const Descent& descent, ShowState state, milliseconds limit) {
  if (state == ShowState::Normal) return Stage::Reached;
  const auto end = Clock::now() + limit;
  const auto lookOuts = AllLookOuts(descent, state);
  constexpr auto notYet = Clock::time_point::max();
  auto settled = notYet;          // when the window will have kept its state for long enough
  FirstWindow* finder = nullptr;  // who has found it
  auto stage = Stage::None;
  while (Clock::now() < end) {
    stage = finder ? finder->Look() : Stage::None;
    for (auto at = lookOuts.begin(); stage == Stage::None && at != lookOuts.end(); ++at) {
      finder = at->get();
      stage = finder->Look();
      settled = notYet;
    }
    if (stage == Stage::None) finder = nullptr;
    settled = stage == Stage::Reached ? std::min(settled, Clock::now() + settlingTime) : notYet;
    if (Clock::now() >= settled) break;
    if (!AwaitNews(lookOuts, std::chrono::ceil<milliseconds>(end - Clock::now()))) break;
  }
  return stage;
}

}  // namespace onlinux
