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

// Reading field by field, as sending does: every field that can be read is,
// past any that can't, and the result says which did.
struct EachFieldCase {
  const char* name;
  const char* locale;
  const char* line;
  // recurring, pattern, attachments, start time, pattern start, end date,
  // dates as written here, in that order
  const char* read;
  const char* failure;  // the start of firstFailure
  AttachmentList attachments;
};

class EachField : public ::testing::TestWithParam<EachFieldCase> {};

TEST_P(EachField, ReadsWhatCanBeReadAndSaysWhatCouldNot) {
  const EachFieldCase& c = GetParam();
  ScopedLocale locale(c.locale);
  ScopedLogFolder log;
  CMailProps read;
  read.m_PatternEndDate = 7;
  const LineFields fields = read.ReadEachField(c.line);
  const std::string flags = {fields.recurring ? '1' : '0',  fields.pattern ? '1' : '0',  fields.attachments ? '1' : '0',
                             fields.startTime ? '1' : '0',  fields.patternStart ? '1' : '0', fields.endDate ? '1' : '0',
                             fields.datesAsWrittenHere ? '1' : '0'};
  EXPECT_EQ(flags, c.read);
  EXPECT_EQ(fields.firstFailure.substr(0, std::string(c.failure).size()), c.failure) << fields.firstFailure;
  EXPECT_EQ(read.m_collAttachments, c.attachments);
  if (fields.patternStart) {
    EXPECT_EQ(read.m_PatternStartDate, At("2025-03-03"));
  }
  if (!fields.endDate) {
    EXPECT_EQ(read.m_PatternEndDate, 7) << "a field not read keeps its value";
  }
  EXPECT_TRUE(log.LogText().empty()) << "nothing is logged";
}

const EachFieldCase kEachField[] = {
    {"whole_line", "en-US", kWorkedLine, "1111111", "", {"C:\\Reports\\summary.pdf", "C:\\Reports\\Weekly\\"}},
    {"end_date_damaged", "en-US", "1;1;0;0;0;34;1;10;0;a.txt;#10;9:30:00 AM#8;3/3/2025#11;12:00:0x AM", "1111101",
     "PatternEndDate", {"a.txt"}},
    {"end_date_cut_off", "en-US", "1;1;0;0;0;34;1;10;0;#10;9:30:00 AM#8;3/3/2025#", "1111101", "PatternEndDate", {}},
    {"start_date_damaged", "en-US", "1;1;0;0;0;34;1;10;0;#10;9:30:00 AM#8;3/x/2025#9;3/31/2025", "1111010",
     "PatternStartDate", {}},
    {"start_time_damaged", "en-US", "1;1;0;0;0;34;1;10;0;#5;later#8;3/3/2025#11;12:00:00 AM", "1110110", "StartTime",
     {}},
    {"length_damaged_hides_the_rest", "en-US", "1;1;0;0;0;34;1;10;0;#x;9:30:00 AM#8;3/3/2025#11;12:00:00 AM",
     "1110000", "StartTime", {}},
    {"number_damaged", "en-US", "1;1;0;x;0;34;1;10;0;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM", "1011111",
     "MonthOfYear: Type mismatch", {}},
    {"one_time_with_garbage_numbers", "en-US", "0;a;b;c;d;e;f;g;h;C:\\a.txt;#3;abc#3;def#3;ghi", "1010000",
     "RecurrenceType", {"C:\\a.txt"}},
    {"five_fields", "en-US", "1;1;0;0;2;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM", "1001111", "DayOfWeekMask", {}},
    {"no_hash", "en-US", "1;1;0;0;0;34;1;10;0;", "0000000", "the nine numbers", {}},
    {"written_under_another_locale", "de-DE", "1;1;0;0;0;34;1;10;0;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM", "1111110",
     "", {}},
    {"written_here_in_day_month_order", "en-GB", "1;1;0;0;0;34;1;10;0;#8;09:30:00#10;03/03/2025#8;00:00:00", "1111111",
     "", {}},
};

INSTANTIATE_TEST_SUITE_P(TextForm, EachField, ::testing::ValuesIn(kEachField),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace qorvane
