#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/types.h"

namespace platform {

inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOWNORMAL = 1;

// Flags of a message box; the icon, the buttons and the default button are added up.
inline constexpr std::uint32_t MB_OK = 0;
inline constexpr std::uint32_t MB_YESNOCANCEL = 3;
inline constexpr std::uint32_t MB_YESNO = 4;
inline constexpr std::uint32_t MB_ICONQUESTION = 32;
inline constexpr std::uint32_t MB_ICONWARNING = 48;
inline constexpr std::uint32_t MB_ICONINFORMATION = 64;
inline constexpr std::uint32_t MB_DEFBUTTON2 = 256;
// Answers of a message box.
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

// Shows a message box in front of the program's windows, blocks until it is answered, and lets timers run meanwhile.
int MessageBoxA(const std::string& text, const std::string& title, std::uint32_t flags);

// Finds a top-level window by its whole title, in any case. 0 when none has it.
WindowHandle FindWindowA(const std::string& title);
// Shows or hides a window of any program.
bool ShowWindow(WindowHandle window, int showCommand);
// The active window of this program, 0 while another program is in front.
WindowHandle GetActiveWindow();
// Brings a window and its program to the front.
bool SetForegroundWindow(WindowHandle window);
// Calls back once for each top-level window, from front to back, until the callback answers false.
bool EnumWindows(const std::function<bool(WindowHandle)>& callback);
// The length in bytes of a window's title, 0 for none.
int GetWindowTextLengthA(WindowHandle window);
// Fills `buffer` with a window's title and a final NUL, at most `size` bytes in all; gives the bytes without the NUL.
int GetWindowTextA(WindowHandle window, char* buffer, int size);

inline constexpr std::int32_t HWND_TOPMOST = -1;
inline constexpr std::int32_t HWND_NOTOPMOST = -2;
inline constexpr std::uint32_t SWP_NOSIZE = 1;
inline constexpr std::uint32_t SWP_NOMOVE = 2;
inline constexpr std::uint32_t SWP_NOACTIVATE = 16;
inline constexpr std::uint32_t SWP_SHOWWINDOW = 64;
inline constexpr std::uint32_t SWP_HIDEWINDOW = 128;

// Changes a window's place in the stack, its size or whether it shows, as the flags say. Sizes are in pixels.
bool SetWindowPos(WindowHandle window, std::int32_t insertAfter, int x, int y, int width, int height,
                  std::uint32_t flags);

// The inner rectangle of a window in pixels, its left and top always 0.
bool GetClientRect(WindowHandle window, PixelRect& rect);

inline constexpr std::int32_t CW_USEDEFAULT = static_cast<std::int32_t>(0x80000000);
inline constexpr std::uint32_t TTS_ALWAYSTIP = 1;
inline constexpr std::uint32_t TTS_NOPREFIX = 2;
inline constexpr std::uint32_t TTS_BALLOON = 64;
inline constexpr std::uint32_t TTF_CENTERTIP = 2;
inline constexpr std::uint32_t TTF_SUBCLASS = 16;
inline constexpr std::uint32_t TTM_ADDTOOLA = 1028;
inline constexpr std::uint32_t TTM_UPDATETIPTEXTA = 1036;
inline constexpr std::uint32_t TTM_SETTIPBKCOLOR = 1043;
inline constexpr std::uint32_t TTM_SETTIPTEXTCOLOR = 1044;
inline constexpr std::uint32_t TTM_SETTITLEA = 1056;

// The tool of a tooltip window: the platform's record in its 44-byte form.
struct TOOLINFO {
  std::uint32_t cbSize = 0;
  std::uint32_t uFlags = 0;
  WindowHandle hwnd = 0;
  std::uint32_t uId = 0;
  PixelRect rect;
  std::uint32_t hinst = 0;
  std::string lpszText;
  std::int32_t lParam = 0;
};

// Makes a window of a class that the platform provides, without a name; 0 when it can't be made.
WindowHandle CreateWindowExA(std::uint32_t extendedStyle, const std::string& windowClass, std::uint32_t style, int x,
                             int y, int width, int height, WindowHandle owner, std::uint32_t instance);
// Destroys a window of this program.
bool DestroyWindow(WindowHandle window);
// Sends a tooltip message that carries a tool.
void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam, const TOOLINFO& tool);
// Sends a tooltip message that carries a text.
void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam, const std::string& text);
// Sends a tooltip message that carries a number alone.
void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam);

}  // namespace platform
