// The engine checked against the simulated client's calendar: patterns
// where the two agree, the differences the engine makes on purpose with the
// reason each is put down to, a difference no rule explains, and the
// message boxes the debug listing shows the user.
#include "store/occurrence_self_check.h"

#include "base/ole_date.h"
#include "platform/locale.h"
#include "platform/message_box.h"
#include "schedule/first_dow.h"
#include "tests/schedule/schedule_test_util.h"
#include "tests/store/store_fixture.h"

namespace qorvane::testing {
namespace {

struct PatternCase {
  const char* name;
  Pattern pattern;
  int firstDayOfWeek;
  Variant limit;          // a count or an end date
  Main::ByDesign reason;  // None: the two agree
};

Variant Until(const char* date) { return Variant(DateValue{At(date)}); }

class ScopedFirstDOW {
 public:
  explicit ScopedFirstDOW(int day) : saved_(FirstDOW()) { SetFirstDOW(day); }
  ~ScopedFirstDOW() { SetFirstDOW(saved_); }
  ScopedFirstDOW(const ScopedFirstDOW&) = delete;
  ScopedFirstDOW& operator=(const ScopedFirstDOW&) = delete;

 private:
  int saved_;
};

class SelfCheckTest : public StoreTest {
 protected:
  long TestAppointmentsLeft() {
    const auto items = sim_.DefaultFolder(client::olFolderCalendar)->Items();
    long left = 0;
    for (long i = 1, n = items->Count(); i <= n; ++i)
      left += items->Item(i)->Subject() == Main::kTestAppointmentSubject;
    return left;
  }

