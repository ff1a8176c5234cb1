// Virtual times as text.
#include "scenario/clock_text.h"

#include <cmath>
#include <cstdio>

#include "base/ole_date.h"

namespace scenario {

std::string ClockText(double date) {
  // Rounded to the second first, as the client shows times.
  const double seconds = std::round(date * 86400.0);
  const qorvane::CivilDate day = qorvane::ToCivil(std::floor(seconds / 86400.0));
  const int ofDay = static_cast<int>(seconds - std::floor(seconds / 86400.0) * 86400.0) % 86400;
  char text[48];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", day.year % 10000, day.month % 100, day.day % 100,
                ofDay / 3600, ofDay / 60 % 60, ofDay % 60);
  return text;
}

std::string DayClockText(double date) {
  static const char* const kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  const double day = std::floor(std::round(date * 86400.0) / 86400.0);
  return std::string(kDays[qorvane::Weekday(day) - 1]) + " " + ClockText(date);
}

}  // namespace scenario
