#include "platform/windows/peers/TimerPeer.h"

namespace windows {

TimerPeer::TimerPeer(velmaro::Timer& timer) : timer_(timer), form_(static_cast<FormWindow&>(*timer.Owner().Peer())) {
  Apply(velmaro::Change::Timing);
}

void TimerPeer::Apply(velmaro::Change what) {
  if (what != velmaro::Change::Timing) return;
  Stop();
  if (timer_.Enabled() && timer_.Interval() > 0) id_ = form_.StartTimer(timer_, timer_.Interval());
}

void TimerPeer::Stop() {
  if (id_ != 0) form_.StopTimer(std::exchange(id_, 0));
}

}  // namespace windows
