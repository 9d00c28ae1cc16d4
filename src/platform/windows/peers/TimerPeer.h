#pragma once

#include "platform/windows/peers/FormWindow.h"
#include "runtime/Timer.h"

namespace windows {

// The native side of a timer: one of its form's window.
class TimerPeer final : public velmaro::Peer {
 public:
  explicit TimerPeer(velmaro::Timer& timer);
  TimerPeer(const TimerPeer&) = delete;
  TimerPeer& operator=(const TimerPeer&) = delete;
  ~TimerPeer() override { Stop(); }
  void Apply(velmaro::Change what) override;

 private:
  void Stop();

  velmaro::Timer& timer_;
  FormWindow& form_;
  UINT_PTR id_ = 0;
};

}  // namespace windows
