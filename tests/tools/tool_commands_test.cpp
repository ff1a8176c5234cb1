// The qorvane tool's commands run in-process, as a user would call them:
// listings checked against dates worked out by hand from a calendar, the
// stored line against the form earlier versions wrote, and every kind of bad
// input against exit code 2 with one message.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/registry_sandbox.h"
#include "tests/support/test_env.h"
#include "tests/tools/tool_invoke.h"
#include "tools/commands.h"

namespace qorvane::tool {
namespace {

using testing::Invoke;
using testing::Result;

std::vector<std::string> Concat(std::vector<std::string> a, const std::vector<std::string>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

class ToolTest : public ::testing::Test {
 protected:
  // No stored client option: weekly patterns count weeks from the locale's
  // first day unless --first-dow says otherwise.
  qorvane::testing::ScopedRegistryKeys registry_{{"Software\\Microsoft\\Office\\16.0"}};
  qorvane::testing::ScopedLogFolder log_;
  qorvane::testing::ScopedLocale locale_{"en-US"};
};

// --- occurrences: listings checked against the calendar --------------------

struct ListingCase {
  const char* name;
  std::vector<std::string> pattern;
  std::vector<std::string> limit;
  std::string expected;
};
void PrintTo(const ListingCase& c, std::ostream* os) { *os << c.name; }


class OccurrencesTest : public ToolTest, public ::testing::WithParamInterface<ListingCase> {};

TEST_P(OccurrencesTest, ListsTheCalendarDays) {
  const ListingCase& c = GetParam();
  Result r = Invoke(Concat(Concat({"occurrences"}, c.pattern), c.limit));
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out, c.expected);
  EXPECT_EQ(r.err, "");
}

INSTANTIATE_TEST_SUITE_P(Table, OccurrencesTest, ::testing::Values(
    ListingCase{"DailyEvery3Days",
                {"--type", "0", "--interval", "3", "--start", "2025-03-03", "--time", "09:30"},
                {"--count", "4"},
                "2025-03-03 09:30\n2025-03-06 09:30\n2025-03-09 09:30\n2025-03-12 09:30\n"},
    ListingCase{"DailyAcrossMonthEnd",
                {"--type", "0", "--interval", "2", "--start", "2024-02-27", "--time", "23:59"},
                {"--count", "3"},
                "2024-02-27 23:59\n2024-02-29 23:59\n2024-03-02 23:59\n"},
    ListingCase{"EveryWeekdaySkipsTheWeekend",
                {"--type", "0", "--interval", "0", "--mask", "62", "--start", "2025-03-07", "--time", "08:00"},
                {"--count", "3"},
                "2025-03-07 08:00\n2025-03-10 08:00\n2025-03-11 08:00\n"},
    ListingCase{"UntilIncludesTheLastDay",
                {"--type", "0", "--start", "2025-03-03", "--time", "00:00"},
                {"--until", "2025-03-05"},
                "2025-03-03 00:00\n2025-03-04 00:00\n2025-03-05 00:00\n"},
    // Start on a Wednesday: the first week keeps only its Friday, the next
    // week is skipped.
    ListingCase{"WeeklyMondayFridayEvery2Weeks",
                {"--type", "1", "--interval", "2", "--mask", "34", "--start", "2025-03-05", "--time", "09:30"},
                {"--count", "5"},
                "2025-03-07 09:30\n2025-03-17 09:30\n2025-03-21 09:30\n2025-03-31 09:30\n2025-04-04 09:30\n"},
    // Saturday and Sunday every 2 weeks: with Sunday first the start
    // Saturday ends its week; with Monday first the next day is still in it.
    ListingCase{"WeeklyWeekendWeeksFromSunday",
                {"--type", "1", "--interval", "2", "--mask", "65", "--start", "2025-03-01", "--time", "10:00",
                 "--first-dow", "1"},
                {"--count", "4"},
                "2025-03-01 10:00\n2025-03-09 10:00\n2025-03-15 10:00\n2025-03-23 10:00\n"},
    ListingCase{"WeeklyWeekendWeeksFromMonday",
                {"--type", "1", "--interval", "2", "--mask", "65", "--start", "2025-03-01", "--time", "10:00",
                 "--first-dow", "2"},
                {"--count", "4"},
                "2025-03-01 10:00\n2025-03-02 10:00\n2025-03-15 10:00\n2025-03-16 10:00\n"},
    // German weeks start on Monday: 0 takes that, the default stays Sunday.
    ListingCase{"WeeklyFirstDowZeroTakesTheLocales",
                {"--type", "1", "--interval", "2", "--mask", "65", "--start", "2025-03-01", "--time", "10:00",
                 "--first-dow", "0", "--locale", "de-DE"},
                {"--count", "4"},
                "2025-03-01 10:00\n2025-03-02 10:00\n2025-03-15 10:00\n2025-03-16 10:00\n"},
    ListingCase{"WeeklyFirstDowDefaultsToTheLocaleWithoutAClientOption",
                {"--type", "1", "--interval", "2", "--mask", "65", "--start", "2025-03-01", "--time", "10:00",
                 "--locale", "de-DE"},
                {"--count", "4"},
                "2025-03-01 10:00\n2025-03-02 10:00\n2025-03-15 10:00\n2025-03-16 10:00\n"},
    ListingCase{"MonthlyDay31FallsOnMonthEnds",
                {"--type", "2", "--day-of-month", "31", "--start", "2025-01-31", "--time", "17:00"},
                {"--count", "4"},
                "2025-01-31 17:00\n2025-02-28 17:00\n2025-03-31 17:00\n2025-04-30 17:00\n"},
    ListingCase{"MonthlyDayPassedStartsNextMonth",
                {"--type", "2", "--day-of-month", "10", "--interval", "2", "--start", "2025-01-15", "--time", "12:00"},
                {"--count", "2"},
                "2025-03-10 12:00\n2025-05-10 12:00\n"},
    ListingCase{"MonthlyLastFriday",
                {"--type", "3", "--instance", "5", "--mask", "32", "--start", "2025-01-01", "--time", "16:30"},
                {"--count", "3"},
                "2025-01-31 16:30\n2025-02-28 16:30\n2025-03-28 16:30\n"},
    ListingCase{"MonthlyFirstMonday",
                {"--type", "3", "--instance", "1", "--mask", "2", "--start", "2025-09-02", "--time", "07:15"},
                {"--count", "2"},
                "2025-10-06 07:15\n2025-11-03 07:15\n"},
    ListingCase{"YearlyLeapDayFallsBackTo28th",
                {"--type", "5", "--month", "2", "--day-of-month", "29", "--start", "2024-02-01", "--time", "09:00"},
                {"--count", "5"},
                "2024-02-29 09:00\n2025-02-28 09:00\n2026-02-28 09:00\n2027-02-28 09:00\n2028-02-29 09:00\n"},
    ListingCase{"YearlySecondTuesdayOfMarch",
                {"--type", "6", "--instance", "2", "--mask", "4", "--month", "3", "--start", "2025-01-01",
                 "--time", "09:00"},
                {"--count", "3"},
                "2025-03-11 09:00\n2026-03-10 09:00\n2027-03-09 09:00\n"},
    ListingCase{"TypeFourIsNotAPattern",
                {"--type", "4", "--start", "2025-03-03", "--time", "09:30"}, {"--count", "3"}, ""},
    ListingCase{"TypeNineIsNotAPattern",
                {"--type", "9", "--start", "2025-03-03", "--time", "09:30"}, {"--until", "2025-12-31"}, ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ToolTest, UntilListsAtMost999) {
  Result r = Invoke({"occurrences", "--type", "0", "--start", "2025-01-01", "--time", "09:00", "--until", "2030-01-01"});
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 999);
}

TEST_F(ToolTest, ListingPastYear9999IsAFailureNotAnEmptyList) {
  // A count listing looks up to 1000 years ahead, beyond the last valid year.
  Result r = Invoke({"occurrences", "--type", "0", "--start", "9500-01-01", "--time", "09:00", "--count", "2"});
  EXPECT_EQ(r.code, 1);
  EXPECT_EQ(r.out, "");
  EXPECT_NE(r.err.find("see the log"), std::string::npos) << r.err;
}

// --- encode / decode: the stored line --------------------------------------

const std::vector<std::string> kWorkedExample = {
    "--type", "1", "--interval", "1", "--mask", "34", "--occurrences", "10", "--start", "2025-03-03",
    "--time", "09:30", "--attach", "C:\\Reports\\summary.pdf", "--attach", "C:\\Reports\\Weekly\\"};
const char* const kWorkedLine =
    "1;1;0;0;0;34;1;10;0;C:\\Reports\\summary.pdf;C:\\Reports\\Weekly\\;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM";
const char* const kWorkedFields =
    "ScheduleTime=1899-12-30 00:00:00\n"
    "attachment=C:\\Reports\\summary.pdf\n"
    "attachment=C:\\Reports\\Weekly\\\n"
    "IsRecurring=1\n"
    "RecurrenceType=1\n"
    "DayOfMonth=0\n"
    "MonthOfYear=0\n"
    "Instance=0\n"
    "DayOfWeekMask=34\n"
    "Interval=1\n"
    "Occurrences=10\n"
    "NoEndDate=0\n"
    "StartTime=1899-12-30 09:30:00\n"
    "PatternStartDate=2025-03-03 00:00:00\n"
    "PatternEndDate=1899-12-30 00:00:00\n";

TEST_F(ToolTest, EncodeWritesTheWorkedExampleLine) {
  Result r = Invoke(Concat({"--locale", "en-US", "encode"}, kWorkedExample));
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out, std::string(kWorkedLine) + "\n");
}

TEST_F(ToolTest, DecodePrintsTheWorkedExampleFields) {
  Result r = Invoke({"decode", kWorkedLine, "--locale=en-US"});
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out, kWorkedFields);
}

TEST_F(ToolTest, EncodeEndOptionsReachTheLine) {
  const std::vector<std::string> pattern = {"encode", "--type", "0", "--start", "2025-03-03", "--time", "18:05"};
  Result no_end = Invoke(Concat(pattern, {"--no-end"}));
  EXPECT_EQ(no_end.out, "1;0;0;0;0;0;1;0;1;#10;6:05:00 PM#8;3/3/2025#11;12:00:00 AM\n");
  Result by_date = Invoke(Concat(pattern, {"--end-date", "2025-12-24", "--one-time"}));
  EXPECT_EQ(by_date.out, "0;0;0;0;0;0;1;0;0;#10;6:05:00 PM#8;3/3/2025#10;12/24/2025\n");
}

// Whatever the locale writes, the same locale must read back unchanged.
class RoundTripTest : public ToolTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(RoundTripTest, DecodeReadsWhatEncodeWrote) {
  Result line = Invoke({"--locale", GetParam(), "encode", "--type", "6", "--instance", "5", "--mask", "65",
                     "--month", "11", "--interval", "3", "--start", "2031-11-02", "--time", "21:45",
                     "--end-date", "2040-01-31", "--attach", "/home/ann/notes.txt", "--attach", "Überblick.pdf"});
  ASSERT_EQ(line.code, 0) << line.err;
  ASSERT_FALSE(line.out.empty());
  line.out.pop_back();
  Result fields = Invoke({"--locale", GetParam(), "decode", line.out});
  EXPECT_EQ(fields.code, 0) << fields.err;
  EXPECT_EQ(fields.out,
            "ScheduleTime=1899-12-30 00:00:00\n"
            "attachment=/home/ann/notes.txt\n"
            "attachment=Überblick.pdf\n"
            "IsRecurring=1\nRecurrenceType=6\nDayOfMonth=0\nMonthOfYear=11\nInstance=5\n"
            "DayOfWeekMask=65\nInterval=3\nOccurrences=0\nNoEndDate=0\n"
            "StartTime=1899-12-30 21:45:00\n"
            "PatternStartDate=2031-11-02 00:00:00\n"
            "PatternEndDate=2040-01-31 00:00:00\n");
}

INSTANTIATE_TEST_SUITE_P(Locales, RoundTripTest, ::testing::Values("en-US", "en-GB", "de-DE", "fr-FR"));

struct BadLineCase {
  const char* name;
  const char* line;
  const char* printed;  // a field the partial read must still show
};
void PrintTo(const BadLineCase& c, std::ostream* os) { *os << c.name; }


class DecodeFailureTest : public ToolTest, public ::testing::WithParamInterface<BadLineCase> {};

TEST_P(DecodeFailureTest, PrintsWhatWasReadExplainsAndLogs) {
  const BadLineCase& c = GetParam();
  Result r = Invoke({"--locale", "en-US", "decode", c.line});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.out.find(c.printed), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("PatternEndDate="), std::string::npos) << "every field is printed";
  EXPECT_NE(r.err.find("could not be read: error "), std::string::npos) << r.err;
  EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
  EXPECT_TRUE(log_.LogContains("CMailProps.ReadFromString(")) << log_.LogText();
}

