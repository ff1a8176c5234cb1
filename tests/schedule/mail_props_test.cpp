// Defaults, comparison and copy of the schedule record.
#include <gtest/gtest.h>

#include "schedule/mail_props.h"
#include "tests/schedule/schedule_test_util.h"
#include "tests/support/test_env.h"

namespace qorvane {
namespace {

using testing::At;
using testing::Text;

TEST(Init, MovesToTheNextHalfHourMarkAfterTheNextWholeMinute) {
  const struct {
    const char* now;
    int seconds;
    const char* expected;
  } cases[] = {
      {"2025-03-03 10:00", 0, "2025-03-03 10:30"}, {"2025-03-03 10:29", 30, "2025-03-03 11:00"},
      {"2025-03-03 10:44", 10, "2025-03-03 11:00"}, {"2025-03-03 10:29", 0, "2025-03-03 11:00"},
      {"2025-03-03 10:28", 59, "2025-03-03 10:30"}, {"2025-03-03 10:30", 0, "2025-03-03 11:00"},
      {"2025-03-03 10:59", 59, "2025-03-03 11:30"}, {"2025-03-03 23:45", 0, "2025-03-04 00:00"},
      {"2025-03-03 23:59", 59, "2025-03-04 00:30"}, {"2024-12-31 23:30", 0, "2025-01-01 00:00"},
  };
  for (const auto& c : cases) {
    testing::ScopedClock clock(At(c.now) + TimeSerial(0, 0, c.seconds));
    CMailProps r;
    r.m_IsRecurring = true;
    r.m_Interval = 4;
    r.m_collAttachments = {"x"};
    r.Init();
    EXPECT_EQ(Text(r.m_ScheduleTime), c.expected) << c.now << ":" << c.seconds;
    EXPECT_EQ(r.m_ScheduleTime, At(c.expected)) << "a whole minute, no stray seconds";
    EXPECT_FALSE(r.m_IsRecurring);
    EXPECT_TRUE(r.m_collAttachments.empty());
    EXPECT_EQ(r.m_Interval, 4) << "Init leaves the pattern alone";
  }
}

struct EqualCase {
  const char* name;
  void (*change)(CMailProps&);
  bool equal;
};

class Equality : public ::testing::TestWithParam<EqualCase> {};

TEST_P(Equality, ComparesOnlyWhatTheScheduleUses) {
  const EqualCase& c = GetParam();
  testing::ScopedLogFolder log;
  CMailProps a = testing::Record({.type = 1, .interval = 1, .mask = 34});
  a.m_ScheduleTime = At("2025-03-03 09:30");
  CMailProps b = a;
  c.change(b);
  EXPECT_EQ(a.Equal(b), c.equal);
  EXPECT_EQ(b.Equal(a), c.equal);
}

const EqualCase kEqualCases[] = {
    {"same", [](CMailProps&) {}, true},
    {"attachments", [](CMailProps& r) { r.m_collAttachments = {"a"}; }, true},
    {"unused_day_of_month", [](CMailProps& r) { r.m_DayOfMonth = 9; }, true},
    {"unused_instance", [](CMailProps& r) { r.m_Instance = 3; }, true},
    {"schedule_time", [](CMailProps& r) { r.m_ScheduleTime += 1; }, false},
    {"recurring", [](CMailProps& r) { r.m_IsRecurring = false; }, false},
    {"mask", [](CMailProps& r) { r.m_DayOfWeekMask = 2; }, false},
    {"interval", [](CMailProps& r) { r.m_Interval = 2; }, false},
    {"start_time", [](CMailProps& r) { r.m_StartTime += 0.01; }, false},
    {"pattern_end", [](CMailProps& r) { r.m_PatternEndDate = 1; }, false},
    {"occurrences", [](CMailProps& r) { r.m_Occurrences = 3; }, false},
    {"no_end", [](CMailProps& r) { r.m_NoEndDate = false; }, false},
    {"type", [](CMailProps& r) { r.m_RecurrenceType = 0; }, false},
};

INSTANTIATE_TEST_SUITE_P(Schedule, Equality, ::testing::ValuesIn(kEqualCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(Equality, FieldsCountPerType) {
  const struct {
    std::int32_t type;
    std::int32_t CMailProps::*field;
    bool counts;
  } cases[] = {
      {0, &CMailProps::m_DayOfWeekMask, true}, {0, &CMailProps::m_MonthOfYear, false},
      {2, &CMailProps::m_DayOfMonth, true},    {2, &CMailProps::m_DayOfWeekMask, false},
      {3, &CMailProps::m_Instance, true},      {3, &CMailProps::m_DayOfMonth, false},
      {5, &CMailProps::m_MonthOfYear, true},   {5, &CMailProps::m_Interval, false},
      {6, &CMailProps::m_DayOfWeekMask, true}, {6, &CMailProps::m_Interval, false},
  };
  for (const auto& c : cases) {
    CMailProps a = testing::Record({.type = c.type});
    CMailProps b = a;
    b.*c.field += 1;
    EXPECT_EQ(a.Equal(b), !c.counts) << "type " << c.type;
  }
}

TEST(Equality, OneTimeRecordsCompareOnlyTheirTime) {
  CMailProps a = testing::Record({.type = 1, .mask = 2});
  CMailProps b = testing::Record({.type = 5, .mask = 9});
  a.m_IsRecurring = b.m_IsRecurring = false;
  EXPECT_TRUE(a.Equal(b));
}

TEST(Equality, AnInvalidTypeIsADifferenceAndAWarning) {
  testing::ScopedLocale locale("en-US");
  testing::ScopedLogFolder log;
  CMailProps a = testing::Record({.type = 4});
  EXPECT_FALSE(a.Equal(a));
  EXPECT_TRUE(log.LogContains("Warning : CMailProps.Equal\tm_RecurrenceType is bad"));
}

TEST(CopyRecord, CopiesEverythingButTheAttachmentsIntoTheTarget) {
  CMailProps source = testing::Record({.type = 6, .interval = 3, .mask = 8, .dayOfMonth = 4, .month = 7, .instance = 2});
  source.m_ScheduleTime = At("2025-07-09 09:30");
  source.m_Occurrences = 5;
  source.m_NoEndDate = false;
  source.m_PatternEndDate = At("2030-01-01");
  source.m_collAttachments = {"source"};
  CMailProps target;
  target.m_collAttachments = {"target"};
  source.Copy(target);
  EXPECT_TRUE(target.Equal(source));
  EXPECT_EQ(target.m_Interval, 3);
  EXPECT_EQ(target.m_DayOfMonth, 4);
  EXPECT_EQ(target.m_collAttachments, AttachmentList{"target"});
}

}  // namespace
}  // namespace qorvane
