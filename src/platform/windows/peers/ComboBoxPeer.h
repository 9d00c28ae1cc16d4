#pragma once

#include "platform/windows/peers/ControlPeer.h"
#include "runtime/ComboBox.h"

namespace windows {

class ComboBoxPeer final : public ControlPeer {
 public:
  explicit ComboBoxPeer(velmaro::ComboBox& combo);
  void Apply(velmaro::Change what) override;
  void Read() override;

 protected:
  LRESULT Handle(const Message& message) override;

 private:
  void Refill();
  void ShowText();
  std::vector<std::string> Entries() const;
  std::string Meant() const;

  velmaro::ComboBox& combo_;
  std::string shown_;  // the field's text as it was last read
  bool filledByOthers_ = false;
  bool applying_ = false;
};

}  // namespace windows
