#pragma once

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <optional>
#include <string>

#include "platform/linux/qt/OwnedWidget.h"
#include "platform/types.h"

namespace onlinux {

// What a tooltip says and how it looks.
struct TipLook {
  bool balloon = false;    // a rounded one that points at its control
  bool centered = false;   // under the middle of its control
  std::uint32_t icon = 0;  // 1 information, 2 warning, 3 error; it needs a title beside it
  std::string title = {};
  std::string text = {};
  std::optional<QColor> textColor = {};
  std::optional<QColor> groundColor = {};
};

// A tooltip of a control: it shows by itself while the pointer rests over the control.
class Balloon : public QObject {
 public:
  // Stands by over a control of the program. One that is gone, or that there is none of, shows no tip.
  void Watch(QWidget* control);
  TipLook& Look() { return look_; }
  // Shows what changed in the look, where the tip is on the screen.
  void Changed();
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Show();

  QPointer<QWidget> control_;
  TipLook look_;
  OwnedWidget shown_;
};

}  // namespace onlinux
