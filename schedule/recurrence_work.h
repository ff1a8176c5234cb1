// How much calendar work the recurrence engine does, made observable.
//
// Every listing walks a cursor over the calendar; each move of the cursor is
// one step. A walk over the longest a listing may cover (1000 years, day by
// day, plus the weekly skips) takes fewer than kMostStepsOfAValidWalk steps;
// a walk that would exceed kRecurrenceStepBudget is ended and logged, so no
// record, however it was damaged, can keep the client's UI thread busy.
// Tests and fuzz targets read the counter before and after a call.
#pragma once

#include <cstdint>

namespace qorvane {

// 1000 years of days (365,243) and of weeks (52,178), rounded up.
inline constexpr std::uint64_t kMostStepsOfAValidWalk = 420'000;
inline constexpr std::uint64_t kRecurrenceStepBudget = 1'000'000;

// The most occurrences a listing by count can hold: one a day for 1000 years,
// both ends included.
inline constexpr std::uint64_t kMostOccurrencesListed = 365'244;

// Steps the engine has taken in this process so far (it only grows).
std::uint64_t RecurrenceStepsTaken() noexcept;

}  // namespace qorvane
