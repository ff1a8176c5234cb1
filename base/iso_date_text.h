// Date-times as "YYYY-MM-DD HH:MM" or "YYYY-MM-DD HH:MM:SS": text that does
// not depend on the locale, for the command-line tool's output and for the
// tests and benchmarks that compare listings line by line.
#pragma once

#include <string>

#include "base/ole_date.h"

namespace qorvane {

std::string IsoMinuteText(const CivilDate& date, const TimeOfDay& time);
std::string IsoSecondText(const CivilDate& date, const TimeOfDay& time);

// The OLE date-time rounded to the second first, as the runtime shows it; a
// time-only value shows the day 1899-12-30.
std::string IsoMinuteText(double date);
std::string IsoSecondText(double date);

}  // namespace qorvane
