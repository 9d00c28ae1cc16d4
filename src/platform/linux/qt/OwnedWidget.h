#pragma once

#include <QPointer>
#include <QWidget>
#include <utility>

namespace onlinux {

// Owns a widget that goes with its parent too, whichever of the two ends first.
class OwnedWidget {
 public:
  OwnedWidget() = default;
  explicit OwnedWidget(QWidget* widget) : widget_(widget) {}
  OwnedWidget(const OwnedWidget&) = delete;
  OwnedWidget& operator=(const OwnedWidget&) = delete;
  ~OwnedWidget() { Reset(); }

  QWidget* get() const { return widget_; }
  // Ends the widget and takes `next` in its place.
  void Reset(QWidget* next = nullptr) { delete std::exchange(widget_, QPointer<QWidget>(next)).data(); }

 private:
  QPointer<QWidget> widget_;
};

}  // namespace onlinux
