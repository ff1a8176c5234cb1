// Virtual times as the timeline and the player's messages show them: the
// clock a person reads, the same whatever the locale ("Mon 2025-03-03 09:30:01").
#pragma once

#include <string>

namespace scenario {

// "2025-03-03 09:30:01"
std::string ClockText(double date);
// "Mon 2025-03-03 09:30:01"
std::string DayClockText(double date);

}  // namespace scenario
