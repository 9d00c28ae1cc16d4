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
  bool HasBackColor() const { return button_.Graphical() && !velmaro::SystemColor::Is(button_.BackColor()); }

  velmaro::CommandButton& button_;
  OwnedImages images_;
};

}  // namespace windows
