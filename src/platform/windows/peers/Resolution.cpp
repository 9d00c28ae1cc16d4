#include "platform/windows/peers/Resolution.h"

#include <cmath>

#include "platform/windows/ground/SystemLibrary.h"

namespace windows {
namespace {

int ScreenDpi() {
  const auto screen = ::GetDC(nullptr);
  const int dpi = ::GetDeviceCaps(screen, LOGPIXELSX);
  ::ReleaseDC(nullptr, screen);
  return dpi;
}

}  // namespace

int Resolution::ToPixels(velmaro::Twips length) const {
  return static_cast<int>(std::lround(static_cast<double>(length) * dpi_ / 1440.0));
}

PixelPlace Resolution::ToPixels(const velmaro::Bounds& at) const {
  return {ToPixels(at.Left), ToPixels(at.Top), ToPixels(at.Width), ToPixels(at.Height)};
}

Resolution ResolutionOf(HWND window) {
  using GetDpi = UINT(WINAPI*)(HWND);
  static const auto getDpi = platform::SystemFunction<GetDpi>(L"user32.dll", "GetDpiForWindow");
  const int dpi = getDpi ? static_cast<int>(getDpi(window)) : 0;
  return Resolution(dpi > 0 ? dpi : ScreenDpi());
}

int SystemMetric(int index, Resolution resolution) {
  using GetMetric = int(WINAPI*)(int, UINT);
  static const auto getMetric = platform::SystemFunction<GetMetric>(L"user32.dll", "GetSystemMetricsForDpi");
  if (getMetric) return getMetric(index, static_cast<UINT>(resolution.Dpi()));
  return ::GetSystemMetrics(index);
}

}  // namespace windows
