#include "platform/linux/qt/FormWidget.h"

#include <xcb/xcb.h>

#include <QCloseEvent>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <utility>

#include "platform/linux/qt/FormWindow.h"

namespace onlinux {
namespace {

// In milliseconds: within it a desktop that lays windows out itself has given one that it shows its size.
constexpr int arrangingTime = 1000;

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
  if (event->type() == QEvent::Paint && !std::exchange(painted_, true))
    QTimer::singleShot(arrangingTime, this, [this] { owner_.Arranged(); });
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

// Any program may destroy any window of the X server, and Qt goes on as if it were there. It does so too where the
// window keeps its size.
bool FormWidget::nativeEvent(const QByteArray& kind, void* message, qintptr*) {
  if (kind != "xcb_generic_event_t") return false;
  const auto* event = static_cast<const xcb_destroy_notify_event_t*>(message);
  const auto what = event->response_type & 0x7F;
  if (what == XCB_CONFIGURE_NOTIFY) QTimer::singleShot(0, this, [this] { owner_.Configured(); });
  if (what == XCB_DESTROY_NOTIFY && event->window == internalWinId())
    QTimer::singleShot(0, this, [this] { owner_.Destroyed(); });
  return false;
}

}  // namespace onlinux
