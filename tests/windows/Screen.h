#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "Inside.h"

// Windows, as a user sees them and acts on them.
namespace drive {

inline constexpr int LongEnough = 30000;

inline bool Until(const std::function<bool()>& holds, int milliseconds = LongEnough) {
  const auto end = ::GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
  while (!holds()) {
    if (::GetTickCount64() > end) return false;
    ::Sleep(10);
  }
  return true;
}

inline std::wstring Text(HWND window) {
  std::wstring text(static_cast<std::size_t>(::SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  const auto length = ::SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  return text.substr(0, static_cast<std::size_t>(length));
}

inline std::wstring ClassOf(HWND window) {
  std::wstring name(100, L'\0');
  name.resize(static_cast<std::size_t>(::GetClassNameW(window, name.data(), static_cast<int>(name.size()))));
  return name;
}

inline BOOL CALLBACK CollectWindow(HWND window, LPARAM windows) {
  reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  return TRUE;
}

inline std::vector<HWND> Children(HWND parent) {
  std::vector<HWND> children;
  ::EnumChildWindows(parent, &CollectWindow, reinterpret_cast<LPARAM>(&children));
  return children;
}

// The first of them of a class whose text begins with a text.
inline HWND Child(HWND parent, const std::wstring& windowClass, const std::wstring& text = {}) {
  for (const auto child : Children(parent))
    if (::lstrcmpiW(ClassOf(child).c_str(), windowClass.c_str()) == 0 && Text(child).starts_with(text)) return child;
  return nullptr;
}

// The colours that a part of the screen shows, with how often each comes there: red in the highest of three bytes.
inline std::map<DWORD, int> Shown(const RECT& place) {
  const int width = place.right - place.left, height = place.bottom - place.top;
  const auto screen = ::GetDC(nullptr), memory = ::CreateCompatibleDC(screen);
  BITMAPINFO form{};
  form.bmiHeader = {sizeof form.bmiHeader, width, height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* colors = nullptr;
  const auto bitmap = ::CreateDIBSection(screen, &form, DIB_RGB_COLORS, &colors, nullptr, 0);
  ::SelectObject(memory, bitmap);
  ::BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
  std::map<DWORD, int> pixels;
  for (int i = 0; i < width * height; ++i) ++pixels[static_cast<const DWORD*>(colors)[i] & 0xFFFFFF];
  ::DeleteDC(memory);
  ::DeleteObject(bitmap);
  ::ReleaseDC(nullptr, screen);
  return pixels;
}

inline HWND Focus(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info);
  return info.hwndFocus;
}

inline bool Gone(HWND window) {
  return Until([&] { return !::IsWindowVisible(window); });
}

inline void Press(HWND button) {
  if (!button) throw std::runtime_error("there is no such button");
  ::PostMessageW(button, BM_CLICK, 0, 0);
}

// Brings a window to the front and waits until the keyboard is its own.
inline void Front(HWND window) {
  EXPECT_TRUE(Until([&] {
    if (::GetForegroundWindow() != window) ::SetForegroundWindow(window);
    return ::GetForegroundWindow() == window && Focus(window);
  }));
  // Nothing tells when the keyboard has followed; keys that come too early are lost.
  ::Sleep(50);
}

inline void SendKey(int key, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = static_cast<WORD>(key);
  input.ki.wScan = static_cast<WORD>(::MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC));
  const bool extended = key == VK_DELETE || key == VK_DOWN || key == VK_UP || key == VK_HOME || key == VK_END;
  input.ki.dwFlags = flags | (extended ? KEYEVENTF_EXTENDEDKEY : 0U);
  ::SendInput(1, &input, sizeof input);
}

// Types real keys into the window in front, one after the other; `with` is held meanwhile.
inline void Keys(std::initializer_list<int> keys, int with = 0) {
  if (with) SendKey(with, 0);
  for (const int key : keys)
    for (const DWORD flags : {0, KEYEVENTF_KEYUP}) SendKey(key, flags);
  if (with) SendKey(with, KEYEVENTF_KEYUP);
}

// Place and button go together: a move that is told late must not take the press elsewhere.
inline void SendMouse(POINT at, DWORD button) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dx = (at.x * 65536 + 32768) / ::GetSystemMetrics(SM_CXSCREEN);
  input.mi.dy = (at.y * 65536 + 32768) / ::GetSystemMetrics(SM_CYSCREEN);
  input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | button;
  ::SendInput(1, &input, sizeof input);
}

// Presses and releases a real mouse button on a point of a window: at its middle where none is given.
inline void Click(HWND window, DWORD down = MOUSEEVENTF_LEFTDOWN, int times = 1, std::optional<POINT> at = {}) {
  RECT client;
  ::GetClientRect(window, &client);
  auto point = at.value_or(POINT{client.right / 2, client.bottom / 2});
  ::ClientToScreen(window, &point);
  SendMouse(point, 0);
  for (int i = 0; i < times; ++i)
    for (const DWORD button : {down, down << 1}) SendMouse(point, button);
}

inline void ClickRow(HWND list, int row, DWORD down = MOUSEEVENTF_LEFTDOWN, int times = 1) {
  RECT place{};
  ::SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
  Click(list, down, times, POINT{place.left + 20, (place.top + place.bottom) / 2});
}

}  // namespace drive
