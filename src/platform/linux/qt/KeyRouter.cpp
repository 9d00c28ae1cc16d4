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
  const bool asks = event->type() == QEvent::ShortcutOverride;
  if (!asks && event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
  auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget || QApplication::activePopupWidget() || !IsFirstToGetKeys(widget)) return false;
  auto* form = FormWindow::Of(widget);
  if (!form) return false;
  auto& key = *static_cast<QKeyEvent*>(event);
  if (!asks) return form->HandleKey(key);
  // What is accepted here comes back as a plain press, before any menu gets it.
  const bool taken = form->ButtonWithAccessKey(key) != nullptr;
  if (taken) key.accept();
  return taken;
}

}  // namespace onlinux
