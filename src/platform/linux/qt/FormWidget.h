#pragma once

#include <QWidget>

namespace onlinux {

class FormWindow;

// The widget of a form's window: tells the window what Qt tells it.
class FormWidget : public QWidget {
 public:
  FormWidget(FormWindow& owner, Qt::WindowFlags flags) : QWidget(nullptr, flags), owner_(owner) {}
  FormWindow& Owner() const { return owner_; }

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool nativeEvent(const QByteArray& kind, void* message, qintptr* result) override;

 private:
  FormWindow& owner_;
  bool painted_ = false;
};

}  // namespace onlinux
