// Main: two calendar questions the recurrence dialog asks about a date: how
// long its month is, and which of its weekdays of the month it is ("the
// second Tuesday", "the last Friday").
#pragma once

#include <cstdint>

namespace Main {

// The day number of the last day of date's month (28..31).
std::int32_t DaysInMonth(double date);

// Which occurrence of its weekday the date is within its month: 1 to 4, or 5
// ("last") when no later day of the month has the same weekday; so the 29th
// of a 31-day month is 5, and so is the 22nd of a 28-day February.
std::int32_t WeekOfMonth(double date);

}  // namespace Main
