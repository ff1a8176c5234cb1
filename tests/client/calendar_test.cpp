// Conformance: the calendar's own expansion of recurring appointments, set
// up the way the add-in's self-check does it (an appointment restricted by
// subject, sorted on [Start] with IncludeRecurrences).
#include "base/iso_date_text.h"
#include "base/ole_date.h"
#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

double At(int year, int month, int day, int hour = 0, int minute = 0) {
  return qorvane::DateSerialRollOver(year, month, day) + qorvane::TimeSerial(hour, minute, 0);
}

using qorvane::IsoMinuteText;

struct RecurrenceCase {
  const char* name;  // also the appointment's subject
  long type, mask, dayOfMonth, monthOfYear, instance, interval;
  double start;
  long occurrences;  // 0: the series ends on endDate instead
  double endDate;
  std::vector<std::string> expected;
};

const RecurrenceCase kCases[] = {
    {"daily every 2 days", 0, 0, 0, 0, 0, 2, At(2025, 3, 3, 9, 30), 3, 0,
     {"2025-03-03 09:30", "2025-03-05 09:30", "2025-03-07 09:30"}},
    {"daily every weekday from a Friday", 0, 62, 0, 0, 0, 1, At(2025, 3, 7, 10, 0), 3, 0,
     {"2025-03-07 10:00", "2025-03-10 10:00", "2025-03-11 10:00"}},
    {"every second week Sunday and Tuesday", 1, 1 | 4, 0, 0, 0, 2, At(2025, 3, 3, 12, 0), 3, 0,
     {"2025-03-04 12:00", "2025-03-16 12:00", "2025-03-18 12:00"}},
    {"weekly Friday until a Friday", 1, 32, 0, 0, 0, 1, At(2025, 3, 3, 17, 0), 0, At(2025, 3, 21),
     {"2025-03-07 17:00", "2025-03-14 17:00", "2025-03-21 17:00"}},
    {"monthly on the 31st", 2, 0, 31, 0, 0, 1, At(2025, 1, 15, 9, 0), 4, 0,
     {"2025-01-31 09:00", "2025-02-28 09:00", "2025-03-31 09:00", "2025-04-30 09:00"}},
    {"every two months on the 5th, after the start day", 2, 0, 5, 0, 0, 2, At(2025, 3, 10, 9, 0), 2, 0,
     {"2025-05-05 09:00", "2025-07-05 09:00"}},
    {"monthly on the last Friday", 3, 32, 0, 0, 5, 1, At(2025, 3, 1, 16, 0), 3, 0,
     {"2025-03-28 16:00", "2025-04-25 16:00", "2025-05-30 16:00"}},
    {"yearly on 29 February", 5, 0, 29, 2, 0, 1, At(2025, 2, 1, 9, 0), 4, 0,
     {"2025-02-28 09:00", "2026-02-28 09:00", "2027-02-28 09:00", "2028-02-29 09:00"}},
    {"yearly on the first Monday of September", 6, 2, 0, 9, 1, 1, At(2025, 1, 1, 9, 0), 3, 0,
     {"2025-09-01 09:00", "2026-09-07 09:00", "2027-09-06 09:00"}},
};

template <class F>
class CalendarTest : public ClientTest<F> {
 protected:
  void Create(const RecurrenceCase& c) {
    const auto appointment = this->app->CreateItem(client::olAppointmentItem)->AsAppointmentItem();
    appointment->Subject(c.name);
    appointment->Start(c.start);
    appointment->End(c.start + 30.0 / 1440);
    appointment->ReminderSet(false);
    const auto pattern = appointment->GetRecurrencePattern();
    pattern->PatternStartDate(qorvane::DatePart(c.start));
    if (pattern->RecurrenceType() != c.type) pattern->RecurrenceType(c.type);
    switch (c.type) {
      case 0:
      case 1: pattern->DayOfWeekMask(c.mask), pattern->Interval(c.interval); break;
      case 2: pattern->DayOfMonth(c.dayOfMonth), pattern->Interval(c.interval); break;
      case 3: pattern->Instance(c.instance), pattern->DayOfWeekMask(c.mask), pattern->Interval(c.interval); break;
      case 5: pattern->DayOfMonth(c.dayOfMonth), pattern->MonthOfYear(c.monthOfYear); break;
      case 6: pattern->Instance(c.instance), pattern->DayOfWeekMask(c.mask), pattern->MonthOfYear(c.monthOfYear); break;
    }
    c.occurrences > 0 ? pattern->Occurrences(c.occurrences) : pattern->PatternEndDate(c.endDate);
    appointment->Save();
  }
  // The start of every item, in the order of [Start], occurrences included.
  static std::vector<std::string> Starts(const Ref<client::Items>& items) {
    items->Sort("[Start]", false);
    items->IncludeRecurrences(true);
    std::vector<std::string> starts;
    for (long i = 1, count = items->Count(); i <= count; ++i)
      starts.push_back(IsoMinuteText(items->Item(i)->AsAppointmentItem()->Start()));
    return starts;
  }
};
TYPED_TEST_SUITE(CalendarTest, ClientFixtures, FixtureNames);

TYPED_TEST(CalendarTest, RecurringAppointmentExpandsIntoItsOccurrences) {
  const auto calendar = this->Folder(client::olFolderCalendar)->Items();
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    this->Create(c);
    const auto items = calendar->Restrict(std::string("[Subject] = \"") + c.name + "\"");
    ASSERT_EQ(items->Count(), 1) << "without IncludeRecurrences a series is one item";
    const auto pattern = items->Item(1)->AsAppointmentItem()->GetRecurrencePattern();
    EXPECT_EQ(pattern->RecurrenceType(), c.type);
    EXPECT_EQ(pattern->PatternStartDate(), qorvane::DatePart(c.start));
    EXPECT_EQ(pattern->Occurrences(), static_cast<long>(c.expected.size())) << "also when given an end date";
    EXPECT_EQ(IsoMinuteText(pattern->PatternEndDate()).substr(0, 10), c.expected.back().substr(0, 10)) << "also when counted";
    EXPECT_EQ(this->Starts(items), c.expected);
  }
}

}  // namespace
}  // namespace client_conformance
