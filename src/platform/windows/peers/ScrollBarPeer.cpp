#include "platform/windows/peers/ScrollBarPeer.h"

#include <algorithm>

namespace windows {

ScrollBarPeer::ScrollBarPeer(velmaro::HScrollBar& bar)
    : ControlPeer(bar, {.windowClass = L"SCROLLBAR", .style = SBS_HORZ, .takesKeyboard = true}), bar_(bar) {
  ShowPosition();
}

void ScrollBarPeer::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Value || what == velmaro::Change::Range)
    ShowPosition();
  else
    ControlPeer::Apply(what);
}

// The thumb takes up a page, so the native range is a page longer for the position to reach Max.
void ScrollBarPeer::ShowPosition() const {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = bar_.Max() + bar_.LargeChange() - 1;
  info.nPage = static_cast<UINT>(bar_.LargeChange());
  info.nPos = bar_.Value();
  ::SetScrollInfo(Window(), SB_CTL, &info, TRUE);
}

int ScrollBarPeer::Wanted(WPARAM request) const {
  const int value = bar_.Value();
  switch (LOWORD(request)) {
    case SB_LINELEFT:
      return value - bar_.SmallChange();
    case SB_LINERIGHT:
      return value + bar_.SmallChange();
    case SB_PAGELEFT:
      return value - bar_.LargeChange();
    case SB_PAGERIGHT:
      return value + bar_.LargeChange();
    case SB_LEFT:
      return 0;
    case SB_RIGHT:
      return bar_.Max();
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      return HIWORD(request);
    default:
      return value;
  }
}

std::optional<LRESULT> ScrollBarPeer::Notified(const Message& message) {
  if (message.id != WM_HSCROLL) return ControlPeer::Notified(message);
  const int wanted = std::clamp<int>(Wanted(message.wParam), 0, bar_.Max());
  bar_.SetValue(wanted);
  return 0;
}

}  // namespace windows
