#pragma once

#include <cstdint>
#include <functional>

#include "runtime/Control.h"

namespace velmaro {

// The steps of a scroll bar: one press on an arrow, one press beside the thumb.
struct ScrollArgs {
  std::int16_t SmallChange = 1;
  std::int16_t LargeChange = 10;
};

// A horizontal scroll bar that begins at 0. Max and Value are set one by one: a Max below the Value leaves the Value.
class HScrollBar : public Control {
 public:
  HScrollBar(Container container, ControlArgs args, ScrollArgs steps = {})
      : Control(container, std::move(args)), steps_(steps) {}

  // The Value changed, by the user or by the program.
  std::function<void()> Change;

  std::int16_t Max() const { return max_; }
  std::int16_t Value() const { return value_; }
  std::int16_t SmallChange() const { return steps_.SmallChange; }
  std::int16_t LargeChange() const { return steps_.LargeChange; }
  // Sets the upper limit. Throws RuntimeError for a number that 16 bits don't hold or one below 0.
  void SetMax(std::int64_t max);
  // Sets the position and raises Change where it differs. Throws RuntimeError outside of 0 to Max.
  void SetValue(int value);

 protected:
  std::unique_ptr<velmaro::Peer> NewPeer() override { return MakePeer(*this); }

 private:
  ScrollArgs steps_;
  std::int16_t max_ = 0;
  std::int16_t value_ = 0;
};

}  // namespace velmaro
