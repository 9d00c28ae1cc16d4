#include "platform/windows/peers/LabelPeer.h"

#include <algorithm>

namespace windows {
namespace {

DWORD StyleOf(velmaro::Alignment alignment) {
  switch (alignment) {
    case velmaro::Alignment::Right:
      return SS_RIGHT;
    case velmaro::Alignment::Center:
      return SS_CENTER;
    default:
      return SS_LEFT;
  }
}

bool Overlap(const velmaro::Bounds& a, const velmaro::Bounds& b) {
  return a.Left < b.Left + b.Width && b.Left < a.Left + a.Width && a.Top < b.Top + b.Height && b.Top < a.Top + a.Height;
}

}  // namespace

LabelPeer::LabelPeer(velmaro::Label& label)
    : ControlPeer(label, {.windowClass = L"STATIC",
                          .style = SS_NOTIFY | SS_NOPREFIX | StyleOf(label.Alignment()),
                          .clicksByRelease = true}),
      label_(label) {
  StepAhead();
}

// The text of a label stands at its top: the empty foot of a label further up must not cover it.
void LabelPeer::StepAhead() const {
  for (const auto* control : label_.Owner().Controls())
    if (dynamic_cast<const velmaro::Label*>(control) && control != &label_ && control->Peer() &&
        control->Parent() == label_.Parent() && control->Top() < label_.Top() && Overlap(control->At(), label_.At())) {
      const auto before = ::GetWindow(platform::ToNative<HWND>(control->hWnd()), GW_HWNDPREV);
      ::SetWindowPos(Window(), before ? before : HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
}

void LabelPeer::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Caption)
    ShowCaption();
  else
    ControlPeer::Apply(what);
}

// The window would draw a new text at once and by itself; it is to draw in one go, when its turn comes.
void LabelPeer::ShowCaption() {
  const bool shows = label_.Visible();
  if (shows) Send(WM_SETREDRAW, FALSE);
  SetText(Window(), label_.Caption());
  if (shows) Send(WM_SETREDRAW, TRUE);
  Redraw();
}

std::optional<LRESULT> LabelPeer::Notified(const Message& message) {
  if (message.id != WM_CTLCOLORSTATIC) return ControlPeer::Notified(message);
  return UseColors(reinterpret_cast<HDC>(message.wParam), Back());
}

void LabelPeer::Draw(HDC context) const {
  // A label that begins outside of its container shows its text from the container's edge on, and not cut.
  const int outside = std::max(0, -Form().Scale().ToPixels(label_.Left()));
  if (outside > 0) {
    const RECT edge{0, 0, outside, Form().Scale().ToPixels(label_.Height())};
    ::FillRect(context, &edge, Form().BrushFor(ColorsOf(label_.ForeColor(), Back()).back));
    ::SetViewportOrgEx(context, outside, 0, nullptr);
  }
  Default({Window(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(context), PRF_CLIENT});
  ::SetViewportOrgEx(context, 0, 0, nullptr);
}

LRESULT LabelPeer::Handle(const Message& message) {
  switch (message.id) {
    case WM_PAINT:
      PaintBuffered(Window(), [this](HDC context) { Draw(context); });
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_SETCURSOR:
      if (label_.Pointer() != velmaro::Pointer::Hand) break;
      ::SetCursor(::LoadCursorA(nullptr, IDC_HAND));
      return TRUE;
    default:
      break;
  }
  return ControlPeer::Handle(message);
}

}  // namespace windows
