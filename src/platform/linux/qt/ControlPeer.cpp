#include "platform/linux/qt/ControlPeer.h"

#include "platform/linux/qt/Keys.h"
#include "platform/linux/qt/QtText.h"

namespace onlinux {

QWidget* ContainerOf(const velmaro::Control& control) {
  if (control.Parent()) return &static_cast<ControlPeer*>(control.Parent()->Peer())->Widget();
  return &static_cast<FormWindow*>(control.Owner().Peer())->Client();
}

ControlPeer::ControlPeer(velmaro::Control& control, QWidget* widget, bool clicksByRelease)
    : control_(control),
      form_(static_cast<FormWindow&>(*control.Owner().Peer())),
      widget_(widget),
      clicksByRelease_(clicksByRelease) {}

void ControlPeer::Begin() {
  using velmaro::Change;
  if (!control_.AccessibleName().empty()) Widget().setAccessibleName(ToQtLine(control_.AccessibleName()));
  for (const auto what : {Change::Bounds, Change::Colors, Change::Visible, Change::Enabled, Change::ToolTip})
    Apply(what);
}

void ControlPeer::Apply(velmaro::Change what) {
  switch (what) {
    case velmaro::Change::Bounds:
      Widget().setGeometry(Measures().Pixels(control_.At()));
      return ShowText();
    case velmaro::Change::Caption:
    case velmaro::Change::Font:
      return ShowText();
    case velmaro::Change::Visible:
      return Widget().setVisible(control_.Visible());
    case velmaro::Change::Enabled:
      return Widget().setEnabled(control_.Enabled());
    case velmaro::Change::Colors:
      return ShowColors();
    case velmaro::Change::ToolTip:
      // Qt takes a text that looks like marked-up text for that, unless it is one.
      return Widget().setToolTip(ToQt(control_.ToolTipText()).toHtmlEscaped());
    default:
      return;
  }
}

void ControlPeer::ShowText() { Widget().setFont(Measures().FontFor(control_.Font())); }

// White inside of what has the window colour is meant to be one with it, which it is not in a dark theme.
velmaro::Color ControlPeer::Ground() const {
  constexpr velmaro::Color white = 0xFFFFFF;
  const bool inWindow = control_.Parent() && control_.Parent()->BackColor() == velmaro::SystemColor::Window;
  return inWindow && control_.BackColor() == white ? velmaro::SystemColor::Window : control_.BackColor();
}

void ControlPeer::ShowColors() { ShowColorsAs(Widget().foregroundRole(), Widget().backgroundRole()); }

void ControlPeer::ShowColorsAs(QPalette::ColorRole text, QPalette::ColorRole ground) {
  auto palette = Widget().palette();
  const auto colors = Colors();
  palette.setColor(text, colors.text);
  palette.setColor(ground, colors.ground);
  Widget().setPalette(palette);
}

void ControlPeer::Pressed(const QMouseEvent& event) {
  if (event.button() == Qt::LeftButton) pressed_ = true;
}

// A release counts over the control alone, and one of the left button only where it was pressed there too.
void ControlPeer::Released(const QMouseEvent& event) {
  const int button = ButtonOf(event.button());
  const auto at = event.position();
  if (button == velmaro::MouseButton::Left && !std::exchange(pressed_, false)) return;
  if (button == 0 || !Widget().rect().contains(at.toPoint())) return;
  if (button == velmaro::MouseButton::Left && clicksByRelease_) control_.RaiseClick();
  control_.RaiseMouseUp(button, ShiftOf(event.modifiers()), Measures().Twips(at.x()), Measures().Twips(at.y()));
}

}  // namespace onlinux
