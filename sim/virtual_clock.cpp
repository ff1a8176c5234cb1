// The virtual clock.
#include "sim/virtual_clock.h"

#include <cmath>

#include "base/ole_date.h"

namespace sim {

float VirtualClock::SecondsSinceMidnight() const { return static_cast<float>(qorvane::TimePart(now_) * 86400.0); }

void VirtualClock::Set(double now) { now_ = std::round(now * 86400.0) / 86400.0; }

}  // namespace sim
