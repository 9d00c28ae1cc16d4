#include "runtime/Buttons.h"

#include "runtime/Form.h"

namespace velmaro {

void CommandButton::RaisePress() {
  if (Click)
    RaiseClick();
  else
    RaiseMouseUp(MouseButton::Left, 0, 0, 0);
}

void OptionButton::SetValue(bool value) {
  if (value == look_.Value) return;
  if (value)
    for (auto* control : Owner().Controls())
      if (auto* other = dynamic_cast<OptionButton*>(control); other && other != this && other->Parent() == Parent())
        other->Set(other->look_.Value, false, Change::Value);
  Set(look_.Value, value, Change::Value);
  if (value) RaiseClick();
}

}  // namespace velmaro
