#pragma once

#include "runtime/Control.h"

namespace velmaro {

// A panel in its back colour that holds other controls. `Border` draws a thin sunken edge inside its bounds.
class PictureBox : public Control {
 public:
  PictureBox(Container container, ControlArgs args, bool border = false)
      : Control(container, std::move(args)), border_(border) {}
  bool Border() const { return border_; }

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }

 private:
  bool border_;
};

// A captioned frame that holds other controls; its option buttons are one group.
class Frame : public Control {
 public:
  using Control::Control;

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }
};

// Shows one of the project's pictures, scaled to the control's size.
class Image : public Control {
 public:
  using Control::Control;

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }
};

// A straight line in its fore colour, from the upper left to the lower right corner of its bounds.
class Line : public Control {
 public:
  // `pixels` is the width of the line at 96 dots an inch; it grows with the resolution.
  Line(Container container, ControlArgs args, int pixels) : Control(container, std::move(args)), pixels_(pixels) {}
  int BorderWidth() const { return pixels_; }

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }

 private:
  int pixels_;
};

}  // namespace velmaro
