#pragma once

#include <cstdint>

#include "platform/simulated/Desktop.h"
#include "platform/simulated/peers/Living.h"
#include "runtime/Peers.h"

namespace simulated {

// The native side of a timer: it ticks as the desktop's clock goes on.
class TimerPeer final : public velmaro::Peer {
 public:
  explicit TimerPeer(velmaro::Timer& timer);
  ~TimerPeer() override;

  void Apply(velmaro::Change what) override;
  // When the timer ticks next; the end of time while it does not run.
  std::uint64_t Due() const { return due_; }
  bool IsUpToDate() const;
  // Sets the next tick and raises this one.
  void Tick();

 private:
  Desktop& desktop_ = TheDesktop();
  Living living_;
  velmaro::Timer& timer_;
  std::uint64_t due_ = 0;
};

}  // namespace simulated
