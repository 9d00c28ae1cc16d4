#include "platform/linux/qt/FormWidget.h"

#include <QCloseEvent>

#include "platform/linux/qt/FormWindow.h"

namespace onlinux {

bool FormWidget::event(QEvent* event) {
  const bool handled = QWidget::event(event);
  if (event->type() == QEvent::WindowActivate) owner_.Activated();
  return handled;
}

void FormWidget::resizeEvent(QResizeEvent*) { owner_.Resized(); }

// Whether the window goes is the form's affair.
void FormWidget::closeEvent(QCloseEvent* event) {
  event->ignore();
  owner_.CloseAsked();
}

void FormWidget::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::WindowStateChange) owner_.Resized();
}

}  // namespace onlinux