INSTANTIATE_TEST_SUITE_P(Table, DecodeFailureTest, ::testing::Values(
    BadLineCase{"NoDateSection", "1;1;0;0;0;34;1;10;0", "RecurrenceType=0"},
    BadLineCase{"TooFewNumbers", "1;1;0#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM", "IsRecurring=1"},
    BadLineCase{"NumberIsText", "1;1;x;0;0;34;1;10;0;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM", "RecurrenceType=1"},
    BadLineCase{"LastDateUnreadable", "1;2;31;0;0;0;1;0;1;#10;9:30:00 AM#8;3/3/2025#11;not a date!", 
                "PatternStartDate=2025-03-03 00:00:00"},
    BadLineCase{"Garbage", "garbage", "IsRecurring=0"}),
    [](const auto& info) { return std::string(info.param.name); });

// --- describe ---------------------------------------------------------------

TEST_F(ToolTest, DescribeNamesTheLastSendOnlyWhenAsked) {
  // Ten sends on Mondays and Fridays from Monday 3 March: the tenth is 4 April.
  const std::vector<std::string> args = {"describe", "--type", "1", "--mask", "34", "--start", "2025-03-03",
                                         "--time", "09:30", "--occurrences", "10", "--schedule-time",
                                         "2025-03-03 09:30"};
  Result plain = Invoke(args);
  Result last = Invoke(Concat(args, {"--last"}));
  EXPECT_EQ(plain.code, 0) << plain.err;
  EXPECT_EQ(plain.out, "Occurs every 1 week(s) on monday And friday effective 3/3/2025 9:30:00 AM\n");
  EXPECT_EQ(last.out, "Occurs every 1 week(s) on monday And friday effective 3/3/2025 9:30:00 AM"
                      " until 4/4/2025 9:30:00 AM\n");
  Result once = Invoke(Concat(args, {"--one-time"}));
  EXPECT_EQ(once.out, "none\n");
}

