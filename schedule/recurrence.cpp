// The recurrence engine: turns a record's pattern into send times, places a
// record on its first occurrence and moves it on after each send.
//
// Every step follows the runtime's calendar semantics exactly (month addition
// clamps, DateSerial rolls over, weekly walks test every day), because the
// dates it yields must be the ones that schedules written by earlier versions
// expect. An occurrence is always a whole day plus m_StartTime.
#include <cstdint>
#include <optional>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "platform/locale.h"
#include "schedule/first_dow.h"
#include "schedule/mail_props.h"

using namespace qorvane;

namespace {

constexpr std::int32_t kDateListingCap = 999;
constexpr int kCountListingYears = 1000;

bool MaskHasWeekday(std::int32_t mask, int sunday0) { return (mask >> sunday0) & 1; }

// The limits of one listing and the "room" test every loop asks.
struct Limits {
  std::int32_t count;
  double until;

  bool Room(const DateList& result, double cursor) const {
    return static_cast<std::int64_t>(result.size()) < count && cursor <= until;
  }
};

// A listing by date takes dates and text that reads as a date; a listing by
// count takes anything numeric. The date test comes first.
std::optional<double> AsLimitDate(const Variant& param) {
  if (param.GetKind() == Variant::Kind::Date) return param.AsDate();
  if (param.GetKind() == Variant::Kind::String) return CurrentLocale().ParseDate(param.AsString());
  return std::nullopt;
}

}  // namespace

std::optional<DateList> CMailProps::GetOccurrences(const Variant& EndDateOrNumOccurrences) {
  return GetOccurrences1(EndDateOrNumOccurrences);
}

std::int32_t CMailProps::GetInstanceDay(std::int32_t year, std::int32_t month, std::int32_t instance,
                                        std::int32_t mask) {
  const double first = DateSerialRollOver(year, month, 1);
  const auto firstSerial = SerialDay(first);
  const auto days = static_cast<std::int32_t>(SerialDay(AddMonthsClamped(first, 1)) - firstSerial);
  if (mask >= 128 || mask == 0 || instance >= 6) {
    g_debug.OutWarning("CMailProps::GetInstanceDay - Invalid Params",
                       "instance " + std::to_string(instance) + ", mask " + std::to_string(mask));
    return 0;
  }
  const int firstWeekday = WeekdayIndexSunday0(firstSerial);
  if (instance != kInstanceLast) {
    std::int16_t count = 0;
    for (std::int32_t day = 1; day <= days; ++day) {
      if (MaskHasWeekday(mask, (firstWeekday + day - 1) % 7)) {
        ++count;
        if (count == instance) return day;
      }
    }
  } else {
    for (std::int32_t day = days; day >= 1; --day) {
      if (MaskHasWeekday(mask, (firstWeekday + day - 1) % 7)) return day;
    }
  }
  g_debug.OutWarning("CMailProps::GetInstanceDay - Stop",
                     "instance " + std::to_string(instance) + ", mask " + std::to_string(mask));
  return 0;
}

