// The simulated client's clock: stands still until a test sets or advances
// it, so that a day of scheduling passes in a plain function call.
#pragma once

#include "platform/clock.h"

namespace sim {

class VirtualClock final : public qorvane::Clock {
 public:
  explicit VirtualClock(double now) { Set(now); }
  double Now() const override { return now_; }
  float SecondsSinceMidnight() const override;
  // Both keep whole seconds, as the system clock reports them.
  void Set(double now);
  void Advance(double days) { Set(now_ + days); }

 private:
  double now_ = 0.0;
};

}  // namespace sim
