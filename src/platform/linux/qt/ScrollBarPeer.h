#pragma once

#include "platform/linux/qt/ControlPeer.h"
#include "runtime/HScrollBar.h"

namespace onlinux {

class ScrollBarPeer : public ControlPeer {
 public:
  explicit ScrollBarPeer(velmaro::HScrollBar& bar);
  void Begin() override;
  void Apply(velmaro::Change what) override;

 protected:
  void ShowColors() override {}

 private:
  void ShowValue();

  velmaro::HScrollBar& bar_;
};

}  // namespace onlinux
