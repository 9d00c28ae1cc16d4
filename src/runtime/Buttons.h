#pragma once

#include "runtime/Control.h"

namespace velmaro {

// How a command button looks and which key presses it.
struct ButtonArgs {
  bool Default = false;    // Enter presses it, unless another button has the keyboard
  bool Cancel = false;     // Esc presses it
  bool Graphical = false;  // shows its picture above its caption, and its back colour
};

// A push button.
class CommandButton : public Control {
 public:
  CommandButton(Container container, ControlArgs args, ButtonArgs look = {})
      : Control(container, std::move(args)), look_(look) {}

  bool Default() const { return look_.Default; }
  bool Cancel() const { return look_.Cancel; }
  bool Graphical() const { return look_.Graphical; }
  // Says whether Esc presses the button.
  void SetCancel(bool cancel) { Set(look_.Cancel, cancel, Change::Keys); }
  // For peers: presses the button without a mouse. Where it hears the mouse alone, that counts as its left button.
  void RaisePress();

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }

 private:
  ButtonArgs look_;
};

// How an option button looks when it is made.
struct OptionArgs {
  bool Value = false;      // selected
  bool Graphical = false;  // looks like a push button that stays down
};

// One of a group: the option buttons of one container exclude each other.
class OptionButton : public Control {
 public:
  OptionButton(Container container, ControlArgs args, OptionArgs look = {})
      : Control(container, std::move(args)), look_(look) {}

  bool Value() const { return look_.Value; }
  bool Graphical() const { return look_.Graphical; }
  // Selects the button, clears the others of its group and raises Click where it was not selected before; or clears it.
  void SetValue(bool value);

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }

 private:
  OptionArgs look_;
};

}  // namespace velmaro
