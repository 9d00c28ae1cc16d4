#include <algorithm>

#include "platform/windows/peers/FormWindow.h"

namespace windows {
namespace {

RECT WorkAreaAt(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  ::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
  return monitor.rcWork;
}

// Where a length begins that lies in the middle of an area but leaves the screen nowhere that it fits on.
int Centered(int length, int from, int to, int low, int high) {
  return std::max(low, std::min((from + to - length) / 2, high - length));
}

}  // namespace

// Frame and menu bar are measured and not computed: they depend on the resolution and on how the bar is broken.
void FormWindow::SizeClient() {
  const int width = scale_.ToPixels(form_.Args().ClientWidth);
  const int height = scale_.ToPixels(form_.Args().ClientHeight);
  for (int pass = 0; pass < 3; ++pass) {
    const auto size = Measure();
    if (size.client.width == width && size.client.height == height) return;
    ::SetWindowPos(window_.get(), nullptr, 0, 0, size.outer.width + width - size.client.width,
                   size.outer.height + height - size.client.height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

void FormWindow::PlaceFirst(HWND owner) {
  if (owner) {
    // On the owner's screen first, whose resolution then holds.
    RECT place;
    ::GetWindowRect(owner, &place);
    ::SetWindowPos(window_.get(), nullptr, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  if (const auto scale = ResolutionOf(window_.get()); scale != scale_) {
    scale_ = scale;
    Rescale();
  }
  SizeClient();
  placed_ = true;
  Report();
  if (form_.Args().StartUpPosition != velmaro::StartUpPosition::Manual) Center(owner);
}

void FormWindow::Center(HWND owner) {
  const bool onOwner = form_.Args().StartUpPosition == velmaro::StartUpPosition::CenterOwner && owner &&
                       ::IsWindowVisible(owner) && !::IsIconic(owner);
  const auto screen = WorkAreaAt(owner ? owner : window_.get());
  auto area = screen;
  if (onOwner) ::GetWindowRect(owner, &area);
  const auto size = Measure().outer;
  ::SetWindowPos(window_.get(), nullptr, Centered(size.width, area.left, area.right, screen.left, screen.right),
                 Centered(size.height, area.top, area.bottom, screen.top, screen.bottom), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace windows
