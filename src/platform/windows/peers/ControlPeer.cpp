#include "platform/windows/peers/ControlPeer.h"

#include "platform/windows/peers/Keys.h"

namespace windows {
namespace {

HWND ParentOf(const velmaro::Control& control) {
  return platform::ToNative<HWND>(control.Parent() ? control.Parent()->hWnd() : control.Owner().hWnd());
}

int ReleasedButton(UINT message) {
  switch (message) {
    case WM_LBUTTONUP:
      return velmaro::MouseButton::Left;
    case WM_RBUTTONUP:
      return velmaro::MouseButton::Right;
    case WM_MBUTTONUP:
      return velmaro::MouseButton::Middle;
    default:
      return 0;
  }
}

bool IsInside(const Message& message, POINT& point) {
  point = {static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
  RECT client;
  ::GetClientRect(message.window, &client);
  return ::PtInRect(&client, point);
}

// False where the inside of a window reaches to its edge on all sides.
bool HasFrame(HWND window) {
  RECT outer;
  RECT client;
  ::GetWindowRect(window, &outer);
  ::GetClientRect(window, &client);
  return outer.right - outer.left != client.right || outer.bottom - outer.top != client.bottom;
}

// A window that is about to take no keyboard hands it on, or the keys of the form would go nowhere.
void PassFocusOn(HWND form, HWND window) {
  const auto focus = ::GetFocus();
  if (focus == window || ::IsChild(window, focus)) ::SetFocus(::GetNextDlgTabItem(form, window, FALSE));
}

// The window that a message to a parent is about, null where it is about none.
HWND SubjectOf(const Message& message) {
  switch (message.id) {
    case WM_COMMAND:
    case WM_HSCROLL:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
      return reinterpret_cast<HWND>(message.lParam);
    case WM_NOTIFY:
      return reinterpret_cast<const NMHDR*>(message.lParam)->hwndFrom;
    default:
      return nullptr;
  }
}

}  // namespace

ControlPeer::ControlPeer(velmaro::Control& control, const ControlWindow& window)
    : control_(control),
      form_(static_cast<FormWindow&>(*control.Owner().Peer())),
      clicksByRelease_(window.clicksByRelease),
      roomBelow_(window.roomBelow),
      place_(form_.Scale().ToPixels(control.At())),
      label_(NewLabel(window)),
      window_(Create(ArgsFor(window))) {
  ::SetWindowLongPtrW(window_.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  native_ = reinterpret_cast<WNDPROC>(
      ::SetWindowLongPtrW(window_.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ControlPeer::Procedure)));
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(form_.FontFor(control.Font())));
}

// Screen readers call a field what the label right in front of it says. One that nobody sees says it: a label of the
// form's own would cover in front what it overlaps.
OwnedWindow ControlPeer::NewLabel(const ControlWindow& window) const {
  const auto& name = control_.AccessibleName();
  if (!window.isField || name.empty()) return {};
  return Create({.windowClass = L"STATIC", .text = name, .style = WS_CHILD, .parent = ParentOf(control_)});
}

WindowArgs ControlPeer::ArgsFor(const ControlWindow& window) {
  DWORD style = WS_CHILD | WS_CLIPSIBLINGS | window.style;
  if (control_.Visible()) style |= WS_VISIBLE;
  if (!control_.Enabled()) style |= WS_DISABLED;
  if (window.takesKeyboard) style |= WS_TABSTOP;
  if (window.startsGroup) style |= WS_GROUP;
  // A list or a scroll bar shows no text, and its name can stand there.
  const bool named = window.takesKeyboard && !window.isField && control_.Caption().empty();
  auto place = place_;
  place.height += form_.Scale().Scaled(roomBelow_);
  return {.windowClass = window.windowClass,
          .text = named ? control_.AccessibleName() : control_.Caption(),
          .style = style,
          .extendedStyle = window.extendedStyle,
          .place = place,
          .parent = ParentOf(control_),
          .id = form_.NextId()};
}

void ControlPeer::Apply(velmaro::Change what) {
  switch (what) {
    case velmaro::Change::Bounds:
      return Place();
    case velmaro::Change::Caption:
      SetText(window_.get(), control_.Caption());
      return;
    case velmaro::Change::Visible:
      return Show();
    case velmaro::Change::Enabled:
      return Enable();
    case velmaro::Change::Font:
      Send(WM_SETFONT, reinterpret_cast<WPARAM>(form_.FontFor(control_.Font())), TRUE);
      return;
    case velmaro::Change::Colors:
      return Redraw();
    case velmaro::Change::ToolTip:
      return form_.ControlTips().Update(window_.get(), control_.ToolTipText());
    default:
      return;
  }
}

void ControlPeer::Place() {
  const auto place = form_.Scale().ToPixels(control_.At());
  if (place == std::exchange(place_, place)) return;
  ::SetWindowPos(window_.get(), nullptr, place.x, place.y, place.width, place.height + form_.Scale().Scaled(roomBelow_),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlPeer::Show() const {
  if (!control_.Visible()) PassFocusOn(form_.Window(), window_.get());
  ::ShowWindow(window_.get(), control_.Visible() ? SW_SHOWNA : SW_HIDE);
}

void ControlPeer::Enable() const {
  if (!control_.Enabled()) PassFocusOn(form_.Window(), window_.get());
  ::EnableWindow(window_.get(), control_.Enabled());
}

void ControlPeer::Rescale() {
  Apply(velmaro::Change::Font);
  Place();
}

velmaro::Color ControlPeer::ContainerColor() const {
  return control_.Parent() ? control_.Parent()->BackColor() : control_.Owner().Args().BackColor;
}

LRESULT ControlPeer::UseColors(HDC context, velmaro::Color back) const {
  const auto colors = ColorsOf(control_.ForeColor(), back);
  ::SetTextColor(context, ToNative(colors.text));
  ::SetBkColor(context, ToNative(colors.back));
  return reinterpret_cast<LRESULT>(form_.BrushFor(colors.back));
}

std::optional<LRESULT> ControlPeer::Notified(const Message& message) {
  switch (message.id) {
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORSTATIC:
      return UseColors(reinterpret_cast<HDC>(message.wParam), ContainerColor());
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
      return UseColors(reinterpret_cast<HDC>(message.wParam), control_.BackColor());
    default:
      return {};
  }
}

LRESULT ControlPeer::Handle(const Message& message) {
  // The system may ask for the fonts and sizes of all frames before it finds that there is none to draw.
  if (message.id == WM_NCPAINT && !HasFrame(message.window)) return 0;
  if (message.id == WM_LBUTTONDOWN || message.id == WM_LBUTTONDBLCLK) pressed_ = true;
  if (message.id == WM_MOUSEMOVE && !control_.ToolTipText().empty())
    form_.ControlTips().Offer(form_.Window(), window_.get(), control_.ToolTipText());
  const auto result = Default(message);
  if (const int button = ReleasedButton(message.id)) Released(button, message);
  return result;
}

// A release counts over the control alone, and one of the left button only where it was pressed there too.
void ControlPeer::Released(int button, const Message& message) {
  if (button == velmaro::MouseButton::Left && !std::exchange(pressed_, false)) return;
  POINT point;
  if (!IsInside(message, point)) return;
  if (button == velmaro::MouseButton::Left && clicksByRelease_) control_.RaiseClick();
  control_.RaiseMouseUp(button, ShiftState(), form_.Scale().ToTwips(point.x), form_.Scale().ToTwips(point.y));
}

LRESULT ControlPeer::Default(const Message& message) const {
  return ::CallWindowProcW(native_, message.window, message.id, message.wParam, message.lParam);
}

LRESULT CALLBACK ControlPeer::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept {
  auto* peer = PeerOf(window);
  if (!peer) return ::DefWindowProcW(window, id, wParam, lParam);
  const Message message{window, id, wParam, lParam};
  if (id != WM_NCDESTROY) return peer->Handle(message);
  ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
  return peer->Default(message);
}

ControlPeer* PeerOf(HWND control) {
  return reinterpret_cast<ControlPeer*>(::GetWindowLongPtrW(control, GWLP_USERDATA));
}

std::optional<LRESULT> Reflect(const Message& message) {
  const auto subject = SubjectOf(message);
  auto* peer = subject ? PeerOf(subject) : nullptr;
  return peer ? peer->Notified(message) : std::nullopt;
}

}  // namespace windows
