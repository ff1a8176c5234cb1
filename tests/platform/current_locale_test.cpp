// The process-wide locale as each platform provides it. On Windows this holds
// the system's conversions (OLE Automation, NLS) against the built-in table,
// so text written by the Linux build reads back on Windows and the other way
// round. On POSIX the same checks confirm that selection picks the right row.
#include <gtest/gtest.h>

#include <cmath>
#include <regex>
#include <string>

#include "base/variant.h"
#include "platform/locale.h"
#include "platform/pattern_locale.h"
#include "tests/support/process_state.h"

namespace qorvane {
namespace {

long long Seconds(double date) { return std::llround(date * 86400.0); }

// Selecting every built-in locale is SystemAgreesWithTable's first step.
TEST(CurrentLocale, RefusesUnknownNamesTakesCAsUnitedStatesAndRestoresTheUsers) {
  const testing::ScopedLocale found(CurrentLocale().Name().c_str());
  SelectUserLocale();
  const std::string user = CurrentLocale().Name();
  EXPECT_FALSE(user.empty());
  ASSERT_TRUE(SelectLocale("de_DE.UTF-8"));
  EXPECT_FALSE(SelectLocale("xx-YY"));
  EXPECT_FALSE(SelectLocale(""));
  EXPECT_EQ(CurrentLocale().TimeFormat(), "HH:mm:ss") << "unchanged by a refused name";
  for (const char* name : {"C", "POSIX"}) {
    ASSERT_TRUE(SelectLocale(name)) << name;
    EXPECT_EQ(CurrentLocale().FormatGeneralDate(45719.75), "3/3/2025 6:00:00 PM") << name;
  }
  SelectUserLocale();
  EXPECT_EQ(CurrentLocale().Name(), user);
}

// CLng and IsNumeric read with whichever locale is current when they run.
TEST(CurrentLocale, NumberConversionsFollowIt) {
  const struct {
    const char* locale;
    const char* text;
    std::int32_t value;
  } cases[] = {
      {"en-US", "1,000", 1000}, {"en-US", "2.5", 2}, {"de-DE", "1.000", 1000}, {"de-DE", "1,5", 2},
      {"fr-FR", "1 000", 1000}, {"fr-FR", "3,5", 4},
  };
  for (const auto& c : cases) {
    const testing::ScopedLocale locale(c.locale);
    ASSERT_TRUE(locale.ok());
    EXPECT_EQ(CLng(c.text), c.value) << c.locale << " " << c.text;
  }
  const testing::ScopedLocale german("de-DE");
  EXPECT_EQ(Variant("1,5").NumericValue(), 1.5);
}

class SystemAgreesWithTable : public ::testing::TestWithParam<std::string> {};

TEST_P(SystemAgreesWithTable, SameTextBothWays) {
  const testing::ScopedLocale locale(GetParam().c_str());
  ASSERT_TRUE(locale.ok());
  const Locale& system = CurrentLocale();
  const PatternLocale table(*BuiltinLocalePatterns(GetParam()));
  EXPECT_EQ(system.ShortDateFormat(), table.ShortDateFormat());
  EXPECT_EQ(system.TimeFormat(), table.TimeFormat());
  EXPECT_EQ(system.TimeSeparator(), table.TimeSeparator());
  EXPECT_EQ(system.FirstDayOfWeek(), table.FirstDayOfWeek());
  EXPECT_EQ(system.DecimalSeparator(), table.DecimalSeparator());
  EXPECT_EQ(system.ThousandSeparator(), table.ThousandSeparator());
  const double dates[] = {
      45719.395833333336, 45719.0, 0.3958333333333333, 0.0, 0.5,  // date and time, each alone, day zero
      45729.895833333336,                                           // day 13: day and month cannot be mixed up
      47180.75, 11020.25, 36526.0,                                  // 2029, 1930, 2000-01-01
      45657.999988425926, 45719.9999999, 45719.0000001, 0.9999999,  // 23:59:59 and rounding either way
      -1.25, 2958465.999988426,                                     // before day zero, the last second there is
  };
  for (const double date : dates) {
    const std::string ours = table.FormatGeneralDate(date);
    const std::string theirs = system.FormatGeneralDate(date);
    EXPECT_EQ(ours, theirs) << date;
    const auto readByThem = system.ParseDate(ours);
    const auto readByUs = table.ParseDate(theirs);
    ASSERT_TRUE(readByThem) << "\"" << ours << "\"";
    ASSERT_TRUE(readByUs) << "\"" << theirs << "\"";
    EXPECT_EQ(Seconds(*readByThem), Seconds(*readByUs)) << ours;
  }
}

INSTANTIATE_TEST_SUITE_P(AllBuiltins, SystemAgreesWithTable, ::testing::ValuesIn(BuiltinLocaleNames()),
                         [](const auto& info) { return std::regex_replace(info.param, std::regex("-"), "_"); });

}  // namespace
}  // namespace qorvane
