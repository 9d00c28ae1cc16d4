#pragma once

#include <map>

#include "platform/simulated/Desktop.h"
#include "platform/simulated/Living.h"
#include "runtime/Peers.h"

namespace simulated {

// The native side of a control of any kind. What the control shows is in its model; the peer counts what it was told.
class ControlPeer final : public velmaro::Peer {
 public:
  explicit ControlPeer(velmaro::Control& control);
  ~ControlPeer() override;

  // Throws RuntimeError for more rows than the desktop's list boxes take.
  void Apply(velmaro::Change what) override;
  platform::WindowHandle hWnd() const override { return handle_; }
  void SetFocus() override;
  // How often the peer was told of a change.
  int Told(velmaro::Change what) const;

 private:
  Desktop& desktop_ = TheDesktop();
  Living living_;
  velmaro::Control& control_;
  platform::WindowHandle handle_ = desktop_.NewHandle();
  std::map<velmaro::Change, int> told_;
};

}  // namespace simulated
