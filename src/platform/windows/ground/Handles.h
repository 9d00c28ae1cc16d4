#pragma once

#include "platform/windows/ground/CommonControls.h"
#include "platform/windows/ground/System.h"

namespace windows {

inline void DropWindow(HWND window) { ::DestroyWindow(window); }
inline void DropFont(HFONT font) { ::DeleteObject(font); }
inline void DropBrush(HBRUSH brush) { ::DeleteObject(brush); }
inline void DropPen(HPEN pen) { ::DeleteObject(pen); }
inline void DropBitmap(HBITMAP bitmap) { ::DeleteObject(bitmap); }
inline void DropContext(HDC context) { ::DeleteDC(context); }
inline void DropIcon(HICON icon) { ::DestroyIcon(icon); }
inline void DropMenu(HMENU menu) { ::DestroyMenu(menu); }

// Native handles that close themselves.
using OwnedWindow = platform::Owned<HWND, &DropWindow>;
using OwnedFont = platform::Owned<HFONT, &DropFont>;
using OwnedBrush = platform::Owned<HBRUSH, &DropBrush>;
using OwnedPen = platform::Owned<HPEN, &DropPen>;
using OwnedBitmap = platform::Owned<HBITMAP, &DropBitmap>;
using OwnedContext = platform::Owned<HDC, &DropContext>;
using OwnedIcon = platform::Owned<HICON, &DropIcon>;
using OwnedMenu = platform::Owned<HMENU, &DropMenu>;
using OwnedImages = platform::Owned<HIMAGELIST, &DropImages>;

// Holds an object in a device context and puts the one before back at its end.
class Selected {
 public:
  Selected(HDC context, HGDIOBJ object) : context_(context), before_(::SelectObject(context, object)) {}
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;
  ~Selected() { ::SelectObject(context_, before_); }

 private:
  HDC context_;
  HGDIOBJ before_;
};

}  // namespace windows
