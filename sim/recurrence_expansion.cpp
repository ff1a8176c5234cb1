// Expanding recurrence patterns into occurrence dates.
#include "sim/recurrence_expansion.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "base/ole_date.h"

namespace sim {
namespace {

using qorvane::kOleEpochOffset;

std::int64_t Serial(int year, int month, int day) {
  return qorvane::DaysFromCivil(year, month, day) + kOleEpochOffset;
}

int WeekdaySunday0(std::int64_t serial) { return qorvane::WeekdayIndexSunday0(serial); }

bool InMask(long mask, std::int64_t serial) { return (mask >> WeekdaySunday0(serial)) & 1; }

// The instance-th day of the month matching the mask, 5 meaning the last.
std::optional<std::int64_t> NthMatchingDay(int year, int month, long instance, long mask) {
  const int days = qorvane::DaysInMonth(year, month);
  if (instance == 5) {
    for (int day = days; day >= 1; --day) {
      if (InMask(mask, Serial(year, month, day))) return Serial(year, month, day);
    }
    return std::nullopt;
  }
  long seen = 0;
  for (int day = 1; day <= days; ++day) {
    if (InMask(mask, Serial(year, month, day)) && ++seen == instance) return Serial(year, month, day);
  }
  return std::nullopt;
}

std::int64_t ClampedDay(int year, int month, long day) {
  return Serial(year, month, static_cast<int>(std::min<long>(day, qorvane::DaysInMonth(year, month))));
}

class Collector {
 public:
  Collector(const PatternData& pattern, double start, std::size_t cap)
      : first_(qorvane::SerialDay(pattern.patternStartDate)), time_(qorvane::TimePart(start)) {
    limit_ = cap;
    if (pattern.end == PatternData::End::Count)
      limit_ = std::min<std::size_t>(cap, std::max<long>(0, pattern.occurrences));
    if (pattern.end == PatternData::End::Date) lastDay_ = qorvane::SerialDay(pattern.patternEndDate);
  }

  // False once the series is complete: no later candidate can be taken.
  bool Offer(std::int64_t serial) {
    if (serial < first_) return true;
    if (serial > lastDay_ || dates_.size() >= limit_) return false;
    dates_.push_back(qorvane::ComposeDate(serial, time_));
    return dates_.size() < limit_;
  }
  // Candidates beyond the calendar's last year end the series too.
  bool Open(int year) const { return year <= 9999 && dates_.size() < limit_; }

  std::int64_t First() const { return first_; }
  std::vector<double> Take() { return std::move(dates_); }

 private:
  std::int64_t first_;
  double time_;
  std::size_t limit_ = 0;
  std::int64_t lastDay_ = INT64_MAX;
  std::vector<double> dates_;
};

void Daily(const PatternData& p, Collector& out) {
  const long mask = p.dayOfWeekMask & 127;
  const long step = mask != 0 ? 1 : p.interval;
  if (step < 1) return;
  for (std::int64_t day = out.First(); out.Open(qorvane::CivilFromDays(day - kOleEpochOffset).year); day += step) {
    if ((mask == 0 || InMask(mask, day)) && !out.Offer(day)) return;
  }
}

void Weekly(const PatternData& p, Collector& out) {
  const long mask = p.dayOfWeekMask & 127;
  if (p.interval < 1 || mask == 0) return;
  for (std::int64_t sunday = out.First() - WeekdaySunday0(out.First());
       out.Open(qorvane::CivilFromDays(sunday - kOleEpochOffset).year); sunday += 7 * p.interval) {
    for (int weekday = 0; weekday < 7; ++weekday) {
      if (((mask >> weekday) & 1) && !out.Offer(sunday + weekday)) return;
    }
  }
}

// Walks every `step` months from the pattern start's month.
template <class DayOf>
void Monthly(long step, Collector& out, DayOf dayOf) {
  if (step < 1) return;
  const qorvane::CivilDate first = qorvane::CivilFromDays(out.First() - kOleEpochOffset);
  for (long index = (first.year * 12L) + (first.month - 1); out.Open(static_cast<int>(index / 12)); index += step) {
    const auto day = dayOf(static_cast<int>(index / 12), static_cast<int>(index % 12) + 1);
    if (day && !out.Offer(*day)) return;
  }
}

// Walks every `step` years from the pattern start's year.
template <class DayOf>
void Yearly(long step, Collector& out, DayOf dayOf) {
  const int firstYear = qorvane::CivilFromDays(out.First() - kOleEpochOffset).year;
  for (long year = firstYear; out.Open(static_cast<int>(year)); year += step) {
    const auto day = dayOf(static_cast<int>(year));
    if (day && !out.Offer(*day)) return;
  }
}

bool ValidNth(const PatternData& p) { return p.instance >= 1 && p.instance <= 5 && (p.dayOfWeekMask & 127) != 0; }

}  // namespace

std::vector<double> ExpandOccurrences(const PatternData& p, double start, std::size_t cap) {
  Collector out(p, start, cap);
  const long mask = p.dayOfWeekMask & 127;
  switch (p.recurrenceType) {
    case 0: Daily(p, out); break;
    case 1: Weekly(p, out); break;
    case 2:
      if (p.dayOfMonth >= 1)
        Monthly(p.interval, out, [&](int y, int m) { return std::optional(ClampedDay(y, m, p.dayOfMonth)); });
      break;
    case 3:
      if (ValidNth(p)) Monthly(p.interval, out, [&](int y, int m) { return NthMatchingDay(y, m, p.instance, mask); });
      break;
    case 5:
      if (p.dayOfMonth >= 1 && p.monthOfYear >= 1 && p.monthOfYear <= 12)
        Yearly(std::max(1L, p.interval), out,
               [&](int y) { return std::optional(ClampedDay(y, static_cast<int>(p.monthOfYear), p.dayOfMonth)); });
      break;
    case 6:
      if (ValidNth(p) && p.monthOfYear >= 1 && p.monthOfYear <= 12)
        Yearly(std::max(1L, p.interval), out,
               [&](int y) { return NthMatchingDay(y, static_cast<int>(p.monthOfYear), p.instance, mask); });
      break;
    default: break;
  }
  return out.Take();
}

}  // namespace sim
