#include "platform/windows/peers/Drawing.h"

#include <algorithm>
#include <cmath>

#include "platform/windows/ground/Codepage.h"

namespace windows {
namespace {

// The desktop's dialog font, and the scalable face of a font that has bitmaps for a few sizes only.
std::wstring FaceOf(const velmaro::Font& font) {
  if (font.Name.empty()) return L"MS Shell Dlg";
  if (font.Name == "MS Sans Serif") return L"Microsoft Sans Serif";
  return platform::Widen(font.Name);
}

OwnedFont MakeFont(const velmaro::Font& font, Resolution resolution) {
  LOGFONTW wanted{};
  // Rounded down, as the system's own dialogs do it: a text must not outgrow its control at any resolution.
  wanted.lfHeight = -static_cast<LONG>(font.Size * static_cast<float>(resolution.Dpi()) / 72.0F);
  wanted.lfWeight = font.Bold ? FW_BOLD : FW_NORMAL;
  wanted.lfUnderline = font.Underline;
  wanted.lfCharSet = DEFAULT_CHARSET;
  ::lstrcpynW(wanted.lfFaceName, FaceOf(font).c_str(), LF_FACESIZE);
  return OwnedFont(::CreateFontIndirectW(&wanted));
}

int SystemIndex(velmaro::Color color) { return static_cast<int>(color & 0xFF); }

double Luminance(COLORREF color) {
  const auto part = [color](int shift) {
    const double value = (color >> shift & 0xFF) / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(0) + 0.7152 * part(8) + 0.0722 * part(16);
}

bool IsReadable(COLORREF a, COLORREF b) {
  const auto [low, high] = std::minmax({Luminance(a), Luminance(b)});
  return (high + 0.05) / (low + 0.05) >= 4.5;
}

velmaro::Color TextOn(velmaro::Color back) {
  switch (back) {
    case velmaro::SystemColor::ButtonFace:
      return velmaro::SystemColor::ButtonText;
    case velmaro::SystemColor::Highlight:
      return velmaro::SystemColor::HighlightText;
    default:
      return velmaro::SystemColor::WindowText;
  }
}

}  // namespace

bool IsHighContrast() {
  HIGHCONTRASTW setting{};
  setting.cbSize = sizeof setting;
  return ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0) &&
         (setting.dwFlags & HCF_HIGHCONTRASTON);
}

TextColors ColorsOf(velmaro::Color text, velmaro::Color back) {
  using velmaro::SystemColor::Is;
  const bool fits = Is(text) == Is(back) || IsReadable(ToNative(text), ToNative(back));
  if (fits && !IsHighContrast()) return {text, back};
  const auto shown = Is(back) ? back : velmaro::SystemColor::Window;
  return {TextOn(shown), shown};
}

COLORREF ToNative(velmaro::Color color) {
  return velmaro::SystemColor::Is(color) ? ::GetSysColor(SystemIndex(color)) : color;
}

OwnedIcon LoadPicture(velmaro::Picture picture, int pixels) {
  const auto name = MAKEINTRESOURCEW(static_cast<WORD>(picture));
  return OwnedIcon(static_cast<HICON>(::LoadImageW(Instance(), name, IMAGE_ICON, pixels, pixels, LR_DEFAULTCOLOR)));
}

HFONT DrawingTools::FontFor(const velmaro::Font& font, Resolution resolution) {
  for (const auto& [known, handle] : fonts_)
    if (known == font) return handle.get();
  return fonts_.emplace_back(font, MakeFont(font, resolution)).second.get();
}

HBRUSH DrawingTools::BrushFor(velmaro::Color back) {
  const auto color = ColorsOf(back, back).back;
  if (velmaro::SystemColor::Is(color)) return ::GetSysColorBrush(SystemIndex(color));
  for (const auto& [known, handle] : brushes_)
    if (known == color) return handle.get();
  return brushes_.emplace_back(color, OwnedBrush(::CreateSolidBrush(color))).second.get();
}

}  // namespace windows
