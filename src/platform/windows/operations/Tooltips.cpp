#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/CommonControls.h"
#include "platform/windows/ground/System.h"
#include "platform/windows/ground/SystemLibrary.h"

namespace platform {
namespace {

// A tooltip in the desktop's visual style passes over its colours.
void DropVisualStyle(HWND window) {
  using SetTheme = HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR);
  static const auto setTheme = SystemFunction<SetTheme>(L"uxtheme.dll", "SetWindowTheme");
  if (setTheme) setTheme(window, L"", L"");
}

// Line feeds break lines only in a tooltip that has a greatest width: one that no line of a screen reaches.
void LetLinesBreak(HWND window, const std::string& text) {
  if (text.find('\n') != std::string::npos)
    ::SendMessageW(window, TTM_SETMAXTIPWIDTH, 0, ::GetSystemMetrics(SM_CXVIRTUALSCREEN));
}

UINT WideMessage(std::uint32_t message) {
  switch (message) {
    case TTM_ADDTOOLA:
      return TTM_ADDTOOLW;
    case TTM_UPDATETIPTEXTA:
      return TTM_UPDATETIPTEXTW;
    case TTM_SETTITLEA:
      return TTM_SETTITLEW;
    default:
      return message;
  }
}

}  // namespace

WindowHandle CreateWindowExA(std::uint32_t extendedStyle, const std::string& windowClass, std::uint32_t style, int x,
                             int y, int width, int height, WindowHandle owner, std::uint32_t) {
  windows::UseControlClasses(ICC_BAR_CLASSES);
  return ToNumber(::CreateWindowExW(extendedStyle, Widen(windowClass).c_str(), nullptr, style, x, y, width, height,
                                    ToNative<HWND>(owner), nullptr, ::GetModuleHandleW(nullptr), nullptr));
}

void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam, const TOOLINFO& tool) {
  const auto tip = ToNative<HWND>(window);
  auto text = Widen(tool.lpszText, Nul::Escaped);
  LetLinesBreak(tip, tool.lpszText);
  TTTOOLINFOW native{};
  native.cbSize = TTTOOLINFOW_V2_SIZE;
  native.uFlags = tool.uFlags;
  native.hwnd = ToNative<HWND>(tool.hwnd);
  native.uId = tool.uId;
  native.rect = {tool.rect.left, tool.rect.top, tool.rect.right, tool.rect.bottom};
  native.hinst = ToNative<HINSTANCE>(tool.hinst);
  native.lpszText = text.data();
  native.lParam = tool.lParam;
  ::SendMessageW(tip, WideMessage(message), wParam, reinterpret_cast<LPARAM>(&native));
}

void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam, const std::string& text) {
  ::SendMessageW(ToNative<HWND>(window), WideMessage(message), wParam,
                 reinterpret_cast<LPARAM>(Widen(text, Nul::Escaped).c_str()));
}

void SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam) {
  const auto tip = ToNative<HWND>(window);
  if (message == TTM_SETTIPBKCOLOR || message == TTM_SETTIPTEXTCOLOR) DropVisualStyle(tip);
  ::SendMessageW(tip, message, wParam, 0);
}

}  // namespace platform
