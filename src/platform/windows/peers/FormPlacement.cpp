#include <algorithm>

#include "platform/windows/ground/SystemLibrary.h"
#include "platform/windows/peers/ControlPeer.h"
#include "platform/windows/peers/FormStyle.h"
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

// The outer size of a form whose size is its client area's; nothing where the system can't tell its frame.
std::optional<SIZE> FormWindow::FixedSizeAt(Resolution scale) const {
  using AdjustRect = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);
  static const auto adjust = platform::SystemFunction<AdjustRect>(L"user32.dll", "AdjustWindowRectExForDpi");
  const auto& args = form_.Args();
  if (!adjust || args.BorderStyle == velmaro::BorderStyle::Sizable) return {};
  RECT outer{0, 0, scale.ToPixels(args.ClientWidth), scale.ToPixels(args.ClientHeight)};
  adjust(&outer, StyleOf(args), menus_.Bar() != nullptr, ExtendedStyleOf(args), static_cast<UINT>(scale.Dpi()));
  return SIZE{outer.right - outer.left, outer.bottom - outer.top};
}

std::optional<LRESULT> FormWindow::SizeAsked(int dpi, SIZE& outer) const {
  const auto size = FixedSizeAt(Resolution(dpi));
  if (size) outer = *size;
  return size ? std::optional<LRESULT>(TRUE) : std::nullopt;
}

LRESULT FormWindow::NewResolution(int dpi, const RECT& suggested) {
  scale_ = Resolution(dpi);
  Rescale();
  ::SetWindowPos(window_.get(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
  // A system that asks for no size beforehand suggests one for a window without a size of its own.
  if (form_.Args().BorderStyle != velmaro::BorderStyle::Sizable && !FixedSizeAt(scale_)) SizeClient();
  if (placed_) Report();
  return 0;
}

void FormWindow::Rescale() {
  // The old fonts stay until no control shows them any more.
  const auto before = tools_.TakeFonts();
  LoadIcons();
  for (const auto* control : form_.Controls())
    if (auto* peer = static_cast<ControlPeer*>(control->Peer())) peer->Rescale();
}

// The mouse stops at the smallest size. A window that went below it and sprang back would flicker, and wander.
LRESULT FormWindow::LimitSize(MINMAXINFO& limits) const {
  const auto pixels = [this](velmaro::Twips length) { return scale_.ToPixels(form_.UpToWholePixel(length)); };
  if (form_.Args().MinWidth > 0)
    limits.ptMinTrackSize = {pixels(form_.Args().MinWidth), pixels(form_.Args().MinHeight)};
  return 0;
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
