#pragma once

#include "platform/windows/ControlPeer.h"
#include "runtime/ComboBox.h"

namespace windows {

class ComboBoxPeer final : public ControlPeer {
 public:
  explicit ComboBoxPeer(velmaro::ComboBox& combo);
  void Apply(velmaro::Change what) override;
  std::optional<LRESULT> Notified(const Message& message) override;

 protected:
  LRESULT Handle(const Message& message) override;

 private:
  void Refill();
  void ShowText();
  std::string PickedText() const;

  velmaro::ComboBox& combo_;
  bool applying_ = false;
};

}  // namespace windows
