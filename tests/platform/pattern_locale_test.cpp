// The pattern-driven locale: general-date text as Windows writes it (expected
// texts were taken from VarBstrFromDate / VarDateFromStr under wine), the
// lenient reading of dates and times, and a round trip through every
// built-in locale.
#include "platform/pattern_locale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>

#include "base/ole_date.h"
#include "platform/clock.h"

namespace qorvane {
namespace {

PatternLocale Builtin(std::string_view name) {
  auto patterns = BuiltinLocalePatterns(name);
  EXPECT_TRUE(patterns.has_value()) << name;
  return PatternLocale(patterns.value_or(LocalePatterns{}));
}

// Two OLE dates that show the same second.
::testing::AssertionResult SameSecond(std::optional<double> actual, double expected) {
  if (!actual) return ::testing::AssertionFailure() << "nothing parsed, expected " << expected;
  if (std::llround(*actual * 86400.0) != std::llround(expected * 86400.0)) {
    return ::testing::AssertionFailure() << *actual << " != " << expected;
  }
  return ::testing::AssertionSuccess();
}

// Pins the clock so that a date without a year reads the same every year.
class FixedYear : public ::testing::Test {
 protected:
  void SetUp() override { SetClock(&clock_); }
  void TearDown() override { SetClock(nullptr); }
  FixedClock clock_{45720.5};  // 2025-03-04 12:00
};

// ---------------------------------------------------------------------------
// Writing

struct FormatCase {
  const char* locale;
  double date;
  const char* expected;
};

const FormatCase kFormatCases[] = {
    // Date and time, date alone, time alone, midnight of day zero.
    {"en-US", 45719.395833333336, "3/3/2025 9:30:00 AM"},
    {"en-US", 0.3958333333, "9:30:00 AM"},
    {"en-US", 45719, "3/3/2025"},
    {"en-US", 0, "12:00:00 AM"},
    {"en-US", 0.5, "12:00:00 PM"},
    {"en-US", 45719.75, "3/3/2025 6:00:00 PM"},
    // Rounded to the second, carrying into the next day at the very end.
    {"en-US", 45719.39584, "3/3/2025 9:30:01 AM"},
    // Whether date and time show is decided before rounding.
    {"en-US", 45719.9999999, "3/4/2025 12:00:00 AM"},
    {"en-US", 45719.0000001, "3/3/2025 12:00:00 AM"},
    {"en-US", 0.9999999, "12:00:00 AM"},
    {"en-US", -0.5, "12:00:00 PM"},
    {"en-US", 2958465.9999999, "1/1/10000 12:00:00 AM"},
    // Before day zero the fraction still counts forward from midnight.
    {"en-US", -1.25, "12/29/1899 6:00:00 AM"},
    {"en-US", -657434, "1/1/100"},
    {"en-GB", 45719.395833333336, "03/03/2025 09:30:00"},
    {"en-GB", 0, "00:00:00"},
    {"de-DE", 45719.395833333336, "3.3.2025 09:30:00"},
    {"de-DE", 45729.875, "13.3.2025 21:00:00"},
    {"fr-FR", 45719.395833333336, "03/03/2025 09:30:00"},
    {"es-ES", 45719.395833333336, "3/3/2025 9:30:00"},
    {"es-ES", 0, "0:00:00"},
    {"nl-NL", 45719.395833333336, "3-3-2025 09:30:00"},
    {"en-AU", 45719.395833333336, "03/03/2025 9:30:00 am"},
    {"en-CA", 45719.895833333336, "3/3/2025 9:30:00 p.m."},
    {"en-NZ", 45719.395833333336, "3/03/2025 9:30:00 am"},
    {"pl-PL", 45719.395833333336, "3.03.2025 09:30:00"},
    {"cs-CZ", 45719.395833333336, "3. 3. 2025 9:30:00"},
    {"sv-SE", 45719.395833333336, "2025-03-03 09:30:00"},
    {"ja-JP", 45719.395833333336, "2025/3/3 9:30:00"},
    {"en-ZA", 45719.395833333336, "2025/03/03 09:30:00"},
};

class FormatGeneralDate : public ::testing::TestWithParam<FormatCase> {};

TEST_P(FormatGeneralDate, WritesWhatWindowsWrites) {
  const FormatCase& c = GetParam();
  EXPECT_EQ(Builtin(c.locale).FormatGeneralDate(c.date), c.expected) << c.locale << " " << c.date;
}

INSTANTIATE_TEST_SUITE_P(Cases, FormatGeneralDate, ::testing::ValuesIn(kFormatCases));

TEST(PatternFormatting, NamesQuotesAndShortTokens) {
  const struct {
    const char* shortDate;
    const char* longTime;
    double date;
    const char* expected;
  } cases[] = {
      {"dddd d MMMM yyyy", "HH:mm", 45719.5, "Monday 3 March 2025 12:00"},
      {"ddd dd MMM yy", "H:m:s", 45719 + 32707 / 86400.0, "Mon 03 Mar 25 9:5:7"},
      {"'day' d 'of' M", "h 'o''clock' t", 45719.875, "day 3 of 3 9 o'clock P"},
      {"yyyy''MM", "hh:mm tt", 45719.0423611111, "2025'03 01:01 AM"},
      {"d/M/y", "HH:mm:ss", 36530, "5/1/0"},
  };
  for (const auto& c : cases) {
    const PatternLocale locale({"xx", c.shortDate, c.longTime, ":", "AM", "PM", 1});
    EXPECT_EQ(locale.FormatGeneralDate(c.date), c.expected) << c.shortDate << " | " << c.longTime;
  }
}

// ---------------------------------------------------------------------------
// Reading

struct ParseCase {
  const char* locale;
  const char* text;
  std::optional<double> expected;
};

const ParseCase kParseCases[] = {
    {"en-US", "3/3/2025 9:30:00 AM", 45719.395833333336},
    {"en-US", "9:30", 0.3958333333333333},
    {"en-US", "9:30 pm", 0.8958333333333334},
    {"en-US", "9 AM", 0.375},
    {"en-US", "9AM", 0.375},
    {"en-US", "12:00:00 AM", 0.0},
    {"en-US", "12:15 PM", 0.5104166666666666},
    {"en-US", "0:30 PM", 0.5208333333333334},
    {"en-US", "13:00 PM", 0.5416666666666666},
    {"en-US", "13:00 AM", 0.5416666666666666},
    {"en-US", "  3/3/2025  ", 45719.0},
    {"en-US", "3-3-2025", 45719.0},
    {"en-US", "3.3.2025", 45719.0},
    {"en-US", "3 3 2025", 45719.0},
    {"en-US", "2025-03-04", 45720.0},
    {"en-US", "9:30:00 AM 3/3/2025", 45719.395833333336},
    {"en-US", "12/29/1899 6:00:00 AM", -1.25},
    {"en-US", "1/1/100", -657434.0},
    // Two-digit years: 00-29 this century, 30-99 the last.
    {"en-US", "3/3/29", 47180.0},
    {"en-US", "3/3/30", 11020.0},
    {"en-US", "3/3/99", 36222.0},
    {"en-US", "3/3/0025", 45719.0},
    // A month above 12 with a day that could be a month: swapped.
    {"en-US", "13/3/2025", 45729.0},
    {"en-US", "3/3/2025 9:30:00 x", std::nullopt},
    {"en-US", "3/32/2025", std::nullopt},
    {"en-US", "13/13/2025", std::nullopt},
    {"en-US", "2/30/2025", std::nullopt},
    {"en-US", "0/3/2025", std::nullopt},
    {"en-US", "1/1/99999", std::nullopt},
    {"en-US", "1/1/10000", std::nullopt},
    {"en-US", "3/3/2025 25:00", std::nullopt},
    {"en-US", "9:60", std::nullopt},
    {"en-US", "9:30:60", std::nullopt},
    {"en-US", "9:30:15:5", std::nullopt},
    {"en-US", "3/3/2025 PM", std::nullopt},
    {"en-US", "AM 9:30", std::nullopt},
    {"en-US", "3/4/5/6", std::nullopt},
    {"en-US", "3/3/2025,", std::nullopt},
    {"en-US", "3//3/2025", std::nullopt},
    {"en-US", "3/3 9:30 2025", std::nullopt},
    {"en-US", "abc", std::nullopt},
    {"en-US", "", std::nullopt},
    {"en-US", "   ", std::nullopt},
    {"en-US", "12", std::nullopt},
    {"en-US", "1234567890/1/1", std::nullopt},
    {"de-DE", "3.3.2025 09:30:00", 45719.395833333336},
    {"de-DE", "3.3.2025 9:30:00 PM", 45719.895833333336},
    {"de-DE", "13.3.25", 45729.0},
    {"de-DE", "3/13/2025", 45729.0},
    {"de-DE", "2025-03-04", 45720.0},
    {"de-DE", "9:30 am", 0.3958333333333333},
    {"de-DE", "31.4.2025", std::nullopt},
    {"en-GB", "03/04/2025", 45750.0},
    {"cs-CZ", "3. 3. 2025 9:30:00", 45719.395833333336},
    {"cs-CZ", "3. 3. 2025", 45719.0},
    {"ja-JP", "2025/3/3 9:30:00", 45719.395833333336},
    {"ja-JP", "25/3/4", 45720.0},
    {"sv-SE", "2025-03-03 09:30:00", 45719.395833333336},
    {"sv-SE", "9:30 em", 0.8958333333333334},
    {"nl-NL", "9:30 p.m.", 0.8958333333333334},
    {"es-ES", "9:30 p. m.", 0.8958333333333334},
    {"en-CA", "3/3/2025 9:30:00 a.m.", 45719.395833333336},
    {"en-CA", "12:00:00 A.M.", 0.0},
    {"zh-CN", "9:30 \xE4\xB8\x8B\xE5\x8D\x88", 0.8958333333333334},
};

class ParseDate : public ::testing::TestWithParam<ParseCase> {};

TEST_P(ParseDate, ReadsLikeTheRuntime) {
  const ParseCase& c = GetParam();
  const std::optional<double> actual = Builtin(c.locale).ParseDate(c.text);
  if (c.expected) {
    EXPECT_TRUE(SameSecond(actual, *c.expected)) << c.locale << " \"" << c.text << "\"";
  } else {
    EXPECT_FALSE(actual.has_value()) << c.locale << " \"" << c.text << "\" gave " << actual.value_or(0);
  }
}

INSTANTIATE_TEST_SUITE_P(Cases, ParseDate, ::testing::ValuesIn(kParseCases));

TEST_F(FixedYear, DayAndMonthAloneTakeThisYear) {
  const struct {
    const char* locale;
    const char* text;
    std::optional<double> expected;
  } cases[] = {
      {"en-US", "3/4", 45720.0},           // March 4th
      {"en-US", "3/4 9:30", 45720.3958333333},
      {"en-US", "9:30 3/4", 45720.3958333333},
      {"de-DE", "1.2", 45689.0},           // 1 February
      {"en-GB", "4/3", 45720.0},           // 4 March
      {"sv-SE", "3-4", 45720.0},           // year-first locales drop the year: month, day
      {"en-US", "2/29", std::nullopt},     // 2025 is no leap year
  };
  for (const auto& c : cases) {
    const auto actual = Builtin(c.locale).ParseDate(c.text);
    if (c.expected) {
      EXPECT_TRUE(SameSecond(actual, *c.expected)) << c.locale << " " << c.text;
    } else {
      EXPECT_FALSE(actual) << c.locale << " " << c.text;
    }
  }
  clock_.Set(46023.0);  // 2026-01-01
  EXPECT_TRUE(SameSecond(Builtin("en-US").ParseDate("3/4"), 46085.0));
}

TEST(PatternLocaleParse, DotTimeSeparatorNeedsADateOrDesignator) {
  // A locale writing "9.30.00" (as glibc's fi_FI does) reads its own date and
  // time back; a lone "09.30.00" is a date, as it is for Windows.
  const PatternLocale finnish({"fi", "d.M.yyyy", "H.mm.ss", ".", "ap.", "ip.", 2});
  EXPECT_EQ(finnish.FormatGeneralDate(45719.395833333336), "3.3.2025 9.30.00");
  EXPECT_TRUE(SameSecond(finnish.ParseDate("3.3.2025 9.30.00"), 45719.395833333336));
  EXPECT_TRUE(SameSecond(finnish.ParseDate("9.30 ip."), 0.8958333333333334));
  EXPECT_TRUE(SameSecond(finnish.ParseDate("09.30.00"), 36799.0));  // 30 September 2000
  EXPECT_TRUE(SameSecond(finnish.ParseDate("3.3.2025 9:30"), 45719.395833333336));
}

// ---------------------------------------------------------------------------
// Every built-in locale reads back what it writes.

class BuiltinRoundTrip : public ::testing::TestWithParam<std::string> {
 protected:
  // The same locale with its short date rewritten, for texts the locale
  // itself never writes but must read.
  PatternLocale Variant(std::string_view from, std::string_view to) const {
    LocalePatterns p = *BuiltinLocalePatterns(GetParam());
    for (auto at = p.shortDate.find(from); at != std::string::npos; at = p.shortDate.find(from, at + to.size())) {
      p.shortDate.replace(at, from.size(), to);
    }
    return PatternLocale(p);
  }
};

TEST_P(BuiltinRoundTrip, ReadsBackWhatItWrites) {
  const PatternLocale locale = Builtin(GetParam());
  const double dates[] = {
      45719.395833333336,  // date and time
      45719.0,             // date alone
      0.3958333333333333,  // time alone
      0.0,                 // midnight of day zero
      0.5,                 // noon
      0.999988425925926,   // 23:59:59
      45657.0,             // 2024-12-31
      2958465.999988426,   // 9999-12-31 23:59:59
      -657434.0,           // 0100-01-01
      -1.25,               // before day zero
  };
  for (const double date : dates) {
    const std::string text = locale.FormatGeneralDate(date);
    EXPECT_TRUE(SameSecond(locale.ParseDate(text), date)) << GetParam() << " \"" << text << "\"";
  }
}

TEST_P(BuiltinRoundTrip, ReadsTwoDigitYears) {
  const PatternLocale locale = Builtin(GetParam());
  const PatternLocale shortYears = Variant("yyyy", "yy");
  for (const double date : {47180.0 /* 2029 */, 11020.0 /* 1930 */, 36526.75 /* 2000 */}) {
    const std::string text = shortYears.FormatGeneralDate(date);
    EXPECT_TRUE(SameSecond(locale.ParseDate(text), date)) << GetParam() << " \"" << text << "\"";
  }
}

TEST_P(BuiltinRoundTrip, SwapsAMonthAboveTwelve) {
  const PatternLocale locale = Builtin(GetParam());
  // Day and month tokens swapped through a placeholder.
  LocalePatterns p = *BuiltinLocalePatterns(GetParam());
  std::string swapped;
  for (const char c : p.shortDate) swapped += c == 'd' ? 'M' : c == 'M' ? 'd' : c;
  p.shortDate = swapped;
  const PatternLocale wrongWayRound(p);
  const double date = 45729.5;  // 13 March 2025, noon
  const std::string text = wrongWayRound.FormatGeneralDate(date);
  EXPECT_TRUE(SameSecond(locale.ParseDate(text), date)) << GetParam() << " \"" << text << "\"";
}

TEST_P(BuiltinRoundTrip, RejectsGarbage) {
  const PatternLocale locale = Builtin(GetParam());
  for (const char* text : {"", "x", "3/3/2025 x", "32/32/2025", "0/0/2025", "9:60", "25:00", "1:2:3:4", "2/30/2025",
                           "30/2/2025", "3/3/2025 9:30 9:30", "- 9:30", "9:30 AM PM", "3/3/2025/"}) {
    EXPECT_FALSE(locale.ParseDate(text).has_value()) << GetParam() << " \"" << text << "\"";
  }
}

INSTANTIATE_TEST_SUITE_P(AllLocales, BuiltinRoundTrip, ::testing::ValuesIn(BuiltinLocaleNames()),
                         [](const auto& info) {
                           std::string name = info.param;
                           for (char& c : name) c = c == '-' ? '_' : c;
                           return name;
                         });

// ---------------------------------------------------------------------------
// Names and the table

TEST(LocaleNames, NormalisesPosixAndWindowsSpellings) {
  const struct {
    const char* in;
    const char* out;
  } cases[] = {
      {"en-US", "en-US"},      {"en_US", "en-US"},          {"de_DE.UTF-8", "de-DE"}, {"de_DE@euro", "de-DE"},
      {"DE-de", "de-DE"},      {"fr_FR.ISO-8859-1", "fr-FR"}, {"C", "C"},             {"POSIX", "POSIX"},
      {"C.UTF-8", "C"},        {" ja_JP.eucJP ", "ja-JP"},  {"nl", "nl"},             {"", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(NormaliseLocaleName(c.in), c.out) << c.in;
}

TEST(LocaleNames, FindsBuiltinRowsByAnySpelling) {
  const struct {
    const char* name;
    const char* row;  // nullptr: not in the table
    int firstDay;
  } cases[] = {
      {"en-US", "en-US", 1}, {"EN_us.utf8", "en-US", 1}, {"en_GB.UTF-8", "en-GB", 2}, {"de_DE@euro", "de-DE", 2},
      {"fr_FR", "fr-FR", 2}, {"pt_BR.UTF-8", "pt-BR", 1}, {"ja-jp", "ja-JP", 1},     {"xx-YY", nullptr, 0},
      {"de", nullptr, 0},    {"C", nullptr, 0},           {"", nullptr, 0},
  };
  for (const auto& c : cases) {
    const auto row = BuiltinLocalePatterns(c.name);
    if (!c.row) {
      EXPECT_FALSE(row) << c.name;
      continue;
    }
    ASSERT_TRUE(row) << c.name;
    EXPECT_EQ(row->name, c.row);
    EXPECT_EQ(row->firstDayOfWeek, c.firstDay) << c.name;
  }
}

TEST(LocaleNames, EveryRowIsWellFormed) {
  for (const std::string& name : BuiltinLocaleNames()) {
    const auto row = BuiltinLocalePatterns(name);
    ASSERT_TRUE(row) << name;
    EXPECT_EQ(row->name, name);
    EXPECT_EQ(NormaliseLocaleName(name), name);
    EXPECT_EQ(TimeSeparatorOf(row->longTime), row->timeSeparator) << name;
    EXPECT_GE(row->firstDayOfWeek, 1);
    EXPECT_LE(row->firstDayOfWeek, 7);
    EXPECT_FALSE(row->am.empty() || row->pm.empty()) << name;
  }
}

}  // namespace
}  // namespace qorvane