TEST_F(ToolTest, DescribeFollowsTheLocale) {
  // Two-digit day and month: German short dates differ only in leading zeros
  // between systems.
  Result r = Invoke({"--locale", "de-DE", "describe", "--type", "0", "--interval", "2", "--start", "2025-11-24",
                     "--time", "21:30", "--schedule-time", "2025-11-24 21:30"});
  EXPECT_EQ(r.out, "Occurs every 2 day(s) effective 24.11.2025 21:30:00\n");
}

// --- usage errors: one line on stderr, exit 2, nothing on stdout -------------

struct UsageCase {
  const char* name;
  std::vector<std::string> args;
  const char* mentions;
};
void PrintTo(const UsageCase& c, std::ostream* os) { *os << c.name; }


class UsageErrorTest : public ToolTest, public ::testing::WithParamInterface<UsageCase> {};

TEST_P(UsageErrorTest, ExitsWith2AndOneMessage) {
  const UsageCase& c = GetParam();
  Result r = Invoke(c.args);
  EXPECT_EQ(r.code, 2);
  EXPECT_EQ(r.out, "");
  EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
  EXPECT_NE(r.err.find(c.mentions), std::string::npos) << r.err;
}

const std::vector<std::string> kPattern = {"--type", "0", "--start", "2025-03-03", "--time", "09:30"};

