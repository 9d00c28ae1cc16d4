#pragma once

#include "platform/windows/peers/ControlPeer.h"
#include "runtime/Buttons.h"

namespace windows {

// A push button; a graphical one has its picture above its caption, or a back colour of its own.
class CommandButtonPeer final : public ControlPeer {
 public:
  explicit CommandButtonPeer(velmaro::CommandButton& button);
  void Rescale() override;
  std::optional<LRESULT> Notified(const Message& message) override;

 private:
  void ShowPicture();
  LRESULT Draw(const NMCUSTOMDRAW& drawing) const;
  // False also where that colour is not to be seen.
  bool HasBackColor() const {
    const auto back = button_.BackColor();
    return button_.Graphical() && !velmaro::SystemColor::Is(back) && ColorsOf(button_.ForeColor(), back).back == back;
  }

  velmaro::CommandButton& button_;
  OwnedImages images_;
};

}  // namespace windows
