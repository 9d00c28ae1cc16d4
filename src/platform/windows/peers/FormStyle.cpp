#include "platform/windows/peers/FormStyle.h"

namespace windows {

using velmaro::BorderStyle;

DWORD StyleOf(const velmaro::FormArgs& form) {
  if (form.BorderStyle == BorderStyle::None) return WS_POPUP | WS_CLIPCHILDREN;
  DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
  if (form.BorderStyle == BorderStyle::FixedToolWindow) return style;
  if (form.MinButton) style |= WS_MINIMIZEBOX;
  if (form.BorderStyle != BorderStyle::Sizable) return style;
  return style | WS_THICKFRAME | (form.MaxButton ? WS_MAXIMIZEBOX : 0);
}

DWORD ExtendedStyleOf(const velmaro::FormArgs& form) {
  DWORD style = WS_EX_CONTROLPARENT;
  if (form.BorderStyle == BorderStyle::FixedToolWindow || !form.ShowInTaskbar) style |= WS_EX_TOOLWINDOW;
  if (form.ShowInTaskbar) style |= WS_EX_APPWINDOW;
  // Without an icon of its own a window would show the system's.
  if (form.Icon == velmaro::Picture::None) style |= WS_EX_DLGMODALFRAME;
  return form.BorderStyle == BorderStyle::None ? style & ~WS_EX_DLGMODALFRAME : style;
}

}  // namespace windows
