#pragma once

#include "platform/windows/peers/ControlPeer.h"
#include "runtime/HScrollBar.h"

namespace windows {

class ScrollBarPeer final : public ControlPeer {
 public:
  explicit ScrollBarPeer(velmaro::HScrollBar& bar);
  void Apply(velmaro::Change what) override;
  std::optional<LRESULT> Notified(const Message& message) override;

 private:
  void ShowPosition() const;
  int Wanted(WPARAM request) const;

  velmaro::HScrollBar& bar_;
};

}  // namespace windows
