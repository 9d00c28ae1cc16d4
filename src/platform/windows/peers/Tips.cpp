#include "platform/windows/peers/Tips.h"

#include <algorithm>

#include "platform/windows/ground/Codepage.h"

namespace windows {

void Tips::Offer(HWND form, HWND control, const std::string& text) {
  if (std::ranges::count(offered_, control) != 0) return;
  if (!window_) {
    UseControlClasses(ICC_BAR_CLASSES);
    window_ = Create({.windowClass = TOOLTIPS_CLASSW,
                      .style = WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                      .extendedStyle = WS_EX_TOPMOST,
                      .parent = form});
  }
  Send(TTM_ADDTOOLW, control, text);
  offered_.push_back(control);
}

void Tips::Update(HWND control, const std::string& text) {
  if (std::ranges::count(offered_, control) != 0) Send(TTM_UPDATETIPTEXTW, control, text);
}

void Tips::Send(UINT message, HWND control, const std::string& text) {
  auto wide = platform::Widen(text, platform::Nul::Escaped);
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = ::GetParent(control);
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  tool.lpszText = wide.data();
  ::SendMessageW(window_.get(), message, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace windows
