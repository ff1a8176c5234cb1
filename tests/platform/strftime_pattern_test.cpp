// Converting glibc's strftime patterns (D_FMT, T_FMT) into Windows-style
// patterns, and what a locale built from them writes and reads.
#include <gtest/gtest.h>

#include "platform/pattern_locale.h"

namespace qorvane {
namespace {

struct StrftimeCase {
  const char* strftime;
  const char* windows;
};

// Patterns as glibc's locales ship them, then the corners of the syntax.
const StrftimeCase kStrftimeCases[] = {
    {"%m/%d/%Y", "MM/dd/yyyy"},              // en_US D_FMT
    {"%r", "hh:mm:ss tt"},                   // en_US T_FMT
    {"%d/%m/%y", "dd/MM/yy"},                // en_GB D_FMT
    {"%T", "HH:mm:ss"},                      // en_GB, de_DE, fr_FR T_FMT
    {"%d.%m.%Y", "dd.MM.yyyy"},              // de_DE D_FMT
    {"%H.%M.%S", "HH.mm.ss"},                // fi_FI T_FMT
    {"%Y-%m-%d", "yyyy-MM-dd"},              // sv_SE D_FMT
    {"%Y\xE5\xB9\xB4%m\xE6\x9C\x88%d\xE6\x97\xA5", "yyyy\xE5\xB9\xB4MM\xE6\x9C\x88" "dd\xE6\x97\xA5"},  // ja_JP
    {"%e.%-m.%y", "d.M.yy"},
    {"%-d/%-m/%Y", "d/M/yyyy"},
    {"%_H:%M", "H:mm"},
    {"%I:%M:%S %p", "hh:mm:ss tt"},
    {"%l:%M %P", "h:mm tt"},
    {"%k:%M", "H:mm"},
    {"%D", "MM/dd/yy"},
    {"%F", "yyyy-MM-dd"},
    {"%R", "HH:mm"},
    {"%a %b %e", "ddd MMM d"},
    {"%A, %B %d", "dddd, MMMM dd"},
    {"%Ey %Od", "yy dd"},
    {"%H h %M", "HH' h 'mm"},                // letters are quoted, blanks stay with them
    {"at %H o'clock", "'at 'HH' o''clock'"},
    {"100%% %H", "100% HH"},
    {"%H:%M %Z", "HH:mm "},                  // no Windows token for a zone
    {"%", "%"},
    {"", ""},
};

class PatternFromStrftimeTest : public ::testing::TestWithParam<StrftimeCase> {};

TEST_P(PatternFromStrftimeTest, Converts) {
  EXPECT_EQ(PatternFromStrftime(GetParam().strftime), GetParam().windows) << GetParam().strftime;
}

INSTANTIATE_TEST_SUITE_P(Cases, PatternFromStrftimeTest, ::testing::ValuesIn(kStrftimeCases));

TEST(TimeSeparatorOf, TakesTheLiteralAfterTheHour) {
  const struct {
    const char* pattern;
    const char* separator;
  } cases[] = {
      {"h:mm:ss tt", ":"},          {"HH.mm.ss", "."},   {"tt h:mm:ss", ":"}, {"HH 'h' mm 'min' ss 's'", " 'h' "},
      {"HH\xE6\x99\x82mm", "\xE6\x99\x82"}, {"HHmm", ":"}, {"", ":"},        {"mm:ss", ":"},
  };
  for (const auto& c : cases) EXPECT_EQ(TimeSeparatorOf(c.pattern), c.separator) << c.pattern;
}

TEST(StrftimeLocale, WritesAndReadsBackThroughConvertedPatterns) {
  // de_DE and en_US as glibc describes them (German has no designators).
  const struct {
    const char* dateFormat;
    const char* timeFormat;
    const char* written;
  } cases[] = {
      {"%d.%m.%Y", "%T", "03.03.2025 21:30:00"},
      {"%m/%d/%Y", "%r", "03/03/2025 09:30:00 PM"},
      {"%d/%m/%y", "%T", "03/03/25 21:30:00"},
      {"%Y-%m-%d", "%H.%M.%S", "2025-03-03 21.30.00"},
  };
  const double date = 45719.895833333336;
  for (const auto& c : cases) {
    const std::string longTime = PatternFromStrftime(c.timeFormat);
    const PatternLocale locale(
        {"glibc", PatternFromStrftime(c.dateFormat), longTime, TimeSeparatorOf(longTime), "AM", "PM", 2});
    EXPECT_EQ(locale.FormatGeneralDate(date), c.written);
    const auto back = locale.ParseDate(c.written);
    ASSERT_TRUE(back) << c.written;
    EXPECT_NEAR(*back, date, 1e-9) << c.written;
  }
}

}  // namespace
}  // namespace qorvane
