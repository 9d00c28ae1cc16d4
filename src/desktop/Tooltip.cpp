#include "desktop/Tooltip.h"

#include "platform/machine.h"

namespace velmaro {

using namespace platform;

bool Tooltip::Create() {
  constexpr auto tipClass = "tooltips_class32";
  constexpr std::uint32_t recordSize = 44;
  tipWindow_.Reset();
  auto style = TTS_ALWAYSTIP | TTS_NOPREFIX;
  if (style_ == 1) style |= TTS_BALLOON;
  if (!parentControl_) return false;
  const auto parent = parentControl_->hWnd();
  tipWindow_.Reset(CreateWindowExA(0, tipClass, style, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                                   parent, AppInstance()));
  const auto window = tipWindow_.get();
  SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
  GetClientRect(parent, toolInfo_.rect);
  toolInfo_.cbSize = recordSize;
  toolInfo_.uFlags = centered_ ? TTF_SUBCLASS | TTF_CENTERTIP : TTF_SUBCLASS;
  toolInfo_.hwnd = parent;
  toolInfo_.hinst = AppInstance();
  SendMessageA(window, TTM_ADDTOOLA, 0, toolInfo_);
  if (!title_.empty() || icon_ != 0) SendMessageA(window, TTM_SETTITLEA, static_cast<std::uint32_t>(icon_), title_);
  if (foreColor_ != 0) SendMessageA(window, TTM_SETTIPTEXTCOLOR, foreColor_);
  if (backColor_ != 0) SendMessageA(window, TTM_SETTIPBKCOLOR, backColor_);
  return false;
}

void Tooltip::UpdateTitle() {
  if (tipWindow_ && !title_.empty() && icon_ != 0)
    SendMessageA(tipWindow_.get(), TTM_SETTITLEA, static_cast<std::uint32_t>(icon_), title_);
}

void Tooltip::SetIcon(std::int32_t icon) {
  icon_ = icon;
  UpdateTitle();
}

void Tooltip::SetTitle(std::string title) {
  title_ = std::move(title);
  UpdateTitle();
}

void Tooltip::SetForeColor(Color color) {
  foreColor_ = color;
  if (tipWindow_) SendMessageA(tipWindow_.get(), TTM_SETTIPTEXTCOLOR, color);
}

void Tooltip::SetBackColor(Color color) {
  backColor_ = color;
  if (tipWindow_) SendMessageA(tipWindow_.get(), TTM_SETTIPBKCOLOR, color);
}

void Tooltip::SetTipText(std::string text) {
  toolInfo_.lpszText = std::move(text);
  if (tipWindow_) SendMessageA(tipWindow_.get(), TTM_UPDATETIPTEXTA, 0, toolInfo_);
}

}  // namespace velmaro
