#include "platform/linux/qt/ScrollBarPeer.h"

#include <QScrollBar>

#include "runtime/Failures.h"

namespace onlinux {

ScrollBarPeer::ScrollBarPeer(velmaro::HScrollBar& bar)
    : ControlPeer(bar, MakeWidget<Heard<QScrollBar>>(bar, Qt::Horizontal)), bar_(bar) {
  auto& widget = static_cast<Heard<QScrollBar>&>(Widget());
  widget.listener = this;
  widget.setSingleStep(bar.SmallChange());
  widget.setPageStep(bar.LargeChange());
  widget.setFocusPolicy(Qt::StrongFocus);
  QObject::connect(&widget, &QAbstractSlider::valueChanged, &widget, [this](int value) {
    if (!IsApplying()) velmaro::Resume([&] { bar_.SetValue(value); });
  });
}

void ScrollBarPeer::Begin() {
  ControlPeer::Begin();
  ShowValue();
}

void ScrollBarPeer::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Range || what == velmaro::Change::Value) return ShowValue();
  ControlPeer::Apply(what);
}

void ScrollBarPeer::ShowValue() {
  auto& widget = static_cast<QScrollBar&>(Widget());
  Quietly([&] {
    widget.setRange(0, bar_.Max());
    widget.setValue(bar_.Value());
  });
}

}  // namespace onlinux
