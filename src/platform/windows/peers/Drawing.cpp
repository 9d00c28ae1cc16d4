#include "platform/windows/peers/Drawing.h"

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

}  // namespace

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

HBRUSH DrawingTools::BrushFor(velmaro::Color color) {
  if (velmaro::SystemColor::Is(color)) return ::GetSysColorBrush(SystemIndex(color));
  for (const auto& [known, handle] : brushes_)
    if (known == color) return handle.get();
  return brushes_.emplace_back(color, OwnedBrush(::CreateSolidBrush(color))).second.get();
}

}  // namespace windows