  ScopedLocale locale_{"en-US"};
};

class Comparison : public SelfCheckTest, public ::testing::WithParamInterface<PatternCase> {};

TEST_P(Comparison, AgreesOrDiffersOnlyForItsReason) {
  ScopedFirstDOW firstDay(GetParam().firstDayOfWeek);
  CMailProps record = Record(GetParam().pattern);
  const Main::OccurrenceComparison comparison = Main::CompareOccurrences(record, GetParam().limit);
  ASSERT_TRUE(comparison.engineListed);
  ASSERT_FALSE(comparison.calendar.empty()) << "the calendar listed nothing";
  if (GetParam().reason == Main::ByDesign::None) {
    EXPECT_TRUE(comparison.Agree()) << comparison.engine.size() << " <> " << comparison.calendar.size();
  } else {
    EXPECT_FALSE(comparison.Agree()) << "the reason no longer shows";
    EXPECT_EQ(Main::ExplainDifference(record, GetParam().limit, comparison), GetParam().reason)
        << Main::ByDesignReason(GetParam().reason);
  }
  EXPECT_EQ(FirstDOW(), GetParam().firstDayOfWeek) << "the explanation puts the first day back";
  EXPECT_EQ(TestAppointmentsLeft(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, Comparison,
    ::testing::Values(
        PatternCase{"DailyEveryThird", {0, 3, 0, 0, 0, 0, "2025-03-05"}, 1, Variant(20), Main::ByDesign::None},
        PatternCase{"EveryWeekday", {0, 0, 62, 0, 0, 0, "2025-03-05"}, 2, Variant(30), Main::ByDesign::None},
        PatternCase{
            "WeeklyEveryOtherFromSunday", {1, 2, 9, 0, 0, 0, "2025-03-05"}, 1, Variant(12), Main::ByDesign::None},
        PatternCase{
            "WeeklyEveryWeekFromMonday", {1, 1, 9, 0, 0, 0, "2025-03-05"}, 2, Variant(12), Main::ByDesign::None},
        PatternCase{"MonthlyOnThe31st", {2, 1, 0, 31, 0, 0, "2025-01-31"}, 1, Variant(14), Main::ByDesign::None},
        PatternCase{
            "LastFridayOfTheMonth", {3, 1, 32, 0, 0, 5, "2025-01-01"}, 1, Until("2026-12-31"), Main::ByDesign::None},
        PatternCase{"SecondWeekendDay", {3, 2, 65, 0, 0, 2, "2025-01-01"}, 1, Variant(10), Main::ByDesign::None},
        PatternCase{"YearlyOnTheFourthOfJuly", {5, 1, 0, 4, 7, 0, "2025-01-01"}, 1, Variant(5), Main::ByDesign::None},
        PatternCase{"FirstMondayOfSeptember", {6, 1, 2, 0, 9, 1, "2025-01-01"}, 1, Variant(6), Main::ByDesign::None},
        // Wednesday 5 March 2025: the Sunday after it is in the same week
        // from Monday, in the next one from Sunday.
        PatternCase{"WeeklyEveryOtherFromMonday",
                    {1, 2, 9, 0, 0, 0, "2025-03-05"},
                    2,
                    Variant(12),
                    Main::ByDesign::WeeksFromFirstDayOfWeek},
        PatternCase{"YearlyOn31April",
                    {5, 1, 0, 31, 4, 0, "2025-01-10"},
                    1,
                    Until("2030-12-31"),
                    Main::ByDesign::YearlyDayClampedToStartMonth},
        PatternCase{"DailyPastTheCap",
                    {0, 1, 0, 0, 0, 0, "2025-01-01"},
                    1,
                    Until("2030-01-01"),
                    Main::ByDesign::DateListingCap}),
    [](const auto& info) { return std::string(info.param.name); });

// A calendar one day off is nobody's design: no reason may cover it.
TEST_F(SelfCheckTest, ADifferenceNoRuleExplainsIsReportedAsSuch) {
  const PatternCase monthly{"", {2, 1, 0, 15, 0, 0, "2025-01-01"}, 1, Variant(6), Main::ByDesign::None};
  CMailProps record = Record(monthly.pattern);
  Main::OccurrenceComparison shifted = Main::CompareOccurrences(record, monthly.limit);
  ASSERT_TRUE(shifted.Agree());
  for (double& date : shifted.calendar) date += 1;
  shifted.differingAt = {1, 2, 3, 4, 5, 6};
  EXPECT_EQ(Main::ExplainDifference(record, monthly.limit, shifted), Main::ByDesign::None);
  shifted.calendar.pop_back();
  shifted.differingAt.pop_back();
  EXPECT_EQ(Main::ExplainDifference(record, monthly.limit, shifted), Main::ByDesign::None);
}

TEST_F(SelfCheckTest, DebugListingShowsNothingWhenBothAgree) {
  CMailProps record = Record(Pattern{3, 1, 32, 0, 0, 5, "2025-01-01"});
  record.m_IsRecurring = false;
  const std::optional<DateList> listed = record.GetOccurrencesDebug(Variant(12));
  ASSERT_TRUE(listed.has_value());
  EXPECT_EQ(listed->size(), 12u);
  EXPECT_EQ(listed->front(), DateSerialRollOver(2025, 1, 31) + TimeSerial(9, 30, 0));
  EXPECT_TRUE(sim_.MessageBoxes().empty());
  EXPECT_FALSE(record.m_IsRecurring) << "put back as it was";
  EXPECT_EQ(TestAppointmentsLeft(), 0);
}

TEST_F(SelfCheckTest, DebugListingShowsTheDatesThatDiffer) {
  ScopedFirstDOW monday(2);
  CMailProps record = Record(Pattern{1, 2, 9, 0, 0, 0, "2025-03-05"});
  const Main::OccurrenceComparison comparison = Main::CompareOccurrences(record, Variant(4));
  const std::optional<DateList> listed = record.GetOccurrencesDebug(Variant(4));
  ASSERT_TRUE(listed.has_value());
  EXPECT_EQ(*listed, comparison.engine) << "the engine's own list";
  const Locale& locale = CurrentLocale();
  std::string dates;
  for (std::size_t i : comparison.differingAt) {
    dates += std::to_string(i) + ": " + locale.FormatGeneralDate(comparison.engine[i - 1]) + " <> " +
             locale.FormatGeneralDate(comparison.calendar[i - 1]) + "\r\n";
  }
  ASSERT_FALSE(dates.empty());
  ASSERT_EQ(sim_.MessageBoxes().size(), 1u);
  EXPECT_EQ(sim_.MessageBoxes()[0].prompt, record.GetDescText(false) + "\r\nError in dates: \r\n" + dates);
  EXPECT_TRUE(sim_.MessageBoxes()[0].buttons & vbSystemModal);
  EXPECT_TRUE(record.m_IsRecurring);
}

// A calendar that cannot take the test appointment lists nothing: the
// counts differ, and the failure is in the log.
TEST_F(SelfCheckTest, DebugListingShowsTheCountsWhenTheCalendarFails) {
  CMailProps record = Record(Pattern{0, 1, 0, 0, 0, 0, "2025-03-05"});
  sim_.FailCall("AppointmentItem.Save", 1);
  const std::optional<DateList> listed = record.GetOccurrencesDebug(Variant(3));
  ASSERT_TRUE(listed.has_value());
  EXPECT_EQ(listed->size(), 3u);
  ASSERT_EQ(sim_.MessageBoxes().size(), 1u);
  EXPECT_EQ(sim_.MessageBoxes()[0].prompt, record.GetDescText(false) + "\r\ncol1.count = 3\r\ncol2.count = 0");
  EXPECT_TRUE(log_.LogContains("GetOccurrences2")) << log_.LogText();
  EXPECT_EQ(TestAppointmentsLeft(), 0);
}

}  // namespace
}  // namespace qorvane::testing
