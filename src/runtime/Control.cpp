#include "runtime/Control.h"

#include "runtime/Form.h"

namespace velmaro {

Container::Container(Control& inside) : form(inside.Owner()), control(&inside) {}

Control::Control(Container container, ControlArgs args)
    : form_(container.form), parent_(container.control), args_(std::move(args)) {
  form_.Add(*this);
}

Control::~Control() { form_.Remove(*this); }

void Control::Move(const Bounds& at) {
  if (at.Width < 0 || at.Height < 0) throw RuntimeError("a control has no negative size");
  Set(args_.At, at, Change::Bounds);
}

void Control::RaiseClick() {
  if (Enabled() && Click && !form_.Unloaded()) Resume(Click);
}

void Control::RaiseMouseUp(int button, int shift, float x, float y) {
  if (Enabled() && MouseUp && !form_.Unloaded()) Resume([&] { MouseUp(button, shift, x, y); });
}

}  // namespace velmaro
