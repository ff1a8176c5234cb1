// The engine's listing beside the client calendar's, and the self-check
// that shows the user where they differ.
#include "store/occurrence_self_check.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "client/application.h"
#include "client/folders.h"
#include "client/items.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "platform/locale.h"
#include "platform/message_box.h"
#include "schedule/first_dow.h"

using namespace qorvane;

namespace {

constexpr const char* kLineBreak = "\r\n";
constexpr double kAppointmentMinutes = 30.0;
constexpr std::size_t kDateListingCap = 999;
// The calendar is read one past the longest listing the engine gives, so
// that an extra occurrence shows as a difference in count.
constexpr std::size_t kMostRead = 1001;

// A listing up to a date: a date, or text that reads as one (as the engine
// takes its limit). Anything else is a count.
std::optional<double> LimitDate(const Variant& limit) {
  if (limit.GetKind() == Variant::Kind::Date) return limit.AsDate();
  if (limit.GetKind() == Variant::Kind::String) return CurrentLocale().ParseDate(limit.AsString());
  return std::nullopt;
}

// Whole seconds apart.
bool DifferBySeconds(double a, double b) { return std::llround(a * 86400.0) != std::llround(b * 86400.0); }

// The engine's list is the calendar's, or the calendar's cut at the cap of
// a listing up to a date.
bool SameUpToCap(const DateList& engine, const DateList& calendar) {
  const bool capped = engine.size() == kDateListingCap && calendar.size() > kDateListingCap;
  return (engine.size() == calendar.size() || capped) &&
         std::equal(engine.begin(), engine.end(), calendar.begin(),
                    [](double x, double y) { return !DifferBySeconds(x, y); });
}

// Every date in the month after the pattern's, on its day (clamped to that
// month), one a year: where a day rolled over by the start month's length
// puts the series. (The year the series starts in may differ too, as the
// rolled-over date is compared with the start.)
bool InTheMonthAfter(const CMailProps& r, const DateList& dates) {
  for (std::size_t i = 0; i < dates.size(); ++i) {
    const CivilDate day = ToCivil(dates[i]);
    if (day.month != r.m_MonthOfYear + 1 || day.day != std::min(r.m_DayOfMonth, DaysInMonth(day.year, day.month)))
      return false;
    if (i > 0 && day.year != Year(dates[i - 1]) + 1) return false;
  }
  return !dates.empty();
}

client::Ref<client::Items> TestAppointments(const client::Ref<client::MAPIFolder>& calendar) {
  return client::Require(client::Require(calendar->Items())
                             ->Restrict(std::string("[Subject] = \"") + Main::kTestAppointmentSubject + "\""));
}

// Left-overs of an earlier run, and this run's appointment afterwards.
void DeleteTestAppointments(const client::Ref<client::MAPIFolder>& calendar) {
  const auto found = TestAppointments(calendar);
  for (long i = found->Count(); i >= 1; --i) client::Require(found->Item(i))->Delete();
}

void SetPattern(const CMailProps& r, client::RecurrencePattern& pattern) {
  pattern.PatternStartDate(r.m_PatternStartDate);
  if (pattern.RecurrenceType() != r.m_RecurrenceType) pattern.RecurrenceType(r.m_RecurrenceType);
  switch (r.m_RecurrenceType) {
    case kRecursDaily:
    case kRecursWeekly:
      pattern.DayOfWeekMask(r.m_DayOfWeekMask);
      pattern.Interval(r.m_Interval);
      break;
    case kRecursMonthly:
      pattern.DayOfMonth(r.m_DayOfMonth);
      pattern.Interval(r.m_Interval);
      break;
    case kRecursMonthNth:
      pattern.Instance(r.m_Instance);
      pattern.DayOfWeekMask(r.m_DayOfWeekMask);
      pattern.Interval(r.m_Interval);
      break;
    case kRecursYearly:
      pattern.DayOfMonth(r.m_DayOfMonth);
      pattern.MonthOfYear(r.m_MonthOfYear);
      break;
    case kRecursYearNth:
      pattern.Instance(r.m_Instance);
      pattern.DayOfWeekMask(r.m_DayOfWeekMask);
      pattern.MonthOfYear(r.m_MonthOfYear);
      break;
    default:
      break;
  }
}

std::string DatesText(const DateList& engine, const DateList& calendar, const std::vector<std::size_t>& at) {
  std::string text;
  const Locale& locale = CurrentLocale();
  for (std::size_t i : at) {
    text += std::to_string(i) + ": " + locale.FormatGeneralDate(engine[i - 1]) + " <> " +
            locale.FormatGeneralDate(calendar[i - 1]) + kLineBreak;
  }
  return text;
}

}  // namespace

