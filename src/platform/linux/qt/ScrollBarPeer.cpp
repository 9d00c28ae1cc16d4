#include "platform/linux/qt/ScrollBarPeer.h"

#include <QKeyEvent>
#include <QScrollBar>

#include "runtime/Failures.h"

namespace onlinux {
namespace {

// The toolkit turns the keys of every scroll bar round. That is right for Page Up and Page Down, and for the arrows of an
// upright bar, but here Right would go to the left.
class LyingBar : public Heard<QScrollBar> {
 public:
  using Heard::Heard;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    setInvertedControls(event->key() != Qt::Key_Left && event->key() != Qt::Key_Right);
    Heard::keyPressEvent(event);
    setInvertedControls(true);
  }
};

}  // namespace

ScrollBarPeer::ScrollBarPeer(velmaro::HScrollBar& bar)
    : ControlPeer(bar, MakeWidget<LyingBar>(bar, Qt::Horizontal)), bar_(bar) {
  auto& widget = static_cast<LyingBar&>(Widget());
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
