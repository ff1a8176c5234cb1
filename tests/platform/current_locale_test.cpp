// The process-wide locale as each platform provides it. On Windows this holds
// the system's own conversions (OLE Automation, NLS) against the built-in
// table: text written by the Linux build must read back on Windows and the
// other way round. On POSIX the current locale is the table row itself, so
// the same checks confirm that selection picks the right row.
#include <gtest/gtest.h>

#include <cmath>

#include "locale_pin.h"
#include "platform/locale.h"
#include "platform/pattern_locale.h"

namespace qorvane {
namespace {

using testing::LocalePin;

long long Seconds(double date) { return std::llround(date * 86400.0); }

TEST(CurrentLocale, SelectsByAnySpellingAndRefusesUnknownNames) {
  LocalePin pin("en-US");
  EXPECT_FALSE(SelectLocale("xx-YY"));
  EXPECT_FALSE(SelectLocale(""));
  EXPECT_EQ(CurrentLocale().TimeFormat(), "h:mm:ss tt");  // unchanged
  ASSERT_TRUE(SelectLocale("de_DE.UTF-8"));
  EXPECT_EQ(CurrentLocale().Name(), "de-DE");
  EXPECT_EQ(CurrentLocale().TimeFormat(), "HH:mm:ss");
  EXPECT_EQ(CurrentLocale().FirstDayOfWeek(), 2);
}

TEST(CurrentLocale, PosixDefaultNamesMeanUnitedStates) {
  for (const char* name : {"C", "POSIX"}) {
    LocalePin pin(name);
    EXPECT_EQ(CurrentLocale().ShortDateFormat(), "M/d/yyyy") << name;
    EXPECT_EQ(CurrentLocale().FormatGeneralDate(0), "12:00:00 AM") << name;
  }
}

TEST(CurrentLocale, UnitedStatesGeneralDates) {
  LocalePin pin("en-US");
  const struct {
    double date;
    const char* text;
  } cases[] = {
      {45719.395833333336, "3/3/2025 9:30:00 AM"},
      {0.3958333333, "9:30:00 AM"},
      {45719, "3/3/2025"},
      {0, "12:00:00 AM"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CurrentLocale().FormatGeneralDate(c.date), c.text);
    const auto back = CurrentLocale().ParseDate(c.text);
    ASSERT_TRUE(back) << c.text;
    EXPECT_EQ(Seconds(*back), Seconds(c.date)) << c.text;
  }
  EXPECT_FALSE(CurrentLocale().ParseDate("not a date"));
  EXPECT_EQ(CurrentLocale().TimeSeparator(), ":");
  EXPECT_EQ(CurrentLocale().FirstDayOfWeek(), 1);
}

TEST(CurrentLocale, UserLocaleIsRestorable) {
  SelectUserLocale();
  const std::string user = CurrentLocale().Name();
  EXPECT_FALSE(user.empty());
  {
    LocalePin pin("fr-FR");
    EXPECT_EQ(CurrentLocale().Name(), "fr-FR");
  }
  EXPECT_EQ(CurrentLocale().Name(), user);
}

#ifndef _WIN32
// Locales outside the table come from glibc when it has them installed.
TEST(CurrentLocale, GlibcLocaleOutsideTheTable) {
  const std::string saved = CurrentLocale().Name();
  if (!SelectLocale("fi_FI.UTF-8")) GTEST_SKIP() << "fi_FI.UTF-8 is not installed";
  const Locale& finnish = CurrentLocale();
  EXPECT_EQ(finnish.ShortDateFormat(), "dd.MM.yyyy");
  EXPECT_EQ(finnish.TimeFormat(), "HH.mm.ss");
  EXPECT_EQ(finnish.TimeSeparator(), ".");
  EXPECT_EQ(finnish.FirstDayOfWeek(), 2);
  EXPECT_EQ(finnish.FormatGeneralDate(45719.395833333336), "03.03.2025 09.30.00");
  const auto back = finnish.ParseDate("03.03.2025 09.30.00");
  ASSERT_TRUE(back);
  EXPECT_EQ(Seconds(*back), Seconds(45719.395833333336));
  EXPECT_TRUE(SelectLocale(saved));
}
#endif

class SystemAgreesWithTable : public ::testing::TestWithParam<std::string> {};

TEST_P(SystemAgreesWithTable, SameTextBothWays) {
  LocalePin pin(GetParam());
  const Locale& system = CurrentLocale();
  const PatternLocale table(*BuiltinLocalePatterns(GetParam()));

  EXPECT_EQ(system.ShortDateFormat(), table.ShortDateFormat());
  EXPECT_EQ(system.TimeFormat(), table.TimeFormat());
  EXPECT_EQ(system.TimeSeparator(), table.TimeSeparator());
  EXPECT_EQ(system.FirstDayOfWeek(), table.FirstDayOfWeek());

  const double dates[] = {
      45719.395833333336,  // date and time
      45719.0,             // date alone
      0.3958333333333333,  // time alone
      0.0,                 // midnight of day zero
      0.5,                 // noon of day zero
      45729.895833333336,  // day 13: day and month cannot be mixed up
      47180.75,            // 2029
      11020.25,            // 1930
      36526.0,             // 2000-01-01
      45657.999988425926,  // 23:59:59
      45719.9999999,       // rounds into the next day
      45719.0000001,       // rounds down to midnight
      0.9999999,           // day zero, rounding to midnight
      -1.25,               // before day zero
      2958465.999988426,   // the last second there is
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
                         [](const auto& info) {
                           std::string name = info.param;
                           for (char& c : name) c = c == '-' ? '_' : c;
                           return name;
                         });

}  // namespace
}  // namespace qorvane
