// The recurrence engine: turns a record's pattern into send times, places a
// record on its first occurrence and moves it on after each send.
//
// Every step follows the runtime's calendar semantics exactly (month addition
// clamps, DateSerial rolls over, weekly walks test every day), because the
// dates it yields must be the ones that schedules written by earlier versions
// expect. An occurrence is always a whole day plus m_StartTime.
//
// A record read from a mail may hold anything, so every walk is bounded
// whatever the fields say: the cursor stays inside the calendar and the
// limits, each listed occurrence is later than the one before (a pattern that
// stops moving, such as a month interval of 0, ends there instead of listing
// one date forever), and a step budget backs both up.
#include <cstdint>
#include <optional>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "platform/locale.h"
#include "schedule/first_dow.h"
#include "schedule/mail_props.h"
#include "schedule/recurrence_work.h"

using namespace qorvane;

namespace {

constexpr std::int32_t kDateListingCap = 999;
constexpr int kCountListingYears = 1000;
// Occurrence times are whole seconds; two times closer than half a second are
// the same moment, however each was computed.
constexpr double kSameMoment = 0.5 / 86400.0;
constexpr const char* kListingLabel = "CMailProps::GetOccurrences1";

std::uint64_t g_stepsTaken = 0;

bool MaskHasWeekday(std::int32_t mask, int sunday0) { return (mask >> sunday0) & 1; }
// Only the seven low bits name weekdays; a mask without any never matches.
bool MaskHasAnyWeekday(std::int32_t mask) { return (mask & 127) != 0; }

// The limits of one listing: the most occurrences and the latest time.
struct Limits {
  std::int64_t count;
  double until;
};

// A listing by date takes dates and text that reads as a date; a listing by
// count takes anything numeric. The date test comes first.
std::optional<double> AsLimitDate(const Variant& param) {
  if (param.GetKind() == Variant::Kind::Date) return param.AsDate();
  if (param.GetKind() == Variant::Kind::String) return CurrentLocale().ParseDate(param.AsString());
  return std::nullopt;
}

// The limit 1000 years ahead that every listing by count has.
double CountListingUntil(const CMailProps& r) {
  return AddYearsClamped(r.m_PatternStartDate + r.m_StartTime, kCountListingYears);
}

enum class InstanceProblem { kNone, kInvalidParams, kNoMatch };

// GetInstanceDay without its log line, so that a walk can log a problem once
// instead of once a month for a thousand years.
std::int32_t FindInstanceDay(std::int32_t year, std::int32_t month, std::int32_t instance, std::int32_t mask,
                             InstanceProblem& problem) {
  const double first = DateSerialRollOver(year, month, 1);
  const auto firstSerial = SerialDay(first);
  const auto days = static_cast<std::int32_t>(SerialDay(AddMonthsClamped(first, 1)) - firstSerial);
  problem = InstanceProblem::kNone;
  if (mask >= 128 || mask == 0 || instance >= 6) {
    problem = InstanceProblem::kInvalidParams;
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
  problem = InstanceProblem::kNoMatch;
  return 0;
}

void LogInstanceProblem(InstanceProblem problem, std::int32_t instance, std::int32_t mask) {
  if (problem == InstanceProblem::kNone) return;
  g_debug.OutWarning(problem == InstanceProblem::kInvalidParams ? "CMailProps::GetInstanceDay - Invalid Params"
                                                                 : "CMailProps::GetInstanceDay - Stop",
                     "instance " + std::to_string(instance) + ", mask " + std::to_string(mask));
}

// One walk over a pattern: the room test every loop asks, the occurrences it
// hands on, and the work it has done.
template <class Visit>
class Walk {
 public:
  Walk(const Limits& limits, Visit& visit) : limits_(limits), visit_(visit) {}

  // The room test, counting one step of the cursor.
  bool Room(double cursor) {
    Step();
    return HasRoom(cursor);
  }
  bool HasRoom(double cursor) const {
    return !ended_ && listed_ < limits_.count && cursor <= limits_.until && IsInCalendar(cursor);
  }
  void Step() {
    ++g_stepsTaken;
    if (++steps_ <= kRecurrenceStepBudget || ended_) return;
    ended_ = true;
    g_debug.OutWarning(kListingLabel, "the pattern did not end within its step budget; listing cut short");
  }
  void Add(double occurrence) {
    if (listed_ > 0 && !(occurrence > last_)) {
      ended_ = true;  // the pattern has stopped moving forward
      return;
    }
    last_ = occurrence;
    ++listed_;
    if (!visit_(occurrence)) ended_ = true;
  }
  // The walk goes on only while the calendar does.
  bool AddMonths(double& date, std::int64_t months) {
    const std::optional<double> sum = AddMonthsClampedInCalendar(date, months);
    if (!sum) ended_ = true;
    else date = *sum;
    return sum.has_value();
  }
  std::int32_t InstanceDay(std::int32_t year, std::int32_t month, std::int32_t instance, std::int32_t mask) {
    InstanceProblem problem = InstanceProblem::kNone;
    const std::int32_t day = FindInstanceDay(year, month, instance, mask, problem);
    if (problem != InstanceProblem::kNone && !instanceLogged_) {
      instanceLogged_ = true;
      LogInstanceProblem(problem, instance, mask);
    }
    return day;
  }

 private:
  Limits limits_;
  Visit& visit_;
  std::int64_t listed_ = 0;
  double last_ = 0.0;
  std::uint64_t steps_ = 0;
  bool ended_ = false;
  bool instanceLogged_ = false;
};

// Hands the pattern's occurrences, in ascending order from the pattern start,
// to visit (which returns false to stop) within the limits. Raises error 5
// for a pattern start outside the calendar.
template <class Visit>
void WalkOccurrences(const CMailProps& r, const Limits& limits, Visit visit) {
  Walk<Visit> walk(limits, visit);
  double cursor = r.m_PatternStartDate + r.m_StartTime;
  if (!IsInCalendar(r.m_PatternStartDate) || !IsInCalendar(cursor)) Raise(err::kInvalidCall);
  const std::int32_t mask = r.m_DayOfWeekMask;

  switch (r.m_RecurrenceType) {
    case kRecursDaily:
      if (r.m_Interval != 0) {
        while (walk.Room(cursor)) {
          walk.Add(cursor);
          cursor = AddDays(cursor, r.m_Interval);
        }
      } else if (MaskHasAnyWeekday(mask)) {
        while (walk.Room(cursor)) {
          if (MaskHasWeekday(mask, WeekdayIndexSunday0(SerialDay(cursor)))) walk.Add(cursor);
          cursor = AddDays(cursor, 1);
        }
      }
      break;

    case kRecursWeekly: {
      if (!MaskHasAnyWeekday(mask)) break;
      // Weeks are aligned to the user's first day of the week; the week that
      // holds the pattern start is the first one.
      int i = Weekday(cursor, EffectiveFirstDOW());
      while (walk.Room(cursor)) {
        while (i <= 7) {
          if (MaskHasWeekday(mask, WeekdayIndexSunday0(SerialDay(cursor)))) {
            if (!walk.HasRoom(cursor)) break;
            walk.Add(cursor);
          }
          walk.Step();
          cursor = AddDays(cursor, 1);
          ++i;
        }
        if (r.m_Interval > 1) cursor = AddDays(cursor, std::int64_t{r.m_Interval} * 7 - 7);
        i = 1;
      }
      break;
    }

    case kRecursMonthly: {
      auto target = [&]() -> std::int64_t {
        const int n = DaysInMonth(cursor);
        return r.m_DayOfMonth <= n ? r.m_DayOfMonth : n;
      };
      // The start month has no occurrence left: skip a whole interval.
      if (Day(r.m_PatternStartDate) > target() && !walk.AddMonths(cursor, r.m_Interval)) break;
      for (;;) {
        cursor = AddDays(cursor, target() - Day(cursor));
        if (!walk.Room(cursor)) break;
        walk.Add(cursor);
        if (!walk.AddMonths(cursor, r.m_Interval)) break;
      }
      break;
    }

    case kRecursMonthNth: {
      double month = DateSerialRollOver(Year(cursor), Month(cursor), 1);
      const std::int32_t d = walk.InstanceDay(Year(month), Month(month), r.m_Instance, mask);
      if (Day(r.m_PatternStartDate) > d && !walk.AddMonths(month, r.m_Interval)) break;
      for (;;) {
        const CivilDate civil = ToCivil(month);
        const std::int32_t day = walk.InstanceDay(civil.year, civil.month, r.m_Instance, mask);
        cursor = DateSerialRollOver(civil.year, civil.month, day) + r.m_StartTime;
        if (!walk.Room(cursor)) break;
        walk.Add(cursor);
        if (!walk.AddMonths(month, r.m_Interval)) break;
      }
      break;
    }

    case kRecursYearly: {
      auto target = [&] {
        const int n = DaysInMonth(cursor);
        return r.m_DayOfMonth <= n ? r.m_DayOfMonth : n;
      };
      // Clamped against the pattern start's month, not m_MonthOfYear; the
      // loop below moves a rolled-over day back within its month.
      cursor = DateSerialRollOver(Year(cursor), r.m_MonthOfYear, target());
      if (cursor < r.m_PatternStartDate && !walk.AddMonths(cursor, 12)) break;
      cursor = cursor + r.m_StartTime;
      for (;;) {
        cursor = AddDays(cursor, std::int64_t{target()} - Day(cursor));
        if (!walk.Room(cursor)) break;
        walk.Add(cursor);
        if (!walk.AddMonths(cursor, 12)) break;
      }
      break;
    }

    case kRecursYearNth: {
      const int startYear = Year(cursor);
      const std::int32_t d = walk.InstanceDay(startYear, r.m_MonthOfYear, r.m_Instance, mask);
      double first = DateSerialRollOver(startYear, r.m_MonthOfYear, d);
      if (first < r.m_PatternStartDate && !walk.AddMonths(first, 12)) break;
      for (int year = Year(first);; ++year) {
        const std::int32_t day = walk.InstanceDay(year, r.m_MonthOfYear, r.m_Instance, mask);
        cursor = DateSerialRollOver(year, r.m_MonthOfYear, day) + r.m_StartTime;
        if (!walk.Room(cursor)) break;
        walk.Add(cursor);
      }
      break;
    }

    default:
      break;
  }
}

// The first occurrence listed from the pattern start, past the first one when
// skipFirst, that is later than `after`, looked for within the limits of a
// listing by count. Raises when there is none, or when the walk fails; the
// caller of an advance is told, nothing is logged here.
double FirstOccurrenceAfter(const CMailProps& r, double after, bool skipFirst) {
  std::optional<double> found;
  std::int64_t index = 0;
  WalkOccurrences(r, {INT32_MAX, CountListingUntil(r)}, [&](double occurrence) {
    if (index++ == 0 && skipFirst) return true;
    if (!(occurrence > after + kSameMoment)) return true;
    found = occurrence;
    return false;
  });
  if (!found) Raise(err::kSubscriptOutOfRange, "none within the 1000 years a pattern is listed for");
  return *found;
}

}  // namespace

namespace qorvane {
std::uint64_t RecurrenceStepsTaken() noexcept { return g_stepsTaken; }
}  // namespace qorvane

std::optional<DateList> CMailProps::GetOccurrences(const Variant& EndDateOrNumOccurrences) {
  return GetOccurrences1(EndDateOrNumOccurrences);
}

std::int32_t CMailProps::GetInstanceDay(std::int32_t year, std::int32_t month, std::int32_t instance,
                                        std::int32_t mask) {
  InstanceProblem problem = InstanceProblem::kNone;
  const std::int32_t day = FindInstanceDay(year, month, instance, mask, problem);
  LogInstanceProblem(problem, instance, mask);
  return day;
}

std::optional<DateList> CMailProps::GetOccurrences1(const Variant& param) {
  std::optional<DateList> result;
  Trap(kListingLabel, [&] {
    Limits limits{};
    if (const std::optional<double> until = AsLimitDate(param)) {
      limits = {kDateListingCap, DatePart(*until) + m_StartTime};
    } else if (const std::optional<double> count = param.NumericValue()) {
      limits = {CLng(*count), CountListingUntil(*this)};
    } else {
      g_debug.OutWarning(kListingLabel, "GetOccurrences invalid param");
      Raise(err::kTypeMismatch);
    }

    DateList list;
    if (limits.count > 0 && limits.count <= kDateListingCap + 1) list.reserve(static_cast<std::size_t>(limits.count));
    WalkOccurrences(*this, limits, [&](double occurrence) {
      list.push_back(occurrence);
      return true;
    });
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

namespace {

// Both advances: the end test, then the move and the re-anchoring.
bool MoveToNextOccurrence(CMailProps& r, double after, bool skipFirst) {
  if (!r.m_IsRecurring || (!r.m_NoEndDate && r.m_Occurrences < 2)) return false;
  r.m_ScheduleTime = FirstOccurrenceAfter(r, after, skipFirst);
  r.m_PatternStartDate = DatePart(r.m_ScheduleTime);
  if (!r.m_NoEndDate) r.m_Occurrences = r.m_Occurrences - 1;
  return true;
}

}  // namespace

bool CMailProps::SetNextOccurrence() { return MoveToNextOccurrence(*this, m_ScheduleTime, true); }

bool CMailProps::SetNextOccurrenceAfter(double after) { return MoveToNextOccurrence(*this, after, false); }

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
