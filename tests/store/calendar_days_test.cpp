// The month length and the weekday-of-the-month of every day of eight
// centuries, against std::chrono's calendar, plus the cases the recurrence
// dialog names.
#include <gtest/gtest.h>

#include <chrono>

#include "base/ole_date.h"
#include "store/calendar_days.h"
#include "tests/schedule/schedule_test_util.h"

namespace qorvane {
namespace {

using namespace std::chrono;

TEST(CalendarDays, EveryDayFrom1600To2400) {
  const sys_days first = sys_days{year{1600} / January / 1};
  const sys_days last = sys_days{year{2400} / December / 31};
  for (sys_days day = first; day <= last; day += days{1}) {
    const year_month_day ymd{day};
    const year_month_weekday ymw{day};
    const bool lastOfItsWeekday = sys_days{ymd.year() / ymd.month() / weekday_last{ymw.weekday()}} == day;
    // Any time of that day; negative dates count their time away from zero.
    const std::int64_t serial = day.time_since_epoch().count() + kOleEpochOffset;
    const double date = ComposeDate(serial, 0.6);
    const auto monthLength = static_cast<unsigned>(year_month_day_last{ymd.year() / ymd.month() / std::chrono::last}.day());
    ASSERT_EQ(Main::DaysInMonth(date), static_cast<std::int32_t>(monthLength)) << serial;
    ASSERT_EQ(Main::WeekOfMonth(date), lastOfItsWeekday ? 5 : static_cast<std::int32_t>(ymw.index())) << serial;
  }
}

TEST(CalendarDays, NamedCases) {
  const struct {
    const char* date;
    std::int32_t daysInMonth, weekOfMonth;
  } cases[] = {
      {"2025-03-29", 31, 5},  // the 29th of a 31-day month
      {"2025-03-08", 31, 2},
      {"2025-03-24", 31, 4},  // a fourth Monday with a fifth to come
      {"2025-03-25", 31, 5},  // the fourth Tuesday is the last
      {"2025-02-22", 28, 5},  // any fourth weekday of a 28-day February
      {"2024-02-22", 29, 4},  // but 29 February 2024 is a Thursday too
      {"2024-02-29", 29, 5},
      {"2025-04-01", 30, 1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Main::DaysInMonth(testing::At(c.date)), c.daysInMonth) << c.date;
    EXPECT_EQ(Main::WeekOfMonth(testing::At(c.date)), c.weekOfMonth) << c.date;
  }
}

}  // namespace
}  // namespace qorvane
