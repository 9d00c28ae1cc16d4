#pragma once

#include "platform/linux/qt/ControlPeer.h"
#include "runtime/Buttons.h"

namespace onlinux {

class CommandButtonPeer : public ControlPeer {
 public:
  explicit CommandButtonPeer(velmaro::CommandButton& button);

 protected:
  void ShowText() override;
  void ShowColors() override;

 private:
  void Clicked();
  velmaro::CommandButton& button_;
};

class OptionButtonPeer : public ControlPeer {
 public:
  explicit OptionButtonPeer(velmaro::OptionButton& button);
  void Begin() override;
  void Apply(velmaro::Change what) override;

 protected:
  void ShowText() override;

 private:
  void ShowValue();
  velmaro::OptionButton& button_;
};

}  // namespace onlinux