std::optional<DateList> CMailProps::GetOccurrences1(const Variant& param) {
  std::optional<DateList> result;
  Trap("CMailProps::GetOccurrences1", [&] {
    Limits limits{};
    if (const std::optional<double> until = AsLimitDate(param)) {
      limits = {kDateListingCap, DatePart(*until) + m_StartTime};
    } else if (const std::optional<double> count = param.NumericValue()) {
      limits = {CLng(*count), AddYearsClamped(m_PatternStartDate + m_StartTime, kCountListingYears)};
    } else {
      g_debug.OutWarning("CMailProps::GetOccurrences1", "GetOccurrences invalid param");
      Raise(err::kTypeMismatch);
    }

    DateList list;
    if (limits.count > 0 && limits.count <= kDateListingCap + 1) list.reserve(static_cast<std::size_t>(limits.count));
    double cursor = m_PatternStartDate + m_StartTime;

    switch (m_RecurrenceType) {
      case kRecursDaily:
        if (m_Interval != 0) {
          while (limits.Room(list, cursor)) {
            list.push_back(cursor);
            cursor = AddDays(cursor, m_Interval);
          }
        } else {
          while (limits.Room(list, cursor)) {
            if (MaskHasWeekday(m_DayOfWeekMask, WeekdayIndexSunday0(SerialDay(cursor)))) list.push_back(cursor);
            cursor = AddDays(cursor, 1);
          }
        }
        break;

      case kRecursWeekly: {
        // Weeks are aligned to the user's first day of the week; the week that
        // holds the pattern start is the first one.
        int i = Weekday(cursor, EffectiveFirstDOW());
        while (limits.Room(list, cursor)) {
          while (i <= 7) {
            if (MaskHasWeekday(m_DayOfWeekMask, WeekdayIndexSunday0(SerialDay(cursor)))) {
              if (!limits.Room(list, cursor)) break;
              list.push_back(cursor);
            }
            cursor = AddDays(cursor, 1);
            ++i;
          }
          if (m_Interval > 1) cursor = AddDays(cursor, m_Interval * 7 - 7);
          i = 1;
        }
        break;
      }

      case kRecursMonthly: {
        auto target = [&] {
          const int n = DaysInMonth(cursor);
          return m_DayOfMonth <= n ? m_DayOfMonth : n;
        };
        // The start month has no occurrence left: skip a whole interval.
        if (Day(m_PatternStartDate) > target()) cursor = AddMonthsClamped(cursor, m_Interval);
        for (;;) {
          cursor = AddDays(cursor, target() - Day(cursor));
          if (!limits.Room(list, cursor)) break;
          list.push_back(cursor);
          cursor = AddMonthsClamped(cursor, m_Interval);
        }
        break;
      }

      case kRecursMonthNth: {
        double month = DateSerialRollOver(Year(cursor), Month(cursor), 1);
        const std::int32_t d = GetInstanceDay(Year(month), Month(month), m_Instance, m_DayOfWeekMask);
        if (Day(m_PatternStartDate) > d) month = AddMonthsClamped(month, m_Interval);
        for (;;) {
          const CivilDate civil = ToCivil(month);
          const std::int32_t day = GetInstanceDay(civil.year, civil.month, m_Instance, m_DayOfWeekMask);
          cursor = DateSerialRollOver(civil.year, civil.month, day) + m_StartTime;
          if (!limits.Room(list, cursor)) break;
          list.push_back(cursor);
          month = AddMonthsClamped(month, m_Interval);
        }
        break;
      }

      case kRecursYearly: {
        auto target = [&] {
          const int n = DaysInMonth(cursor);
          return m_DayOfMonth <= n ? m_DayOfMonth : n;
        };
        // Clamped against the pattern start's month, not m_MonthOfYear; the
        // loop below moves a rolled-over day back within its month.
        cursor = DateSerialRollOver(Year(cursor), m_MonthOfYear, target());
        if (cursor < m_PatternStartDate) cursor = AddYearsClamped(cursor, 1);
        cursor = cursor + m_StartTime;
        for (;;) {
          cursor = AddDays(cursor, target() - Day(cursor));
          if (!limits.Room(list, cursor)) break;
          list.push_back(cursor);
          cursor = AddYearsClamped(cursor, 1);
        }
        break;
      }

      case kRecursYearNth: {
        const int startYear = Year(cursor);
        const std::int32_t d = GetInstanceDay(startYear, m_MonthOfYear, m_Instance, m_DayOfWeekMask);
        double first = DateSerialRollOver(startYear, m_MonthOfYear, d);
        if (first < m_PatternStartDate) first = AddYearsClamped(first, 1);
        for (int year = Year(first);; ++year) {
          const std::int32_t day = GetInstanceDay(year, m_MonthOfYear, m_Instance, m_DayOfWeekMask);
          cursor = DateSerialRollOver(year, m_MonthOfYear, day) + m_StartTime;
          if (!limits.Room(list, cursor)) break;
          list.push_back(cursor);
        }
        break;
      }

      default:
        break;
    }
    result = std::move(list);
  });
  return result;
}

void CMailProps::SetFirstOccurrence() {
  if (!m_IsRecurring) return;
  const std::optional<DateList> list = GetOccurrences(Variant(1));
  if (!list) Raise(err::kObjectNotSet);
  if (list->empty()) Raise(err::kSubscriptOutOfRange);
  m_ScheduleTime = list->front();
  m_PatternStartDate = DatePart(m_ScheduleTime);
}

bool CMailProps::SetNextOccurrence() {
  if (!m_IsRecurring || (!m_NoEndDate && m_Occurrences < 2)) return false;
  const std::optional<DateList> list = GetOccurrences(Variant(2));
  if (!list) Raise(err::kObjectNotSet);
  if (list->size() < 2) Raise(err::kSubscriptOutOfRange);
  m_ScheduleTime = (*list)[1];
  m_PatternStartDate = DatePart(m_ScheduleTime);
  if (!m_NoEndDate) m_Occurrences = m_Occurrences - 1;
  return true;
}

double CMailProps::GetLastOccurrence() {
  double last = 0.0;
  Trap("GetLastOccurrence", [&] {
    const std::optional<DateList> list = GetOccurrences(Variant(m_Occurrences >= 1 ? m_Occurrences : 1));
    if (!list) Raise(err::kObjectNotSet);
    if (list->empty()) Raise(err::kSubscriptOutOfRange);
    last = list->back();
  });
  return last;
}
