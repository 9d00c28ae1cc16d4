#pragma once

#include "platform/windows/peers/NativeWindow.h"
#include "runtime/Types.h"

namespace windows {

// The resolution of a screen: turns twips into pixels, to the nearest, and back.
class Resolution {
 public:
  explicit Resolution(int dotsPerInch = 96) : dpi_(dotsPerInch) {}
  bool operator==(const Resolution&) const = default;

  int Dpi() const { return dpi_; }
  velmaro::Twips TwipsPerPixel() const { return 1440.0F / static_cast<float>(dpi_); }
  velmaro::Twips ToTwips(int pixels) const { return static_cast<float>(pixels) * TwipsPerPixel(); }
  int ToPixels(velmaro::Twips length) const;
  PixelPlace ToPixels(const velmaro::Bounds& at) const;
  // A length that is told in pixels at 96 dots an inch.
  int Scaled(int pixels) const { return ::MulDiv(pixels, dpi_, 96); }

 private:
  int dpi_;
};

// The resolution of the screen that a window stands on.
Resolution ResolutionOf(HWND window);
// A measure of the system, such as the size of an icon, at a resolution.
int SystemMetric(int index, Resolution resolution);

}  // namespace windows
