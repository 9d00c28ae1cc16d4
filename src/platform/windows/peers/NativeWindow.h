#pragma once

#include <string>

#include "platform/windows/ground/Handles.h"

namespace windows {

// A message of a window procedure.
struct Message {
  HWND window;
  UINT id;
  WPARAM wParam;
  LPARAM lParam;
};

// A rectangle of a window in pixels of its parent, or of the screen.
struct PixelPlace {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool operator==(const PixelPlace&) const = default;
};

// How a native window is made. A child has a parent and an id, and no menu.
struct WindowArgs {
  const wchar_t* windowClass = nullptr;
  std::string text = {};
  DWORD style = 0;
  DWORD extendedStyle = 0;
  PixelPlace place = {};
  HWND parent = nullptr;
  int id = 0;
  HMENU menu = nullptr;
  void* creation = nullptr;
};

// Makes a native window. Throws RuntimeError where the system refuses.
OwnedWindow Create(const WindowArgs& args);

// The program's own instance.
HINSTANCE Instance();
// The text of a control of this program.
std::string TextOf(HWND control);
// Replaces the text of a window of this program. False where it could not take all of it.
bool SetText(HWND window, const std::string& text);

}  // namespace windows
