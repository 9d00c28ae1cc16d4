#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>

#include "platform/linux/qt/ControlPeer.h"
#include "platform/linux/qt/FormWidget.h"
#include "platform/linux/qt/FormWindow.h"
#include "platform/linux/qt/Keys.h"
#include "runtime/Buttons.h"
#include "runtime/Menu.h"
#include "runtime/TextBox.h"

namespace onlinux {

velmaro::Control* FormWindow::Focused() const {
  const auto* widget = widget_->focusWidget();
  for (auto* control : form_.Controls())
    if (const auto* peer = static_cast<const ControlPeer*>(control->Peer()); peer && widget == &peer->Widget())
      return control;
  return nullptr;
}

// The button that Enter or Esc presses now, null for none.
velmaro::CommandButton* FormWindow::ButtonFor(int keyCode) const {
  if (keyCode == velmaro::Key::Escape) return form_.CancelButton();
  if (keyCode != velmaro::Key::Return) return nullptr;
  auto* focused = Focused();
  if (const auto* text = dynamic_cast<velmaro::TextBox*>(focused); text && text->MultiLine()) return nullptr;
  auto* button = dynamic_cast<velmaro::CommandButton*>(focused);
  return button ? button : form_.DefaultButton();
}

bool FormWindow::HandlePress(int keyCode, int shift) {
  form_.RaiseKeyDown(keyCode, shift);
  // What the key did may have taken the window away, or put another one before it.
  if (!Shows() || blocked_) return true;
  if (auto* entry = velmaro::FindShortcut(form_, {keyCode, shift})) {
    entry->RaiseClick();
    return true;
  }
  auto* button = shift == 0 ? ButtonFor(keyCode) : nullptr;
  if (button) button->RaisePress();
  return button != nullptr;
}

QAbstractButton* FormWindow::ButtonWithAccessKey(const QKeyEvent& event) const {
  if (blocked_ || !event.modifiers().testFlag(Qt::AltModifier)) return nullptr;
  for (auto* control : form_.Controls()) {
    const auto* peer = static_cast<const ControlPeer*>(control->Peer());
    auto* button = peer ? qobject_cast<QAbstractButton*>(&peer->Widget()) : nullptr;
    if (button && button->isVisible() && button->isEnabled() && button->shortcut() == event.keyCombination())
      return button;
  }
  return nullptr;
}

bool FormWindow::PressAccessKey(const QKeyEvent& event) {
  if (auto* bar = menus_.Bar(); bar && event.keyCombination() == QKeyCombination(Qt::Key_F10)) {
    bar->setActiveAction(bar->actions().constFirst());
    return true;
  }
  // Qt asks for a control's menu with the menu key alone.
  if (auto* control = widget_->focusWidget(); control && event.keyCombination() == (Qt::SHIFT | Qt::Key_F10)) {
    const auto at = control->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, at, control->mapToGlobal(at));
    QApplication::sendEvent(control, &asked);
    return true;
  }
  auto* button = ButtonWithAccessKey(event);
  if (!button) return false;
  button->setFocus(Qt::ShortcutFocusReason);
  button->click();
  return true;
}

bool FormWindow::HandleKey(const QKeyEvent& event) {
  if (blocked_ || !Shows()) return true;
  const int keyCode = KeyCodeOf(event);
  if (keyCode == 0) return false;
  const int shift = ShiftOf(event.modifiers());
  if (event.type() == QEvent::KeyPress) return HandlePress(keyCode, shift) || PressAccessKey(event);
  // A key that is held down is told as pressed again and again, and as released once.
  if (!event.isAutoRepeat()) form_.RaiseKeyUp(keyCode, shift);
  return false;
}

}  // namespace onlinux
