#pragma once

#include <functional>
#include <memory>

#include "runtime/Peers.h"

namespace velmaro {

class Form;

// How a timer is made; the interval is in milliseconds.
struct TimerArgs {
  int Interval = 0;
  bool Enabled = true;
};

// Raises its event again and again while it is enabled and its form has peers.
class Timer {
 public:
  Timer(Form& form, TimerArgs args);
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  ~Timer();

  // The interval has passed. A tick that is late is not made up for.
  std::function<void()> Tick;

  Form& Owner() const { return form_; }
  int Interval() const { return args_.Interval; }
  bool Enabled() const { return args_.Enabled; }
  void SetEnabled(bool enabled);

  // For the form: makes and drops the native side.
  void CreatePeer() { peer_ = MakePeer(*this); }
  void DropPeer() { peer_.reset(); }
  // For peers: raises the event, if the timer is enabled.
  void RaiseTick();

 private:
  Form& form_;
  TimerArgs args_;
  std::unique_ptr<Peer> peer_;
};

}  // namespace velmaro
