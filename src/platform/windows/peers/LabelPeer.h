#pragma once

#include "platform/windows/peers/ControlPeer.h"
#include "runtime/Label.h"

namespace windows {

class LabelPeer final : public ControlPeer {
 public:
  explicit LabelPeer(velmaro::Label& label);
  void Apply(velmaro::Change what) override;
  std::optional<LRESULT> Notified(const Message& message) override;

 protected:
  LRESULT Handle(const Message& message) override;

 private:
  void StepAhead() const;
  void ShowCaption();
  void Draw(HDC context) const;
  velmaro::Color Back() const { return label_.Transparent() ? ContainerColor() : label_.BackColor(); }

  velmaro::Label& label_;
};

}  // namespace windows