DateList CMailProps::GetOccurrences2(const Variant& EndDateOrNumOccurrences) {
  DateList starts;
  client::Ref<client::MAPIFolder> calendar;
  Trap("GetOccurrences2", [&] {
    const auto application = client::Require(client::CurrentApplication());
    calendar = client::Require(
        client::Require(application->GetNamespace("MAPI"))->GetDefaultFolder(client::olFolderCalendar));
    DeleteTestAppointments(calendar);

    const auto appointment =
        client::Require(client::Require(application->CreateItem(client::olAppointmentItem))->AsAppointmentItem());
    appointment->Subject(Main::kTestAppointmentSubject);
    appointment->Start(m_StartTime);
    appointment->End(m_StartTime + kAppointmentMinutes / 1440.0);
    appointment->ReminderSet(false);
    const auto pattern = client::Require(appointment->GetRecurrencePattern());
    SetPattern(*this, *pattern);
    std::size_t most = kMostRead;
    if (const std::optional<double> until = LimitDate(EndDateOrNumOccurrences)) {
      pattern->PatternEndDate(*until);
    } else {
      const std::int32_t count = CLng(EndDateOrNumOccurrences.NumericValue().value_or(0.0));
      pattern->Occurrences(count);
      most = std::max<std::size_t>(most, static_cast<std::size_t>(std::max(count, 0)) + 1);
    }
    appointment->Save();

    const auto occurrences = TestAppointments(calendar);
    occurrences->Sort("[Start]", false);
    occurrences->IncludeRecurrences(true);
    const long count = occurrences->Count();
    for (long i = 1; i <= count && starts.size() < most; ++i)
      starts.push_back(client::Require(client::Require(occurrences->Item(i))->AsAppointmentItem())->Start());
  });
  // The test appointment does not stay in the user's calendar.
  if (calendar) IgnoreErrors([&] { DeleteTestAppointments(calendar); });
  return starts;
}

std::optional<DateList> CMailProps::GetOccurrencesDebug(const Variant& EndDateOrNumOccurrences) {
  const bool wasRecurring = m_IsRecurring;
  m_IsRecurring = true;
  std::optional<DateList> engine;
  try {
    const Main::OccurrenceComparison comparison = Main::CompareOccurrences(*this, EndDateOrNumOccurrences);
    if (comparison.engineListed) engine = comparison.engine;
    const std::string description = GetDescText(false);
    if (comparison.engine.size() != comparison.calendar.size()) {
      MsgBox(description + kLineBreak + "col1.count = " + std::to_string(comparison.engine.size()) + kLineBreak +
                 "col2.count = " + std::to_string(comparison.calendar.size()),
             vbSystemModal);
    }
    if (!comparison.differingAt.empty()) {
      MsgBox(description + kLineBreak + "Error in dates: " + kLineBreak +
                 DatesText(comparison.engine, comparison.calendar, comparison.differingAt),
             vbSystemModal);
    }
  } catch (...) {
    CaptureCurrentException();
    g_debug.OutCustomError("GetOccurrences", "Error:" + Err.Description);
    Err.Clear();
  }
  m_IsRecurring = wasRecurring;
  return engine;
}

namespace Main {

OccurrenceComparison CompareOccurrences(CMailProps& record, const Variant& limit) {
  OccurrenceComparison comparison;
  if (std::optional<DateList> engine = record.GetOccurrences(limit)) {
    comparison.engineListed = true;
    comparison.engine = std::move(*engine);
  }
  comparison.calendar = record.GetOccurrences2(limit);
  const std::size_t common = std::min(comparison.engine.size(), comparison.calendar.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (DifferBySeconds(comparison.engine[i], comparison.calendar[i])) comparison.differingAt.push_back(i + 1);
  }
  return comparison;
}

std::string_view ByDesignReason(ByDesign reason) {
  switch (reason) {
    case ByDesign::WeeksFromFirstDayOfWeek:
      return "weeks of a weekly pattern are counted from the user's first day of the week, the calendar's from Sunday";
    case ByDesign::YearlyDayClampedToStartMonth:
      return "a yearly day its month lacks is clamped against the pattern start's month and rolls into the next month";
    case ByDesign::DateListingCap:
      return "a listing up to a date stops after 999 occurrences";
    case ByDesign::None:
      break;
  }
  return "no known reason";
}

ByDesign ExplainDifference(CMailProps& r, const Variant& limit, const OccurrenceComparison& c) {
  if (r.m_RecurrenceType == kRecursWeekly && r.m_Interval > 1 && EffectiveFirstDOW() != 1) {
    const int firstDayOfWeek = FirstDOW();
    SetFirstDOW(1);
    const std::optional<DateList> fromSunday = r.GetOccurrences(limit);
    SetFirstDOW(firstDayOfWeek);
    if (fromSunday && SameUpToCap(*fromSunday, c.calendar)) return ByDesign::WeeksFromFirstDayOfWeek;
  }
  if (r.m_RecurrenceType == kRecursYearly && r.m_MonthOfYear >= 1 && r.m_MonthOfYear < 12 &&
      r.m_DayOfMonth > DaysInMonth(Year(r.m_PatternStartDate), r.m_MonthOfYear) && InTheMonthAfter(r, c.engine) &&
      (LimitDate(limit) || c.engine.size() == c.calendar.size()))
    return ByDesign::YearlyDayClampedToStartMonth;
  if (c.engineListed && SameUpToCap(c.engine, c.calendar)) return ByDesign::DateListingCap;
  return ByDesign::None;
}

}  // namespace Main
