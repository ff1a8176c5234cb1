// Calendar arithmetic on OLE dates. Civil conversions use Howard Hinnant's
// days_from_civil / civil_from_days algorithms: exact for the proleptic
// Gregorian calendar and branch-light, which matters because the recurrence
// walks call them for every day they test.
#include "base/ole_date.h"

#include <cmath>

#include "base/runtime_error.h"

namespace qorvane {
namespace {

constexpr int kMinYear = 100;
constexpr int kMaxYear = 9999;
// An int count of days spans fewer years than this, so a year further out
// than this from the calendar can never be rolled back into it.
constexpr std::int64_t kYearsAnIntOfDaysSpans = 6'000'000;
// Beyond this a double has no fraction left and the day count stops.
constexpr double kSerialDayLimit = 4.6e18;

void CheckSerialDay(std::int64_t serial) {
  if (serial < kFirstSerialDay || serial > kLastSerialDay) Raise(err::kInvalidCall);
}

}  // namespace

std::int64_t DaysFromCivil(int year, int month, int day) noexcept {
  const std::int64_t y = static_cast<std::int64_t>(year) - (month <= 2 ? 1 : 0);
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const std::int64_t yoe = y - era * 400;
  const std::int64_t mp = (month + 9) % 12;
  const std::int64_t doy = (153 * mp + 2) / 5 + day - 1;
  const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

CivilDate CivilFromDays(std::int64_t days) noexcept {
  days += 719468;
  const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  const std::int64_t doe = days - era * 146097;
  const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const std::int64_t mp = (5 * doy + 2) / 153;
  const int day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  const int month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  const int year = static_cast<int>(yoe + era * 400 + (month <= 2 ? 1 : 0));
  return {year, month, day};
}

// Negative OLE dates are "days before, plus a positive time": -1.25 is
// 1899-12-29 06:00. Truncation towards zero gives the day for both signs.
double DatePart(double date) noexcept { return std::trunc(date); }
double TimePart(double date) noexcept { return std::fabs(date - std::trunc(date)); }

std::int64_t SerialDay(double date) noexcept {
  if (!(date > -kSerialDayLimit)) return date != date ? 0 : static_cast<std::int64_t>(-kSerialDayLimit);
  if (!(date < kSerialDayLimit)) return static_cast<std::int64_t>(kSerialDayLimit);
  return static_cast<std::int64_t>(std::trunc(date));
}

bool IsInCalendar(double date) noexcept {
  // Negative dates keep their day in the whole part, so the bounds are open
  // at the day before the first and the day after the last.
  return date > static_cast<double>(kFirstSerialDay - 1) && date < static_cast<double>(kLastSerialDay + 1);
}

double ComposeDate(std::int64_t serialDay, double timeFraction) noexcept {
  const double day = static_cast<double>(serialDay);
  return serialDay >= 0 ? day + timeFraction : day - timeFraction;
}

CivilDate ToCivil(double date) noexcept { return CivilFromDays(SerialDay(date) - kOleEpochOffset); }
int Year(double date) noexcept { return ToCivil(date).year; }
int Month(double date) noexcept { return ToCivil(date).month; }
int Day(double date) noexcept { return ToCivil(date).day; }

void SplitRounded(double date, CivilDate& civil, TimeOfDay& time) noexcept {
  std::int64_t day = SerialDay(date);
  auto seconds = static_cast<std::int64_t>(std::llround(TimePart(date) * 86400.0));
  if (seconds >= 86400) {
    seconds -= 86400;
    day += date >= 0 ? 1 : -1;
  }
  civil = CivilFromDays(day - kOleEpochOffset);
  time = {static_cast<int>(seconds / 3600), static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60)};
}

TimeOfDay ToTimeOfDay(double date) noexcept {
  CivilDate civil;
  TimeOfDay time;
  SplitRounded(date, civil, time);
  return time;
}

double DateSerialRollOver(int year, int month, int day) {
  // Months roll the year first, then the day rolls from the first of that
  // month. Wide arithmetic: an extreme month or day raises, never overflows.
  const std::int64_t monthIndex = std::int64_t{month} - 1;
  const std::int64_t yearCarry = monthIndex >= 0 ? monthIndex / 12 : -((11 - monthIndex) / 12);
  const std::int64_t normalizedYear = year + yearCarry;
  if (normalizedYear < kMinYear - kYearsAnIntOfDaysSpans || normalizedYear > kMaxYear + kYearsAnIntOfDaysSpans)
    Raise(err::kInvalidCall);
  const int normalizedMonth = static_cast<int>(monthIndex - yearCarry * 12 + 1);
  const std::int64_t serial = DaysFromCivil(static_cast<int>(normalizedYear), normalizedMonth, 1) + kOleEpochOffset +
                              (std::int64_t{day} - 1);
  CheckSerialDay(serial);
  return static_cast<double>(serial);
}

double TimeSerial(int hour, int minute, int second) noexcept {
  const std::int64_t seconds = static_cast<std::int64_t>(hour) * 3600 + minute * 60 + second;
  return static_cast<double>(seconds) / 86400.0;
}

std::optional<double> AddMonthsClampedInCalendar(double date, std::int64_t months) noexcept {
  if (!IsInCalendar(date)) return std::nullopt;
  // Any int64 beyond this leaves the calendar anyway; the cut keeps the sum
  // below from overflowing.
  constexpr std::int64_t kMonthsBeyondTheCalendar = std::int64_t{kMaxYear} * 12 + 12;
  if (months > kMonthsBeyondTheCalendar || months < -kMonthsBeyondTheCalendar) return std::nullopt;
  const CivilDate civil = ToCivil(date);
  const std::int64_t monthIndex = static_cast<std::int64_t>(civil.year) * 12 + (civil.month - 1) + months;
  const std::int64_t year = monthIndex >= 0 ? monthIndex / 12 : (monthIndex - 11) / 12;
  const int month = static_cast<int>(monthIndex - year * 12) + 1;
  if (year < kMinYear || year > kMaxYear) return std::nullopt;
  const int lastDay = DaysInMonth(static_cast<int>(year), month);
  const int day = civil.day < lastDay ? civil.day : lastDay;
  const std::int64_t serial = DaysFromCivil(static_cast<int>(year), month, day) + kOleEpochOffset;
  return ComposeDate(serial, TimePart(date));
}

double AddMonthsClamped(double date, int months) {
  const std::optional<double> sum = AddMonthsClampedInCalendar(date, months);
  if (!sum) Raise(err::kInvalidCall);
  return *sum;
}

double AddYearsClamped(double date, int years) {
  if (years > 10000 || years < -10000) Raise(err::kInvalidCall);
  return AddMonthsClamped(date, years * 12);
}

double AddDays(double date, std::int64_t days) noexcept {
  // Cut so that the sum cannot overflow; such a day is far outside the
  // calendar either way.
  constexpr std::int64_t kLimit = std::int64_t{1} << 61;
  if (days > kLimit) days = kLimit;
  if (days < -kLimit) days = -kLimit;
  return ComposeDate(SerialDay(date) + days, TimePart(date));
}

int WeekdayIndexSunday0(std::int64_t serialDay) noexcept {
  // Serial day 1 (1899-12-31) was a Sunday.
  const std::int64_t r = (serialDay - 1) % 7;
  return static_cast<int>(r < 0 ? r + 7 : r);
}

int Weekday(double date, int firstDay) noexcept {
  if (firstDay < 1 || firstDay > 7) firstDay = 1;
  const int sunday0 = WeekdayIndexSunday0(SerialDay(date));
  return (sunday0 - (firstDay - 1) + 7) % 7 + 1;
}

bool IsLeapYear(int year) noexcept { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int year, int month) noexcept {
  static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month == 2 && IsLeapYear(year)) return 29;
  return kDays[(month % 12 + 11) % 12];  // any int month, as its place in the year
}

int DaysInMonth(double date) noexcept {
  const CivilDate civil = ToCivil(date);
  return DaysInMonth(civil.year, civil.month);
}

}  // namespace qorvane
