#pragma once

#include <QMouseEvent>
#include <QWidget>
#include <memory>
#include <utility>

#include "platform/linux/ground/OwnWindows.h"
#include "platform/linux/qt/FormWindow.h"
#include "platform/linux/qt/OwnedWidget.h"
#include "runtime/Control.h"

namespace onlinux {

class ControlPeer;

// A widget of any kind that tells a peer of the mouse, and keeps its events from what lies under it.
template <class Widget>
class Heard : public Widget {
 public:
  using Widget::Widget;
  ControlPeer* listener = nullptr;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
};

// What the peers of all controls have in common: one widget inside its container.
class ControlPeer : public velmaro::Peer, public OwnWindow {
 public:
  // Takes care of a widget that was made for the control inside its container.
  ControlPeer(velmaro::Control& control, QWidget* widget, bool clicksByRelease = false);

  // Brings the widget up to date with all of the model. For the makers, once the peer is whole.
  virtual void Begin();
  void Apply(velmaro::Change what) override;
  platform::WindowHandle hWnd() const override { return number_; }
  platform::WindowHandle Number() const override { return number_; }
  platform::PixelRect Inside() const override { return {0, 0, Widget().width(), Widget().height()}; }

  QWidget& Widget() const { return *widget_.get(); }
  // For the widget: a mouse button went down on it, up again, or down twice.
  void Pressed(const QMouseEvent& event);
  void Released(const QMouseEvent& event);
  virtual void PressedTwice(const QMouseEvent& event) { Pressed(event); }

 protected:
  // Shows the control's caption and font in its present size.
  virtual void ShowText();
  // Shows the control's colours.
  virtual void ShowColors();
  // The same, in the roles that a kind of widget draws its text and its ground with.
  void ShowColorsAs(QPalette::ColorRole text, QPalette::ColorRole ground);
  // The text's colours against the ground that it really stands on.
  TextColors Colors() const { return ColorsOf(control_.ForeColor(), Ground(), Client().palette()); }
  virtual velmaro::Color Ground() const;
  const Scale& Measures() const { return form_.Measures(); }
  QWidget& Client() const { return form_.Client(); }
  FormWindow& Form() const { return form_; }
  // True while the left button of the mouse is held that went down on the widget.
  bool IsHeld() const { return pressed_; }
  // Drops what the widget would tell of a change that came from the model.
  bool IsApplying() const { return applying_; }
  template <class Change>
  void Quietly(Change change) {
    const bool before = std::exchange(applying_, true);
    change();
    applying_ = before;
  }

 private:
  velmaro::Control& control_;
  FormWindow& form_;
  OwnedWidget widget_;
  platform::WindowHandle number_ = NewNumber();
  bool clicksByRelease_;
  bool pressed_ = false;
  bool applying_ = false;
};

// The widget that a control's widget is made in.
QWidget* ContainerOf(const velmaro::Control& control);

// Makes a widget inside the container of a control.
template <class Widget, class... Arguments>
Widget* MakeWidget(const velmaro::Control& control, Arguments&&... arguments) {
  return new Widget(std::forward<Arguments>(arguments)..., ContainerOf(control));
}

template <class Widget>
void Heard<Widget>::mousePressEvent(QMouseEvent* event) {
  if (listener) listener->Pressed(*event);
  Widget::mousePressEvent(event);
  event->accept();
}

template <class Widget>
void Heard<Widget>::mouseReleaseEvent(QMouseEvent* event) {
  Widget::mouseReleaseEvent(event);
  event->accept();
  if (listener) listener->Released(*event);
}

template <class Widget>
void Heard<Widget>::mouseDoubleClickEvent(QMouseEvent* event) {
  Widget::mouseDoubleClickEvent(event);
  event->accept();
  if (listener) listener->PressedTwice(*event);
}

}  // namespace onlinux
