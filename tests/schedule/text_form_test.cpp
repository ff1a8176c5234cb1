// The one-line text form: the worked example byte for byte, round trips under
// several locales, and what a failed read leaves behind.
#include <gtest/gtest.h>

#include "schedule/mail_props.h"
#include "tests/schedule/schedule_test_util.h"
#include "tests/support/test_env.h"

namespace qorvane {
namespace {

using testing::At;
using testing::ScopedLocale;
using testing::ScopedLogFolder;

CMailProps WorkedExample() {
  CMailProps r = testing::Record({.type = 1, .interval = 1, .mask = 34});
  r.m_Occurrences = 10;
  r.m_NoEndDate = false;
  r.m_collAttachments = {"C:\\Reports\\summary.pdf", "C:\\Reports\\Weekly\\"};
  return r;
}

constexpr const char* kWorkedLine =
    "1;1;0;0;0;34;1;10;0;C:\\Reports\\summary.pdf;C:\\Reports\\Weekly\\;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM";

TEST(TextForm, WritesTheWorkedExampleByteForByte) {
  ScopedLocale locale("en-US");
  EXPECT_EQ(WorkedExample().WriteToString(), kWorkedLine);
}

void ExpectSameRecord(const CMailProps& a, const CMailProps& b) {
  EXPECT_EQ(a.m_IsRecurring, b.m_IsRecurring);
  EXPECT_EQ(a.m_RecurrenceType, b.m_RecurrenceType);
  EXPECT_EQ(a.m_DayOfMonth, b.m_DayOfMonth);
  EXPECT_EQ(a.m_MonthOfYear, b.m_MonthOfYear);
  EXPECT_EQ(a.m_Instance, b.m_Instance);
  EXPECT_EQ(a.m_DayOfWeekMask, b.m_DayOfWeekMask);
  EXPECT_EQ(a.m_Interval, b.m_Interval);
  EXPECT_EQ(a.m_Occurrences, b.m_Occurrences);
  EXPECT_EQ(a.m_NoEndDate, b.m_NoEndDate);
  EXPECT_EQ(a.m_collAttachments, b.m_collAttachments);
  EXPECT_NEAR(a.m_StartTime, b.m_StartTime, 1e-9);
  EXPECT_EQ(a.m_PatternStartDate, b.m_PatternStartDate);
  EXPECT_NEAR(a.m_PatternEndDate, b.m_PatternEndDate, 1e-9);
}

class RoundTrip : public ::testing::TestWithParam<const char*> {};

TEST_P(RoundTrip, RecordToLineToRecordKeepsEveryField) {
  ScopedLocale locale(GetParam());
  ASSERT_TRUE(locale.ok());
  std::vector<CMailProps> records;
  records.push_back(WorkedExample());
  CMailProps noAttachments = testing::Record({.type = 6, .mask = 4, .month = 3, .instance = 2, .start = "2031-12-31",
                                              .time = "23:59"});
  noAttachments.m_PatternEndDate = At("2032-06-30");
  records.push_back(noAttachments);
  CMailProps midnight = testing::Record({.type = 0, .interval = -3, .start = "1900-01-01", .time = "00:00"});
  midnight.m_Occurrences = -7;
  midnight.m_collAttachments = {"/home/u/report.txt", "/home/u/weekly/", "C:\\x y\\"};
  records.push_back(midnight);
  CMailProps oneTime;
  oneTime.m_collAttachments = {"C:\\a.txt"};
  records.push_back(oneTime);
  CMailProps noon = testing::Record({.type = 2, .interval = 12, .dayOfMonth = 31, .start = "2399-12-31", .time = "12:00"});
  noon.m_PatternEndDate = At("2400-02-29 13:45");
  records.push_back(noon);

  for (CMailProps& original : records) {
    const std::string line = original.WriteToString();
    CMailProps read;
    read.ReadFromString(line);
    SCOPED_TRACE(line);
    ExpectSameRecord(read, original);
    EXPECT_EQ(read.WriteToString(), line);
  }
}

INSTANTIATE_TEST_SUITE_P(Locales, RoundTrip, ::testing::Values("en-US", "en-GB", "de-DE", "fr-FR"),
                         [](const auto& info) {
                           std::string name = info.param;
                           name[2] = '_';
                           return name;
                         });

TEST(TextForm, ALineWithoutAttachmentsHasNineFieldsAndReadsAnEmptyList) {
  ScopedLocale locale("en-US");
  CMailProps r = WorkedExample();
  r.m_collAttachments.clear();
  const std::string line = r.WriteToString();
  EXPECT_EQ(line.substr(0, line.find('#')), "1;1;0;0;0;34;1;10;0;");
  CMailProps read;
  read.m_collAttachments = {"stale"};
  read.ReadFromString(line);
  EXPECT_TRUE(read.m_collAttachments.empty());
}

TEST(TextForm, SeparatorsInsidePathsAreNotEscaped) {
  ScopedLocale locale("en-US");
  CMailProps r = WorkedExample();
  r.m_collAttachments = {"C:\\a;b.txt"};
  CMailProps read;
  read.ReadFromString(r.WriteToString());
  EXPECT_EQ(read.m_collAttachments, (AttachmentList{"C:\\a", "b.txt"}));
}

TEST(TextForm, LengthsCountCharactersNotBytes) {
  ScopedLocale locale("en-US");
  CMailProps r = WorkedExample();
  r.m_collAttachments = {"C:\\R\xc3\xa9sum\xc3\xa9.pdf"};
  CMailProps read;
  read.ReadFromString("1;1;0;0;0;34;1;10;0;C:\\R\xc3\xa9sum\xc3\xa9.pdf;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM");
  ExpectSameRecord(read, r);
}

TEST(TextForm, ALineFromAnotherDateOrderReadsOtherDates) {
  CMailProps r = WorkedExample();
  r.m_PatternStartDate = At("2025-03-04");
  std::string line;
  {
    ScopedLocale us("en-US");
    line = r.WriteToString();
  }
  ScopedLocale german("de-DE");
  CMailProps read;
  read.ReadFromString(line);
  EXPECT_EQ(read.m_PatternStartDate, At("2025-04-03"));
}

struct BadLine {
  const char* name;
  const char* line;
  const char* logged;
  int fieldsRead;  // how many of the leading fields took new values
};

class FailedRead : public ::testing::TestWithParam<BadLine> {};

TEST_P(FailedRead, KeepsWhatWasReadAndLogsTheLabel) {
  const BadLine& c = GetParam();
  ScopedLocale locale("en-US");
  ScopedLogFolder log;
  CMailProps before;
  before.m_RecurrenceType = 99;
  before.m_DayOfMonth = 99;
  before.m_MonthOfYear = 99;
  before.m_Instance = 99;
  before.m_DayOfWeekMask = 99;
  before.m_Interval = 99;
  before.m_Occurrences = 99;
  before.m_collAttachments = {"kept"};
  before.m_StartTime = 0.125;
  before.m_PatternStartDate = 7;
  CMailProps read = before;
  read.ReadFromString(c.line);

  EXPECT_TRUE(log.LogContains(c.logged)) << log.LogText();
  EXPECT_TRUE(log.LogContains("CMailProps.ReadFromString(\t")) << log.LogText();
  const std::int32_t CMailProps::*numbers[] = {&CMailProps::m_RecurrenceType, &CMailProps::m_DayOfMonth,
                                                &CMailProps::m_MonthOfYear,    &CMailProps::m_Instance,
                                                &CMailProps::m_DayOfWeekMask,  &CMailProps::m_Interval,
                                                &CMailProps::m_Occurrences};
  for (int i = 0; i < 7; ++i) {
    const bool read_it = i + 1 < c.fieldsRead;
    EXPECT_EQ(read.*numbers[i] == 99, !read_it) << "field " << i + 1;
  }
  EXPECT_EQ(read.m_collAttachments == before.m_collAttachments, c.fieldsRead < 10);
  EXPECT_EQ(read.m_StartTime == before.m_StartTime, c.fieldsRead < 11);
  EXPECT_EQ(read.m_PatternStartDate == before.m_PatternStartDate, c.fieldsRead < 12);
}

const BadLine kBadLines[] = {
    {"no_hash", "1;1;0;0;0;34;1;10;0;", "Error(5)", 0},
    {"hash_first", "#10;9:30:00 AM", "Error(5)", 0},
    {"empty_head", ";#10;9:30:00 AM", "Error(9)", 0},
    {"five_fields", "1;1;0;0;2;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM", "Error(9)", 5},
    {"word_in_type", "1;x;0;0;0;34;1;10;0;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM", "Error(13)", 1},
    {"bad_boolean", "yes;1;0;0;0;34;1;10;0;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM", "Error(13)", 0},
    {"overflowing_count", "1;1;0;0;0;34;1;99999999999;0;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM", "Error(6)", 7},
    {"bad_start_time", "1;1;0;0;0;34;1;10;0;a.txt;#5;later#8;3/3/2025#11;12:00:00 AM", "Error(13)", 10},
    {"missing_length", "1;1;0;0;0;34;1;10;0;a.txt;#10;9:30:00 AM#3/3/2025", "Error(5)", 11},
    {"bad_pattern_start", "1;1;0;0;0;34;1;10;0;a.txt;#10;9:30:00 AM#3;abc#11;12:00:00 AM", "Error(13)", 11},
};

INSTANTIATE_TEST_SUITE_P(TextForm, FailedRead, ::testing::ValuesIn(kBadLines),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace qorvane
