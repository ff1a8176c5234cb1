// The simulated client's own calendar: the occurrences of a recurring
// appointment, worked out directly from the pattern's fields so that the
// add-in's recurrence engine can be checked against an independent answer.
//
// Types: 0 daily (every Interval days, or every day in DayOfWeekMask when a
// mask is set), 1 weekly (the mask's days every Interval weeks, weeks
// starting on Sunday, counted from the week of PatternStartDate), 2 monthly
// on DayOfMonth (clamped to the month's last day), 3 monthly on the
// Instance-th day of the mask (5 = the last), 5 yearly on DayOfMonth of
// MonthOfYear (clamped), 6 yearly on the Instance-th day of the mask in
// MonthOfYear. Months and years are counted from PatternStartDate's; nothing
// comes before PatternStartDate. The series ends after Occurrences, after
// PatternEndDate's day, or not at all, and never runs past `cap` items.
#pragma once

#include <cstddef>
#include <vector>

#include "sim/item_data.h"

namespace sim {

inline constexpr std::size_t kMaxOccurrences = 1000;

// Start date-times: each occurrence's day plus the time of day of `start`.
std::vector<double> ExpandOccurrences(const PatternData& pattern, double start,
                                      std::size_t cap = kMaxOccurrences);

}  // namespace sim
