#pragma once

#include "platform/windows/peers/ControlPeer.h"
#include "runtime/Pictures.h"

namespace windows {

// A picture box or a frame: its window holds those of other controls and passes on what they are told.
class ContainerPeer final : public ControlPeer {
 public:
  explicit ContainerPeer(velmaro::PictureBox& box);
  explicit ContainerPeer(velmaro::Frame& frame);

 protected:
  LRESULT Handle(const Message& message) override;

 private:
  velmaro::Control& container_;
};

}  // namespace windows
