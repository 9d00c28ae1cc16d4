#pragma once

#include "platform/windows/peers/ControlPeer.h"
#include "runtime/Buttons.h"

namespace windows {

// An option button, or a push button that stays down. The options of one container are one group of the arrow keys.
class OptionButtonPeer final : public ControlPeer {
 public:
  explicit OptionButtonPeer(velmaro::OptionButton& option);
  void Apply(velmaro::Change what) override;
  std::optional<LRESULT> Notified(const Message& message) override;

 private:
  void Mark() const { Send(BM_SETCHECK, option_.Value() ? BST_CHECKED : BST_UNCHECKED); }

  velmaro::OptionButton& option_;
};

}  // namespace windows
