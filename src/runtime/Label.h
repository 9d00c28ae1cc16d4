#pragma once

#include "runtime/Control.h"

namespace velmaro {

// Where the text of a label stands in its width.
enum class Alignment { Left, Right, Center };

// How a label shows its text.
struct LabelArgs {
  velmaro::Alignment Alignment = velmaro::Alignment::Left;
  bool Transparent = false;  // the container shows through behind the text
  velmaro::Pointer Pointer = velmaro::Pointer::Default;
};

// A text that takes no keyboard. It is broken into lines where it is wider than the label.
class Label : public Control {
 public:
  Label(Container container, ControlArgs args, LabelArgs look = {})
      : Control(container, std::move(args)), look_(look) {}

  velmaro::Alignment Alignment() const { return look_.Alignment; }
  bool Transparent() const { return look_.Transparent; }
  velmaro::Pointer Pointer() const { return look_.Pointer; }

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }

 private:
  LabelArgs look_;
};

}  // namespace velmaro
