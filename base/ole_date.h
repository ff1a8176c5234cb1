// Calendar arithmetic on the OLE Automation date: a double counting days since
// 1899-12-30, the fraction being the time of day (local time). This is the one
// place that knows how the runtime adds months, rolls days over and counts
// weekdays; everything else calls these functions and never does its own
// calendar arithmetic.
//
// Overflow policies are part of the names: DateSerialRollOver lets a day or
// month beyond its range roll into the next one, AddMonthsClamped and
// AddYearsClamped clamp the day to the target month's last day.
// Valid years are 100..9999 as for the runtime; leaving that range raises
// runtime error 5 (invalid procedure call). Every function takes whatever a
// damaged or crafted record holds (any int, any double) without overflowing.
#pragma once

#include <cstdint>
#include <optional>

namespace qorvane {

// Days between 1970-01-01 and 1899-12-30.
inline constexpr std::int64_t kOleEpochOffset = 25569;
// OLE serial days of the first and the last day of the runtime's calendar,
// 100-01-01 and 9999-12-31.
inline constexpr std::int64_t kFirstSerialDay = -657434;
inline constexpr std::int64_t kLastSerialDay = 2958465;

struct CivilDate {
  int year = 1899;
  int month = 12;  // 1..12
  int day = 30;    // 1..31
  friend bool operator==(const CivilDate&, const CivilDate&) = default;
};

struct TimeOfDay {
  int hour = 0;
  int minute = 0;
  int second = 0;
  friend bool operator==(const TimeOfDay&, const TimeOfDay&) = default;
};

// Proleptic Gregorian conversions between a civil date and a day count
// (days since 1970-01-01). Valid for any int year; no range check.
std::int64_t DaysFromCivil(int year, int month, int day) noexcept;
CivilDate CivilFromDays(std::int64_t days) noexcept;

// The whole-day part of an OLE date ("the date, time dropped") and the time of
// day as a non-negative fraction. Negative OLE dates count the fraction away
// from zero, as the runtime does; both helpers honour that.
double DatePart(double date) noexcept;
double TimePart(double date) noexcept;
// A whole day number (OLE serial) plus a time-of-day fraction.
double ComposeDate(std::int64_t serialDay, double timeFraction) noexcept;
// The day of a date; NaN counts as day 0 and days beyond +-2^62 are cut to
// that, so that no double, however damaged, converts out of range.
std::int64_t SerialDay(double date) noexcept;
// True for a date-time on a day of the runtime's calendar (years 100..9999);
// false for NaN, infinities and everything outside.
bool IsInCalendar(double date) noexcept;

CivilDate ToCivil(double date) noexcept;
int Year(double date) noexcept;
int Month(double date) noexcept;
int Day(double date) noexcept;
// Time of day rounded to the nearest second, as the runtime shows it.
TimeOfDay ToTimeOfDay(double date) noexcept;
// The date (possibly carried to the next day by rounding) plus the rounded
// time of day, for text output.
void SplitRounded(double date, CivilDate& civil, TimeOfDay& time) noexcept;

// Midnight of (year, month, day); a month outside 1..12 rolls the year, a day
// beyond the month's length rolls into the following months and day 0 is the
// last day of the month before. Raises error 5 outside years 100..9999.
double DateSerialRollOver(int year, int month, int day);
// Fraction for a time of day; hour, minute and second roll over like DateSerial.
double TimeSerial(int hour, int minute, int second) noexcept;

// Calendar addition keeping the time of day; the day is clamped to the target
// month's length (31 Jan + 1 month = 28/29 Feb, 29 Feb + 1 year = 28 Feb).
double AddMonthsClamped(double date, int months);
double AddYearsClamped(double date, int years);
// The same month addition, with no result (instead of error 5) when the date
// or the sum lies outside years 100..9999.
std::optional<double> AddMonthsClampedInCalendar(double date, std::int64_t months) noexcept;
double AddDays(double date, std::int64_t days) noexcept;

// Weekday 1..7 counted from firstDay (1 = Sunday .. 7 = Saturday).
int Weekday(double date, int firstDay = 1) noexcept;
// Weekday with Sunday = 0 .. Saturday = 6 of an OLE serial day.
int WeekdayIndexSunday0(std::int64_t serialDay) noexcept;

int DaysInMonth(int year, int month) noexcept;
int DaysInMonth(double date) noexcept;
bool IsLeapYear(int year) noexcept;

}  // namespace qorvane