INSTANTIATE_TEST_SUITE_P(Table, UsageErrorTest, ::testing::Values(
    UsageCase{"NoCommand", {}, "command"},
    UsageCase{"UnknownCommand", {"list"}, "list"},
    UsageCase{"UnknownLocale", {"--locale", "xx-YY", "decode", "1"}, "xx-YY"},
    UsageCase{"LocaleWithoutName", {"decode", "1", "--locale"}, "--locale"},
    UsageCase{"LocaleTwice", {"--locale", "en-US", "--locale", "de-DE", "decode", "1"}, "--locale"},
    UsageCase{"TypeMissing", {"occurrences", "--start", "2025-03-03", "--time", "09:30", "--count", "1"}, "--type"},
    UsageCase{"TypeNotANumber", {"occurrences", "--type", "weekly", "--start", "2025-03-03", "--time", "09:30",
                                 "--count", "1"}, "--type"},
    UsageCase{"StartMissing", {"occurrences", "--type", "0", "--time", "09:30", "--count", "1"}, "--start"},
    UsageCase{"TimeMissing", {"encode", "--type", "0", "--start", "2025-03-03"}, "--time"},
    UsageCase{"StartNotADay", Concat({"occurrences", "--start", "2025-02-30", "--type", "0", "--time", "09:30"},
                                     {"--count", "1"}), "--start"},
    UsageCase{"TimeOutOfDay", {"occurrences", "--type", "0", "--start", "2025-03-03", "--time", "24:00",
                               "--count", "1"}, "--time"},
    UsageCase{"NoLimit", Concat({"occurrences"}, kPattern), "--count"},
    UsageCase{"TwoLimits", Concat(Concat({"occurrences"}, kPattern), {"--count", "1", "--until", "2025-04-01"}),
              "--until"},
    UsageCase{"CountZero", Concat(Concat({"occurrences"}, kPattern), {"--count", "0"}), "--count"},
    UsageCase{"CountHuge", Concat(Concat({"occurrences"}, kPattern), {"--count", "100001"}), "--count"},
    UsageCase{"CountValueIsOption", Concat(Concat({"occurrences"}, kPattern), {"--count", "--until", "2025-04-01"}),
              "--count"},
    UsageCase{"UntilMalformed", Concat(Concat({"occurrences"}, kPattern), {"--until", "tomorrow"}), "--until"},
    UsageCase{"MaskTooLarge", Concat(Concat({"occurrences", "--mask", "128"}, kPattern), {"--count", "1"}), "--mask"},
    UsageCase{"IntervalTooLarge", Concat(Concat({"occurrences", "--interval", "1000"}, kPattern), {"--count", "1"}),
              "--interval"},
    UsageCase{"InstanceSix", Concat(Concat({"occurrences", "--instance", "6"}, kPattern), {"--count", "1"}),
              "--instance"},
    UsageCase{"MonthThirteen", Concat(Concat({"occurrences", "--month", "13"}, kPattern), {"--count", "1"}),
              "--month"},
    UsageCase{"DayOfMonth32", Concat(Concat({"occurrences", "--day-of-month", "32"}, kPattern), {"--count", "1"}),
              "--day-of-month"},
    UsageCase{"FirstDowEight", Concat(Concat({"occurrences", "--first-dow", "8"}, kPattern), {"--count", "1"}),
              "--first-dow"},
    UsageCase{"OptionOfAnotherCommand", Concat(Concat({"occurrences", "--attach", "x"}, kPattern), {"--count", "1"}),
              "--attach"},
    UsageCase{"EndTwice", Concat({"encode", "--occurrences", "3", "--no-end"}, kPattern), "exclude"},
    UsageCase{"OccurrencesZero", Concat({"encode", "--occurrences", "0"}, kPattern), "--occurrences"},
    UsageCase{"EndDateMalformed", Concat({"encode", "--end-date", "2025-12"}, kPattern), "--end-date"},
    UsageCase{"ScheduleTimeMissing", Concat({"describe"}, kPattern), "--schedule-time"},
    UsageCase{"ScheduleTimeWithoutTime", Concat({"describe", "--schedule-time", "2025-03-03"}, kPattern),
              "--schedule-time"},
    UsageCase{"DecodeWithoutLine", {"decode"}, "LINE"},
    UsageCase{"DecodeTwoLines", {"decode", "a", "b"}, "'b'"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ToolTest, HelpWinsOverMistakesAndGoesToStdout) {
  for (std::vector<std::string> args : std::vector<std::vector<std::string>>{
           {"--help"}, {"help"}, {"occurrences", "--help"}, {"describe", "--bogus", "--help"},
           {"encode", "--help"}, {"decode", "--help"}, {"--locale", "de-DE", "decode", "--help"}}) {
    Result r = Invoke(args);
    EXPECT_EQ(r.code, 0) << args.back();
    EXPECT_EQ(r.out.rfind("Usage: qorvane", 0), 0u) << r.out;
    EXPECT_EQ(r.err, "");
  }
}

}  // namespace
}  // namespace qorvane::tool
