// The sentence a user reads about a schedule, and the time format without
// seconds.
#include <gtest/gtest.h>

#include "schedule/m_locale.h"
#include "schedule/mail_props.h"
#include "tests/schedule/schedule_test_util.h"
#include "tests/support/test_env.h"

namespace qorvane {
namespace {

using testing::At;
using testing::Pattern;

struct DescCase {
  const char* name;
  Pattern pattern;
  const char* scheduleTime;
  bool recurring;
  bool noEnd;
  std::int32_t occurrences;
  bool calcLast;
  const char* expected;
};

class Description : public ::testing::TestWithParam<DescCase> {
 protected:
  testing::ScopedLocale locale_{"en-US"};
  testing::ScopedLogFolder log_;
};

TEST_P(Description, ReadsAsTheUserSeesIt) {
  const DescCase& c = GetParam();
  CMailProps r = testing::Record(c.pattern);
  r.m_IsRecurring = c.recurring;
  r.m_NoEndDate = c.noEnd;
  r.m_Occurrences = c.occurrences;
  r.m_ScheduleTime = At(c.scheduleTime);
  EXPECT_EQ(r.GetDescText(c.calcLast), c.expected);
}

const DescCase kDescriptions[] = {
    {"every_3_days", {.type = 0, .interval = 3}, "2025-03-03 09:30", true, true, 0, true,
     "Occurs every 3 day(s) effective 3/3/2025 9:30:00 AM"},
    {"every_weekday", {.type = 0, .interval = 0, .mask = 62}, "2025-03-03 09:30", true, true, 0, false,
     "Occurs every Weekday effective 3/3/2025 9:30:00 AM"},
    {"every_weekday_even_with_weekends", {.type = 0, .interval = 0, .mask = 65}, "2025-03-03 09:30", true, true, 0,
     false, "Occurs every Weekday effective 3/3/2025 9:30:00 AM"},
    {"daily_empty_mask", {.type = 0, .interval = 0, .mask = 0}, "2025-03-03 09:30", true, true, 0, false,
     "Occurs ERROR effective 3/3/2025 9:30:00 AM"},
    {"weekly_until_last", {.type = 1, .interval = 1, .mask = 34}, "2025-03-03 09:30", true, false, 10, true,
     "Occurs every 1 week(s) on monday And friday effective 3/3/2025 9:30:00 AM until 4/4/2025 9:30:00 AM"},
    {"weekly_three_days", {.type = 1, .interval = 2, .mask = 42}, "2025-03-03 09:30", true, true, 0, true,
     "Occurs every 2 week(s) on monday, wednesday And friday effective 3/3/2025 9:30:00 AM"},
    {"weekly_empty_mask", {.type = 1, .interval = 1, .mask = 0}, "2025-03-03 09:30", true, true, 0, false,
     "Occurs every 1 week(s) on  effective 3/3/2025 9:30:00 AM"},
    {"monthly_day", {.type = 2, .interval = 2, .dayOfMonth = 15}, "2025-03-15 09:30", true, true, 0, false,
     "Occurs day 15 of every 2 month(s) effective 3/15/2025 9:30:00 AM"},
    {"monthly_first_monday", {.type = 3, .interval = 1, .mask = 2, .instance = 1}, "2025-04-07 09:30", true, true, 0,
     false, "Occurs the first monday of every 1 month(s) effective 4/7/2025 9:30:00 AM"},
    {"yearly_day", {.type = 5, .dayOfMonth = 15, .month = 1}, "2026-01-15 09:30", true, true, 0, false,
     "Occurs every january 15 effective 1/15/2026 9:30:00 AM"},
    {"yearly_last_friday", {.type = 6, .mask = 32, .month = 12, .instance = 5}, "2025-12-26 09:30", true, true, 0, false,
     "Occurs the last friday of december effective 12/26/2025 9:30:00 AM"},
    {"type_4", {.type = 4}, "2025-03-03 09:30", true, false, 3, true, "Occurs ERROR effective 3/3/2025 9:30:00 AM until 12:00:00 AM"},
    {"one_time", {.type = 1, .interval = 1, .mask = 34}, "2025-03-03 09:30", false, false, 10, true, "none"},
    {"midnight_shows_the_date_alone", {.type = 0, .interval = 1}, "2025-03-03 00:00", true, true, 0, false,
     "Occurs every 1 day(s) effective 3/3/2025"},
    {"instance_outside_the_table", {.type = 3, .interval = 1, .mask = 2, .instance = 7}, "2025-03-03 09:30", true, true,
     0, false, ""},
    {"month_outside_the_table", {.type = 5, .dayOfMonth = 1, .month = 13}, "2025-03-03 09:30", true, true, 0, false, ""},
};

INSTANTIATE_TEST_SUITE_P(Schedule, Description, ::testing::ValuesIn(kDescriptions),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(DescriptionFailures, AreLoggedUnderTheirLabel) {
  testing::ScopedLocale locale("en-US");
  testing::ScopedLogFolder log;
  CMailProps r = testing::Record({.type = 6, .mask = 32, .month = 0, .instance = 5});
  EXPECT_EQ(r.GetDescText(false), "");
  EXPECT_TRUE(log.LogContains("Error(9) : CMailProps.GetDescText\tSubscript out of range"));
}

TEST(DescriptionLocale, DatesFollowTheLocaleWhileWordsStayEnglish) {
  testing::ScopedLocale locale("de-DE");
  CMailProps r = testing::Record({.type = 0, .interval = 3});
  r.m_ScheduleTime = At("2025-03-03 09:30");
  EXPECT_EQ(r.GetDescText(false), "Occurs every 3 day(s) effective 3.3.2025 09:30:00");
}

TEST(TimeFormat, DropsTheSeconds) {
  const struct {
    const char* locale;
    const char* expected;
  } cases[] = {{"en-US", "h:mm tt"}, {"en-GB", "HH:mm"}, {"de-DE", "HH:mm"}, {"fr-FR", "HH:mm"}};
  for (const auto& c : cases) {
    testing::ScopedLocale locale(c.locale);
    std::string fmt = "unchanged";
    EXPECT_TRUE(mLocale::GetTimeFormat(fmt));
    EXPECT_EQ(fmt, c.expected) << c.locale;
  }
}

}  // namespace
}  // namespace qorvane
