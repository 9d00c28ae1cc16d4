#include "platform/simulated/peers/TimerPeer.h"

#include <limits>

#include "runtime/Timer.h"

namespace simulated {

TimerPeer::TimerPeer(velmaro::Timer& timer) : timer_(timer) {
  desktop_.timers.push_back(this);
  Apply(velmaro::Change::Timing);
}

TimerPeer::~TimerPeer() { std::erase(desktop_.timers, this); }

void TimerPeer::Apply(velmaro::Change) {
  const bool runs = timer_.Enabled() && timer_.Interval() > 0;
  due_ =
      runs ? desktop_.now + static_cast<std::uint64_t>(timer_.Interval()) : std::numeric_limits<std::uint64_t>::max();
}

bool TimerPeer::IsUpToDate() const {
  return (due_ != std::numeric_limits<std::uint64_t>::max()) == (timer_.Enabled() && timer_.Interval() > 0);
}

void TimerPeer::Tick() {
  Apply(velmaro::Change::Timing);
  timer_.RaiseTick();
}

}  // namespace simulated
