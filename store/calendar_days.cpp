// Main: the length of a date's month and its weekday's place in it.
#include "store/calendar_days.h"

#include "base/ole_date.h"

namespace Main {

std::int32_t DaysInMonth(double date) { return qorvane::DaysInMonth(date); }

std::int32_t WeekOfMonth(double date) {
  const std::int32_t day = qorvane::Day(date);
  if (day + 7 > DaysInMonth(date)) return 5;
  return (day - 1) / 7 + 1;
}

}  // namespace Main
