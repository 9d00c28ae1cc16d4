#pragma once

#include <QObject>

namespace onlinux {

// Shows every key of the program's forms to the form first: its own key events, its shortcuts, its default and cancel
// button. What the form has no use for goes on to the control that has the keyboard.
class KeyRouter : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace onlinux
