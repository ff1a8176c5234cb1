// Calendar helpers against std::chrono's civil calendar, day by day over five
// centuries, plus the roll-over and clamping rules as case tables.
#include "base/ole_date.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>

#include "base/runtime_error.h"

namespace qorvane {
namespace {

using namespace std::chrono;

constexpr std::int64_t Serial(int y, unsigned m, unsigned d) {
  return sys_days{year{y} / month{m} / day{d}}.time_since_epoch().count() + kOleEpochOffset;
}

TEST(OleDateWalk, EveryDayFrom1900To2400MatchesChrono) {
  const sys_days first = sys_days{year{1900} / January / 1};
  const sys_days final_day = sys_days{year{2400} / December / 31};
  for (sys_days day = first; day <= final_day; day += days{1}) {
    const year_month_day ymd{day};
    const std::int64_t serial = day.time_since_epoch().count() + kOleEpochOffset;
    const double date = static_cast<double>(serial) + 0.75;
    const CivilDate civil = ToCivil(date);
    ASSERT_EQ(civil.year, static_cast<int>(ymd.year())) << serial;
    ASSERT_EQ(civil.month, static_cast<int>(static_cast<unsigned>(ymd.month()))) << serial;
    ASSERT_EQ(civil.day, static_cast<int>(static_cast<unsigned>(ymd.day()))) << serial;
    ASSERT_EQ(DateSerialRollOver(civil.year, civil.month, civil.day), static_cast<double>(serial));
    const unsigned last_day = static_cast<unsigned>(year_month_day_last{ymd.year() / ymd.month() / std::chrono::last}.day());
    ASSERT_EQ(DaysInMonth(date), static_cast<int>(last_day)) << serial;
    const int sunday0 = static_cast<int>(weekday{day}.c_encoding());
    for (int firstDay = 1; firstDay <= 7; ++firstDay)
      ASSERT_EQ(Weekday(date, firstDay), (sunday0 - (firstDay - 1) + 7) % 7 + 1) << serial << " " << firstDay;
  }
}

TEST(OleDateWalk, MonthAdditionClampsLikeChronoLastDay) {
  for (int y = 1900; y <= 2400; ++y) {
    for (unsigned m = 1; m <= 12; ++m) {
      for (unsigned d : {1u, 28u, 29u, 30u, 31u}) {
        const year_month_day start{year{y} / month{m} / day{d}};
        if (!start.ok()) continue;
        const double date = static_cast<double>(Serial(y, m, d)) + 0.5;
        for (int add : {1, -1, 13, 24}) {
          const year_month target_ym = year_month{year{y}, month{m}} + months{add};
          const unsigned target_last = static_cast<unsigned>(year_month_day_last{target_ym / std::chrono::last}.day());
          const year_month_day expected{target_ym / day{std::min(d, target_last)}};
          const double got = AddMonthsClamped(date, add);
          ASSERT_EQ(got, ComposeDate(sys_days{expected}.time_since_epoch().count() + kOleEpochOffset, 0.5))
              << y << "-" << m << "-" << d << " + " << add;
        }
      }
    }
  }
}

struct SerialCase {
  int year, month, day;
  int expected_y;
  unsigned expected_m, expected_d;
};

TEST(OleDate, DateSerialRollsOver) {
  const SerialCase cases[] = {
      {2025, 2, 31, 2025, 3, 3},  {2025, 3, 0, 2025, 2, 28},  {2024, 3, 0, 2024, 2, 29},
      {2025, 13, 1, 2026, 1, 1},  {2025, 0, 1, 2024, 12, 1},  {2025, -11, 1, 2024, 1, 1},
      {2025, 1, -30, 2024, 12, 1}, {2025, 12, 32, 2026, 1, 1}, {2025, 25, 400, 2028, 2, 4},
  };
  for (const auto& c : cases)
    EXPECT_EQ(DateSerialRollOver(c.year, c.month, c.day), static_cast<double>(Serial(c.expected_y, c.expected_m, c.expected_d)))
        << c.year << "-" << c.month << "-" << c.day;
}

TEST(OleDate, OutOfRangeYearsRaiseInvalidCall) {
  const auto raises5 = [](auto&& f) {
    try {
      f();
    } catch (const RuntimeError& e) {
      return e.Number() == err::kInvalidCall;
    }
    return false;
  };
  EXPECT_TRUE(raises5([] { DateSerialRollOver(10000, 1, 1); }));
  EXPECT_TRUE(raises5([] { DateSerialRollOver(99, 12, 31); }));
  EXPECT_TRUE(raises5([] { AddYearsClamped(DateSerialRollOver(9999, 6, 1), 1); }));
  EXPECT_FALSE(raises5([] { DateSerialRollOver(9999, 12, 31); }));
}

TEST(OleDate, KnownSerialsAndParts) {
  EXPECT_EQ(DateSerialRollOver(1899, 12, 30), 0.0);
  EXPECT_EQ(DateSerialRollOver(1900, 1, 1), 2.0);
  EXPECT_EQ(DateSerialRollOver(2025, 3, 3), 45719.0);
  // Negative dates carry their time away from zero.
  EXPECT_EQ(DatePart(-1.25), -1.0);
  EXPECT_EQ(TimePart(-1.25), 0.25);
  EXPECT_EQ(ToCivil(-1.25), (CivilDate{1899, 12, 29}));
  EXPECT_EQ(AddDays(-1.25, 2), 1.25);
  EXPECT_EQ(AddDays(45719.5, -3), 45716.5);
}

TEST(OleDate, TimeRoundsToTheNearestSecondAndCarriesIntoTheNextDay) {
  CivilDate civil;
  TimeOfDay time;
  SplitRounded(45719.0 + TimeSerial(9, 30, 0) + 0.4 / 86400.0, civil, time);
  EXPECT_EQ(time, (TimeOfDay{9, 30, 0}));
  SplitRounded(45719.0 + 86399.6 / 86400.0, civil, time);
  EXPECT_EQ(civil, (CivilDate{2025, 3, 4}));
  EXPECT_EQ(time, (TimeOfDay{0, 0, 0}));
}

TEST(OleDate, YearAdditionClampsLeapDay) {
  const double leap = DateSerialRollOver(2028, 2, 29) + TimeSerial(9, 30, 0);
  EXPECT_EQ(AddYearsClamped(leap, 1), DateSerialRollOver(2029, 2, 28) + TimeSerial(9, 30, 0));
  EXPECT_EQ(AddYearsClamped(leap, 4), leap + (DateSerialRollOver(2032, 2, 29) - DateSerialRollOver(2028, 2, 29)));
}

// What a damaged or crafted record can pass in: every int and every double.
// Out of the calendar is error 5 or no result, never an overflow.
TEST(OleDateExtremes, DateSerialRaisesForEveryMonthAndDayBeyondTheCalendar) {
  constexpr int kMin = std::numeric_limits<int>::min(), kMax = std::numeric_limits<int>::max();
  const struct {
    int year, month, day;
  } beyond[] = {{2025, kMin, 1}, {2025, kMax, 1}, {2025, 3, kMin}, {2025, 1, kMax}, {kMax, kMax, kMax},
                {kMin, kMin, kMin}, {kMax, 1, 1}, {9999, 12, 32}, {100, 1, 0}};
  for (const auto& c : beyond) {
    try {
      DateSerialRollOver(c.year, c.month, c.day);
      ADD_FAILURE() << c.year << "-" << c.month << "-" << c.day << " did not raise";
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.Number(), err::kInvalidCall);
    }
  }
  // A day far out may still roll a far year back into the calendar: 10000
  // Gregorian years are 25 cycles of 146097 days.
  EXPECT_EQ(DateSerialRollOver(12025, 1, 1 - 25 * 146097), static_cast<double>(Serial(2025, 1, 1)));
}

TEST(OleDateExtremes, MonthAdditionGivesNoResultOutsideTheCalendar) {
  const double date = static_cast<double>(Serial(2025, 3, 31)) + 0.5;
  EXPECT_EQ(AddMonthsClampedInCalendar(date, 1), static_cast<double>(Serial(2025, 4, 30)) + 0.5);
  for (const std::int64_t months : {std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min(),
                                    std::int64_t{1000000000}, std::int64_t{-24300}, std::int64_t{95700}})
    EXPECT_FALSE(AddMonthsClampedInCalendar(date, months).has_value()) << months;
  for (const double odd : {std::nan(""), 1e300, -1e300, static_cast<double>(kLastSerialDay + 1)})
    EXPECT_FALSE(AddMonthsClampedInCalendar(odd, 1).has_value()) << odd;
  EXPECT_THROW(AddMonthsClamped(date, std::numeric_limits<int>::max()), RuntimeError);
}

TEST(OleDateExtremes, DayCountsOfAnyDoubleStayInRange) {
  EXPECT_EQ(SerialDay(std::nan("")), 0);
  EXPECT_GT(SerialDay(1e300), std::int64_t{1} << 61);
  EXPECT_LT(SerialDay(-1e300), -(std::int64_t{1} << 61));
  EXPECT_EQ(SerialDay(-2.5), -2);
  EXPECT_GT(AddDays(45719.5, std::numeric_limits<std::int64_t>::max()), 1e18);
  EXPECT_LT(AddDays(45719.5, std::numeric_limits<std::int64_t>::min()), -1e18);
}

TEST(OleDateExtremes, TheCalendarRunsFromYear100ToYear9999) {
  const struct {
    double date;
    bool inside;
  } cases[] = {
      {static_cast<double>(kFirstSerialDay), true},          {static_cast<double>(kFirstSerialDay) - 0.75, true},
      {static_cast<double>(kFirstSerialDay - 1), false},     {static_cast<double>(kLastSerialDay) + 0.999, true},
      {static_cast<double>(kLastSerialDay + 1), false},      {std::nan(""), false},
      {std::numeric_limits<double>::infinity(), false},      {0.0, true},
  };
  for (const auto& c : cases) EXPECT_EQ(IsInCalendar(c.date), c.inside) << c.date;
  EXPECT_EQ(kFirstSerialDay, Serial(100, 1, 1));
  EXPECT_EQ(kLastSerialDay, Serial(9999, 12, 31));
}

TEST(OleDateExtremes, MonthLengthsOfAnyMonthNumberFollowItsPlaceInTheYear) {
  for (const int month : {0, -1, 13, 14, -11, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    const int place = ((month % 12) + 12 + 11) % 12 + 1;
    EXPECT_EQ(DaysInMonth(2023, month), DaysInMonth(2023, place)) << month;
  }
}

}  // namespace
}  // namespace qorvane
