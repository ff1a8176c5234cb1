// The tool's command-line checks: every malformed number, date and time must
// be refused before it reaches the engine, and every well-formed one taken
// at face value.
#include "tools/arg_parser.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace qorvane::tool {
namespace {

// --- Whole numbers --------------------------------------------------------

struct IntegerCase {
  const char* text;
  std::int32_t low, high;
  bool ok;
  std::int32_t value;
};
void PrintTo(const IntegerCase& c, std::ostream* os) { *os << '"' << c.text << '"'; }


class ParseIntegerTest : public ::testing::TestWithParam<IntegerCase> {};

TEST_P(ParseIntegerTest, AcceptsOnlyPlainDecimalsInRange) {
  const IntegerCase& c = GetParam();
  if (c.ok) {
    EXPECT_EQ(ParseInteger("n", c.text, c.low, c.high), c.value) << c.text;
  } else {
    EXPECT_THROW(ParseInteger("n", c.text, c.low, c.high), UsageError) << c.text;
  }
}

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();

INSTANTIATE_TEST_SUITE_P(Table, ParseIntegerTest, ::testing::Values(
    IntegerCase{"0", 0, 10, true, 0},
    IntegerCase{"10", 0, 10, true, 10},
    IntegerCase{"-3", -5, 5, true, -3},
    IntegerCase{"007", 0, 10, true, 7},
    IntegerCase{"2147483647", kMin, kMax, true, kMax},
    IntegerCase{"-2147483648", kMin, kMax, true, kMin},
    IntegerCase{"2147483648", kMin, kMax, false, 0},    // one past int32
    IntegerCase{"99999999999999999999", kMin, kMax, false, 0},
    IntegerCase{"11", 0, 10, false, 0},                 // above range
    IntegerCase{"-1", 0, 10, false, 0},                 // below range
    IntegerCase{"", 0, 10, false, 0},
    IntegerCase{"-", 0, 10, false, 0},
    IntegerCase{"+3", 0, 10, false, 0},
    IntegerCase{" 3", 0, 10, false, 0},
    IntegerCase{"3 ", 0, 10, false, 0},
    IntegerCase{"3.0", 0, 10, false, 0},
    IntegerCase{"0x3", 0, 10, false, 0},
    IntegerCase{"three", 0, 10, false, 0}));

// --- Dates and times -------------------------------------------------------

struct DateCase {
  const char* text;
  bool ok;
  int year, month, day;
};
void PrintTo(const DateCase& c, std::ostream* os) { *os << '"' << c.text << '"'; }


class ParseIsoDateTest : public ::testing::TestWithParam<DateCase> {};

TEST_P(ParseIsoDateTest, AcceptsRealCalendarDaysOnly) {
  const DateCase& c = GetParam();
  if (c.ok) {
    DateParts d = ParseIsoDate("start", c.text);
    EXPECT_EQ(d.year, c.year);
    EXPECT_EQ(d.month, c.month);
    EXPECT_EQ(d.day, c.day);
  } else {
    EXPECT_THROW(ParseIsoDate("start", c.text), UsageError) << c.text;
  }
}

INSTANTIATE_TEST_SUITE_P(Table, ParseIsoDateTest, ::testing::Values(
    DateCase{"2025-03-03", true, 2025, 3, 3},
    DateCase{"2024-02-29", true, 2024, 2, 29},   // leap day
    DateCase{"2000-02-29", true, 2000, 2, 29},   // divisible by 400
    DateCase{"0100-01-01", true, 100, 1, 1},     // first year the dates support
    DateCase{"9999-12-31", true, 9999, 12, 31},
    DateCase{"1900-02-29", false},               // century, not a leap year
    DateCase{"2025-02-29", false},
    DateCase{"2025-04-31", false},
    DateCase{"2025-13-01", false},
    DateCase{"2025-00-10", false},
    DateCase{"2025-01-00", false},
    DateCase{"0099-12-31", false},               // before the supported range
    DateCase{"2025-3-3", false},
    DateCase{"2025/03/03", false},
    DateCase{"03/03/2025", false},
    DateCase{"2025-03-03 09:30", false},
    DateCase{"2025-0a-03", false},
    DateCase{"", false}));

struct TimeCase {
  const char* text;
  bool ok;
  int hour, minute;
};
void PrintTo(const TimeCase& c, std::ostream* os) { *os << '"' << c.text << '"'; }


class ParseClockTimeTest : public ::testing::TestWithParam<TimeCase> {};

TEST_P(ParseClockTimeTest, AcceptsTimesOfDayOnly) {
  const TimeCase& c = GetParam();
  if (c.ok) {
    ClockParts t = ParseClockTime("time", c.text);
    EXPECT_EQ(t.hour, c.hour);
    EXPECT_EQ(t.minute, c.minute);
  } else {
    EXPECT_THROW(ParseClockTime("time", c.text), UsageError) << c.text;
  }
}

INSTANTIATE_TEST_SUITE_P(Table, ParseClockTimeTest, ::testing::Values(
    TimeCase{"09:30", true, 9, 30},
    TimeCase{"9:30", true, 9, 30},
    TimeCase{"00:00", true, 0, 0},
    TimeCase{"23:59", true, 23, 59},
    TimeCase{"24:00", false},
    TimeCase{"12:60", false},
    TimeCase{"9:5", false},
    TimeCase{"093", false},
    TimeCase{"09:30:00", false},
    TimeCase{":30", false},
    TimeCase{"123:00", false},
    TimeCase{"9.30", false},
    TimeCase{"", false}));

TEST(ParseIsoDateTimeTest, TakesBlankOrTBetweenDayAndTime) {
  for (const char* text : {"2025-03-03 09:30", "2025-03-03T09:30"}) {
    auto [day, time] = ParseIsoDateTime("schedule-time", text);
    EXPECT_EQ(day.day, 3) << text;
    EXPECT_EQ(time.minute, 30) << text;
  }
  for (const char* text : {"2025-03-03", "2025-03-03  09:30", "2025-03-03_09:30", "09:30 2025-03-03"}) {
    EXPECT_THROW(ParseIsoDateTime("schedule-time", text), UsageError) << text;
  }
}

// --- Option splitting ------------------------------------------------------

const OptionDef kOptions[] = {{"count"}, {"flag", false}, {"attach", true, true}};

ParsedArgs ParseList(std::vector<std::string> args, std::size_t positional = 1) {
  return ParsedArgs::Parse(args, kOptions, positional);
}

TEST(ParsedArgsTest, ReadsValuesFlagsRepeatsAndPositionals) {
  ParsedArgs p = ParseList({"--count", "3", "LINE", "--flag", "--attach", "a", "--attach=b;c", "--attach", "-x"});
  EXPECT_EQ(p.Value("count"), "3");
  EXPECT_TRUE(p.Has("flag"));
  EXPECT_EQ(p.Values("attach"), (std::vector<std::string>{"a", "b;c", "-x"}));
  EXPECT_EQ(p.Positional(), std::vector<std::string>{"LINE"});
  EXPECT_FALSE(p.Value("missing").has_value());
  EXPECT_THROW(p.Required("missing"), UsageError);
}

TEST(ParsedArgsTest, AttachedValueMayStartWithDashes) {
  EXPECT_EQ(ParseList({"--count=--5"}).Value("count"), "--5");
  EXPECT_EQ(ParseList({"--count="}).Value("count"), "");
}

struct BadArgsCase {
  const char* name;
  std::vector<std::string> args;
};
void PrintTo(const BadArgsCase& c, std::ostream* os) { *os << '"' << c.name << '"'; }


class ParsedArgsRefusesTest : public ::testing::TestWithParam<BadArgsCase> {};

TEST_P(ParsedArgsRefusesTest, WithUsageError) {
  EXPECT_THROW(ParseList(GetParam().args), UsageError);
}

INSTANTIATE_TEST_SUITE_P(Table, ParsedArgsRefusesTest, ::testing::Values(
    BadArgsCase{"UnknownOption", {"--bogus"}},
    BadArgsCase{"ValueMissingAtEnd", {"--count"}},
    BadArgsCase{"ValueIsAnotherOption", {"--count", "--flag"}},
    BadArgsCase{"SingleOptionTwice", {"--count", "1", "--count", "2"}},
    BadArgsCase{"FlagWithValue", {"--flag=1"}},
    BadArgsCase{"TooManyPositionals", {"one", "two"}},
    BadArgsCase{"BareDoubleDash", {"--"}}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace qorvane::tool
