#include "platform/linux/qt/KeyRouter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "platform/linux/qt/FormWindow.h"

namespace onlinux {
namespace {

// A key that a control has no use for goes on to what contains it; the form has seen it by then.
bool IsFirstToGetKeys(const QWidget* widget) {
  const auto* window = widget->window();
  return window->focusWidget() ? widget == window->focusWidget() : widget == window;
}

}  // namespace

bool KeyRouter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
  auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget || QApplication::activePopupWidget() || !IsFirstToGetKeys(widget)) return false;
  auto* form = FormWindow::Of(widget);
  return form && form->HandleKey(*static_cast<QKeyEvent*>(event));
}

}  // namespace onlinux
