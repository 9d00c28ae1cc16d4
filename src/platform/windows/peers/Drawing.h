#pragma once

#include <utility>
#include <vector>

#include "platform/windows/peers/Resolution.h"
#include "runtime/Types.h"

namespace windows {

// True while the user has the system show everything in high contrast.
bool IsHighContrast();

// A model's colour as the system's own value.
COLORREF ToNative(velmaro::Color color);

// A text's colour and that of its back, as they are shown. Where the user wants high contrast they are always two of
// the system's that belong together; elsewhere only where one of them is, and the other one can't be read with it.
struct TextColors {
  velmaro::Color text;
  velmaro::Color back;
};
TextColors ColorsOf(velmaro::Color text, velmaro::Color back);

// Loads a picture of the executable at a size in pixels.
OwnedIcon LoadPicture(velmaro::Picture picture, int pixels);

// The fonts and brushes of one form, each made once and shared by its controls.
class DrawingTools {
 public:
  HFONT FontFor(const velmaro::Font& font, Resolution resolution);
  // The brush of a back, in the colour in which it is shown.
  HBRUSH BrushFor(velmaro::Color back);
  // Gives the fonts out of care, for when all controls get new ones.
  std::vector<std::pair<velmaro::Font, OwnedFont>> TakeFonts() { return std::exchange(fonts_, {}); }

 private:
  std::vector<std::pair<velmaro::Font, OwnedFont>> fonts_;
  std::vector<std::pair<velmaro::Color, OwnedBrush>> brushes_;
};

// Lets a control draw itself off the screen in answer to WM_PAINT and shows it in one go, so that it never flickers.
// `draw` takes the context to draw on.
template <class Draw>
void PaintBuffered(HWND window, Draw draw) {
  PAINTSTRUCT paint;
  const auto screen = ::BeginPaint(window, &paint);
  RECT client;
  ::GetClientRect(window, &client);
  const OwnedContext memory(::CreateCompatibleDC(screen));
  const OwnedBitmap bitmap(::CreateCompatibleBitmap(screen, client.right, client.bottom));
  if (memory && bitmap) {
    const Selected selected(memory.get(), bitmap.get());
    draw(memory.get());
    ::BitBlt(screen, 0, 0, client.right, client.bottom, memory.get(), 0, 0, SRCCOPY);
  }
  ::EndPaint(window, &paint);
}

}  // namespace windows
