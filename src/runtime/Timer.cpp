#include "runtime/Timer.h"

#include "runtime/Failures.h"
#include "runtime/Form.h"

namespace velmaro {

Timer::Timer(Form& form, TimerArgs args) : form_(form), args_(args) { form_.Add(*this); }

Timer::~Timer() { form_.Remove(*this); }

void Timer::SetEnabled(bool enabled) {
  if (args_.Enabled == enabled) return;
  args_.Enabled = enabled;
  if (peer_) peer_->Apply(Change::Timing);
}

void Timer::RaiseTick() {
  if (args_.Enabled && Tick && !form_.Unloaded()) Resume(Tick);
}

}  // namespace velmaro
