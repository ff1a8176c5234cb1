// The pattern-driven locale: general-date text as Windows writes and reads it
// (VarBstrFromDate / VarDateFromStr under wine), a round trip through every
// built-in locale, and the patterns taken from glibc.
#include "platform/pattern_locale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <regex>
#include <string>

#include "platform/clock.h"
#include "tests/support/process_state.h"

namespace qorvane {
namespace {

// A built-in locale, or "fi": one writing "9.30.00" as glibc's fi_FI does.
PatternLocale Builtin(std::string_view name) {
  if (name == "fi") return PatternLocale({"fi", "d.M.yyyy", "H.mm.ss", ".", "ap.", "ip.", 2});
  auto patterns = BuiltinLocalePatterns(name);
  EXPECT_TRUE(patterns.has_value()) << name;
  return PatternLocale(patterns.value_or(LocalePatterns{}));
}

// Reads text and expects the date to the second, or (nullopt) nothing.
void ExpectParse(const Locale& locale, const std::string& text, std::optional<double> expected) {
  const std::optional<double> actual = locale.ParseDate(text);
  if (!expected) {
    EXPECT_FALSE(actual) << locale.Name() << " \"" << text << "\" gave " << actual.value_or(0);
  } else if (!actual || std::llround(*actual * 86400.0) != std::llround(*expected * 86400.0)) {
    ADD_FAILURE() << locale.Name() << " \"" << text << "\" gave " << actual.value_or(-1e9) << ", not " << *expected;
  }
}

TEST(PatternLocale, WritesWhatWindowsWrites) {
  const struct { const char* locale; double date; const char* expected; } cases[] = {
      // Date and time, time alone, date alone, midnight and noon of day zero, evening.
      {"en-US", 45719.395833333336, "3/3/2025 9:30:00 AM"}, {"en-US", 0.3958333333, "9:30:00 AM"},
      {"en-US", 45719, "3/3/2025"}, {"en-US", 0, "12:00:00 AM"}, {"en-US", 0.5, "12:00:00 PM"},
      {"en-US", 45719.75, "3/3/2025 6:00:00 PM"},
      // Rounded to the second; whether date and time show is decided before rounding.
      {"en-US", 45719.39584, "3/3/2025 9:30:01 AM"}, {"en-US", 45719.9999999, "3/4/2025 12:00:00 AM"},
      {"en-US", 45719.0000001, "3/3/2025 12:00:00 AM"}, {"en-US", 0.9999999, "12:00:00 AM"},
      {"en-US", -0.5, "12:00:00 PM"}, {"en-US", 2958465.9999999, "1/1/10000 12:00:00 AM"},
      // Before day zero the fraction still counts forward from midnight.
      {"en-US", -1.25, "12/29/1899 6:00:00 AM"}, {"en-US", -657434, "1/1/100"},
      {"en-GB", 45719.395833333336, "03/03/2025 09:30:00"}, {"en-GB", 0, "00:00:00"},
      {"de-DE", 45719.395833333336, "3.3.2025 09:30:00"}, {"de-DE", 45729.875, "13.3.2025 21:00:00"},
      {"fr-FR", 45719.395833333336, "03/03/2025 09:30:00"}, {"es-ES", 45719.395833333336, "3/3/2025 9:30:00"},
      {"es-ES", 0, "0:00:00"}, {"nl-NL", 45719.395833333336, "3-3-2025 09:30:00"},
      {"en-AU", 45719.395833333336, "03/03/2025 9:30:00 am"}, {"en-CA", 45719.895833333336, "3/3/2025 9:30:00 p.m."},
      {"en-NZ", 45719.395833333336, "3/03/2025 9:30:00 am"}, {"pl-PL", 45719.395833333336, "3.03.2025 09:30:00"},
      {"cs-CZ", 45719.395833333336, "3. 3. 2025 9:30:00"}, {"sv-SE", 45719.395833333336, "2025-03-03 09:30:00"},
      {"ja-JP", 45719.395833333336, "2025/3/3 9:30:00"}, {"en-ZA", 45719.395833333336, "2025/03/03 09:30:00"},
      {"fi", 45719.395833333336, "3.3.2025 9.30.00"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Builtin(c.locale).FormatGeneralDate(c.date), c.expected) << c.locale << " " << c.date;
  }
}

TEST(PatternLocale, ReadsLikeTheRuntime) {
  testing::ScopedClock clock(45720.5);  // 2025-03-04 12:00, for dates without a year
  const std::nullopt_t none = std::nullopt;
  const struct { const char* locale; const char* text; std::optional<double> expected; } cases[] = {
      {"en-US", "3/3/2025 9:30:00 AM", 45719.395833333336}, {"en-US", "9:30", 0.3958333333333333},
      {"en-US", "9:30 pm", 0.8958333333333334}, {"en-US", "9 AM", 0.375}, {"en-US", "9AM", 0.375},
      {"en-US", "12:00:00 AM", 0.0}, {"en-US", "12:15 PM", 0.5104166666666666},
      {"en-US", "0:30 PM", 0.5208333333333334}, {"en-US", "13:00 PM", 0.5416666666666666},
      {"en-US", "13:00 AM", 0.5416666666666666}, {"en-US", "  3/3/2025  ", 45719.0}, {"en-US", "3-3-2025", 45719.0},
      {"en-US", "3.3.2025", 45719.0}, {"en-US", "3 3 2025", 45719.0}, {"en-US", "2025-03-04", 45720.0},
      {"en-US", "9:30:00 AM 3/3/2025", 45719.395833333336}, {"en-US", "1/1/100", -657434.0},
      // Two-digit years: 00-29 this century, 30-99 the last.
      {"en-US", "3/3/29", 47180.0}, {"en-US", "3/3/30", 11020.0}, {"en-US", "3/3/99", 36222.0},
      {"en-US", "3/3/0025", 45719.0},
      // A month above 12 with a day that could be a month is swapped; then what is refused.
      {"en-US", "13/3/2025", 45729.0}, {"en-US", "3/32/2025", none}, {"en-US", "13/13/2025", none},
      {"en-US", "0/3/2025", none}, {"en-US", "1/1/99999", none}, {"en-US", "1/1/10000", none},
      {"en-US", "3/3/2025 25:00", none}, {"en-US", "9:30:60", none}, {"en-US", "9:30:15:5", none},
      {"en-US", "3/3/2025 PM", none}, {"en-US", "AM 9:30", none}, {"en-US", "3/4/5/6", none},
      {"en-US", "3/3/2025,", none}, {"en-US", "3//3/2025", none}, {"en-US", "3/3 9:30 2025", none},
      {"en-US", "   ", none}, {"en-US", "12", none}, {"en-US", "1234567890/1/1", none},
      {"de-DE", "3.3.2025 9:30:00 PM", 45719.895833333336}, {"de-DE", "13.3.25", 45729.0},
      {"de-DE", "3/13/2025", 45729.0}, {"de-DE", "2025-03-04", 45720.0}, {"de-DE", "9:30 am", 0.3958333333333333},
      {"de-DE", "31.4.2025", none}, {"en-GB", "03/04/2025", 45750.0}, {"ja-JP", "25/3/4", 45720.0},
      {"sv-SE", "9:30 em", 0.8958333333333334}, {"nl-NL", "9:30 p.m.", 0.8958333333333334},
      {"es-ES", "9:30 p. m.", 0.8958333333333334}, {"en-CA", "12:00:00 A.M.", 0.0},
      {"zh-CN", "9:30 \xE4\xB8\x8B\xE5\x8D\x88", 0.8958333333333334},
      // With a dot for the time separator a lone "09.30.00" is a date, as it is for Windows.
      {"fi", "3.3.2025 9.30.00", 45719.395833333336}, {"fi", "9.30 ip.", 0.8958333333333334},
      {"fi", "09.30.00", 36799.0 /* 30 September 2000 */}, {"fi", "3.3.2025 9:30", 45719.395833333336},
      // Day and month alone take this year; year-first locales drop the year: month, day.
      {"en-US", "3/4", 45720.0}, {"en-US", "3/4 9:30", 45720.3958333333}, {"en-US", "9:30 3/4", 45720.3958333333},
      {"de-DE", "1.2", 45689.0}, {"en-GB", "4/3", 45720.0}, {"sv-SE", "3-4", 45720.0},
      {"en-US", "2/29", none},  // 2025 is no leap year
  };
  for (const auto& c : cases) ExpectParse(Builtin(c.locale), c.text, c.expected);
  clock.Set(46023.0);  // 2026-01-01
  ExpectParse(Builtin("en-US"), "3/4", 46085.0);
}



// Every built-in locale reads back what it writes, also with two-digit years
// or day and month the wrong way round, and refuses garbage.
class BuiltinRoundTrip : public ::testing::TestWithParam<std::string> {};

TEST_P(BuiltinRoundTrip, ReadsBackWhatItWrites) {
  const PatternLocale locale = Builtin(GetParam());
  LocalePatterns shortYears = *BuiltinLocalePatterns(GetParam());
  LocalePatterns swapped = shortYears;
  for (auto at = shortYears.shortDate.find("yyyy"); at != std::string::npos; at = shortYears.shortDate.find("yyyy")) {
    shortYears.shortDate.replace(at, 4, "yy");
  }
  for (char& c : swapped.shortDate) c = c == 'd' ? 'M' : c == 'M' ? 'd' : c;
  const struct { PatternLocale writer; std::vector<double> dates; } cases[] = {
      {locale,
       {45719.395833333336, 45719.0, 0.3958333333333333, 0.0, 0.5, 0.999988425925926, 45657.0 /* 2024-12-31 */,
        2958465.999988426 /* 9999-12-31 23:59:59 */, -657434.0 /* 0100-01-01 */, -1.25}},
      {PatternLocale(shortYears), {47180.0 /* 2029 */, 11020.0 /* 1930 */, 36526.75 /* 2000 */}},
      {PatternLocale(swapped), {45729.5 /* 13 March 2025, noon */}},
  };
  for (const auto& c : cases) {
    for (const double date : c.dates) ExpectParse(locale, c.writer.FormatGeneralDate(date), date);
  }
  for (const char* text : {"", "x", "3/3/2025 x", "32/32/2025", "0/0/2025", "9:60", "25:00", "1:2:3:4", "2/30/2025",
                           "30/2/2025", "3/3/2025 9:30 9:30", "- 9:30", "9:30 AM PM", "3/3/2025/", "abc"}) {
    ExpectParse(locale, text, std::nullopt);
  }
}

INSTANTIATE_TEST_SUITE_P(AllLocales, BuiltinRoundTrip, ::testing::ValuesIn(BuiltinLocaleNames()),
                         [](const auto& info) { return std::regex_replace(info.param, std::regex("-"), "_"); });

// Names normalise from POSIX and Windows spellings and find their table row
// by any of them. (Each row's contents are held against Windows under wine.)
TEST(LocaleNames, NormaliseAndFindTheirRow) {
  const struct { const char* in; const char* out; bool builtin; } cases[] = {
      {"en-US", "en-US", true},         {"en_US", "en-US", true},      {"EN_us.utf8", "en-US", true},
      {"de_DE.UTF-8", "de-DE", true},   {"de_DE@euro", "de-DE", true}, {"DE-de", "de-DE", true},
      {"fr_FR.ISO-8859-1", "fr-FR", true}, {" ja_JP.eucJP ", "ja-JP", true}, {"pt_BR.UTF-8", "pt-BR", true},
      {"C", "C", false},                {"POSIX", "POSIX", false},     {"C.UTF-8", "C", false},
      {"nl", "nl", false},              {"xx-YY", "xx-YY", false},     {"", "", false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(NormaliseLocaleName(c.in), c.out) << c.in;
    const auto row = BuiltinLocalePatterns(c.in);
    EXPECT_EQ(row ? row->name : "none", c.builtin ? c.out : "none") << c.in;
  }
  for (const std::string& name : BuiltinLocaleNames()) EXPECT_EQ(NormaliseLocaleName(name), name);
}

// glibc's strftime patterns (D_FMT, T_FMT) as Windows-style patterns, for the
// locales the table does not have.
TEST(PatternFromStrftime, Converts) {
  const struct { const char* strftime; const char* windows; } cases[] = {
      // Patterns as glibc's locales ship them (en_US, en_GB, de_DE, fi_FI, sv_SE, ja_JP) ...
      {"%m/%d/%Y", "MM/dd/yyyy"}, {"%r", "hh:mm:ss tt"}, {"%d/%m/%y", "dd/MM/yy"}, {"%T", "HH:mm:ss"},
      {"%d.%m.%Y", "dd.MM.yyyy"}, {"%H.%M.%S", "HH.mm.ss"}, {"%Y-%m-%d", "yyyy-MM-dd"},
      {"%Y\xE5\xB9\xB4%m\xE6\x9C\x88%d\xE6\x97\xA5", "yyyy\xE5\xB9\xB4MM\xE6\x9C\x88" "dd\xE6\x97\xA5"},
      // ... then the corners of the syntax.
      {"%e.%-m.%y", "d.M.yy"}, {"%-d/%-m/%Y", "d/M/yyyy"}, {"%_H:%M", "H:mm"}, {"%I:%M:%S %p", "hh:mm:ss tt"},
      {"%l:%M %P", "h:mm tt"}, {"%k:%M", "H:mm"}, {"%D", "MM/dd/yy"}, {"%F", "yyyy-MM-dd"}, {"%R", "HH:mm"},
      {"%a %b %e", "ddd MMM d"}, {"%A, %B %d", "dddd, MMMM dd"}, {"%Ey %Od", "yy dd"},
      {"%H h %M", "HH' h 'mm"},  // letters are quoted, blanks stay with them
      {"at %H o'clock", "'at 'HH' o''clock'"}, {"100%% %H", "100% HH"},
      {"%H:%M %Z", "HH:mm "},  // no Windows token for a zone
      {"%", "%"}, {"", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(PatternFromStrftime(c.strftime), c.windows) << c.strftime;
}

TEST(TimeSeparatorOf, TakesTheLiteralAfterTheHour) {
  const struct { const char* pattern; const char* separator; } cases[] = {
      {"h:mm:ss tt", ":"},          {"HH.mm.ss", "."},   {"tt h:mm:ss", ":"}, {"HH 'h' mm 'min' ss 's'", " 'h' "},
      {"HH\xE6\x99\x82mm", "\xE6\x99\x82"}, {"HHmm", ":"}, {"", ":"},        {"mm:ss", ":"},
  };
  for (const auto& c : cases) EXPECT_EQ(TimeSeparatorOf(c.pattern), c.separator) << c.pattern;
}

}  // namespace
}  // namespace qorvane
