#include "platform/linux/qt/FormWidget.h"

#include <xcb/xcb.h>

#include <QCloseEvent>
#include <QTimer>

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

// Any program may destroy any window of the X server, and Qt goes on as if it were there.
bool FormWidget::nativeEvent(const QByteArray& kind, void* message, qintptr*) {
  if (kind != "xcb_generic_event_t") return false;
  const auto* event = static_cast<const xcb_destroy_notify_event_t*>(message);
  if ((event->response_type & 0x7F) == XCB_DESTROY_NOTIFY && event->window == internalWinId())
    QTimer::singleShot(0, this, [this] { owner_.Destroyed(); });
  return false;
}

}  // namespace onlinux
