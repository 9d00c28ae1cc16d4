#include "platform/linux/qt/FormWidget.h"

#include <xcb/xcb.h>

#include <QCloseEvent>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include "platform/linux/qt/FormWindow.h"

namespace onlinux {
namespace {

std::vector<std::string> FilesIn(const QMimeData& data) {
  std::vector<std::string> files;
  for (const auto& address : data.urls())
    if (address.isLocalFile()) files.push_back(QFile::encodeName(address.toLocalFile()).toStdString());
  return files;
}

}  // namespace

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

void FormWidget::dragEnterEvent(QDragEnterEvent* event) {
  if (!FilesIn(*event->mimeData()).empty()) event->acceptProposedAction();
}

// Whoever dropped them waits for the answer, and what the form does with them may take as long as it likes.
void FormWidget::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  QTimer::singleShot(0, this, [this, files = FilesIn(*event->mimeData())] { owner_.Dropped(files); });
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
