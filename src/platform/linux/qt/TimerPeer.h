#pragma once

#include <QTimer>

#include "runtime/Timer.h"

namespace onlinux {

class TimerPeer : public velmaro::Peer {
 public:
  explicit TimerPeer(velmaro::Timer& timer) : timer_(timer) {
    QObject::connect(&native_, &QTimer::timeout, &native_, [this] { timer_.RaiseTick(); });
    Apply(velmaro::Change::Timing);
  }
  void Apply(velmaro::Change) override {
    if (timer_.Enabled() && timer_.Interval() > 0)
      native_.start(timer_.Interval());
    else
      native_.stop();
  }

 private:
  velmaro::Timer& timer_;
  QTimer native_;
};

}  // namespace onlinux
