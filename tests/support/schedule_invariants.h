// What the recurrence engine guarantees for every record, whatever it holds,
// as checks that tests and fuzz targets share. Each check returns "" when the
// guarantee holds, otherwise what broke; nothing here depends on a test
// framework.
//
//   ListingFault    a listing is ascending, inside the calendar and its limits
//   AdvanceFault    an advance that reports success moves strictly forward
//   RunEngine       every engine entry on one record: listings by count and
//                   by date, the last occurrence, the description, the first
//                   occurrence and the catch-up loop of a sending pass, with
//                   the work each call took
//
// Work is counted in calendar steps (schedule/recurrence_work.h): no single
// call may take more than a valid 1000-year walk does.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "base/variant.h"
#include "schedule/mail_props.h"
#include "schedule/recurrence_work.h"

namespace qorvane::testing {

// "" when list is absent (a logged failure) or holds at most mostEntries
// occurrences, each inside the calendar, each later than the one before and
// none later than until.
inline std::string ListingFault(const std::optional<DateList>& list, std::uint64_t mostEntries, double until) {
  if (!list) return "";
  if (list->size() > mostEntries || list->size() > kMostOccurrencesListed)
    return "listed " + std::to_string(list->size()) + " occurrences, at most " +
           std::to_string(std::min<std::uint64_t>(mostEntries, kMostOccurrencesListed)) + " allowed";
  for (std::size_t i = 0; i < list->size(); ++i) {
    const double occurrence = (*list)[i];
    if (!IsInCalendar(occurrence)) return "occurrence " + std::to_string(i) + " lies outside the calendar";
    if (!(occurrence <= until)) return "occurrence " + std::to_string(i) + " lies beyond the listing's limit";
    if (i > 0 && !(occurrence > (*list)[i - 1])) return "occurrence " + std::to_string(i) + " is not later than the one before";
  }
  return "";
}

// Equal, or both no number at all.
inline bool SameValue(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

// "" when an advance that reported moved took the send time strictly forward,
// re-anchored the pattern on it and spent one send of a pattern with an end;
// and when one that reported no move changed nothing.
inline std::string AdvanceFault(const CMailProps& before, const CMailProps& after, bool moved) {
  if (!moved) {
    if (!SameValue(after.m_ScheduleTime, before.m_ScheduleTime) || after.m_Occurrences != before.m_Occurrences)
      return "an advance that reported no move changed the record";
    return "";
  }
  if (!(after.m_ScheduleTime > before.m_ScheduleTime)) return "an advance did not move the send time forward";
  if (after.m_PatternStartDate != DatePart(after.m_ScheduleTime)) return "an advance left the pattern start behind";
  if (!before.m_NoEndDate && after.m_Occurrences != before.m_Occurrences - 1)
    return "an advance did not count down the sends left";
  return "";
}

struct EngineRun {
  std::string fault;                 // the first guarantee broken, "" when none
  std::uint64_t mostStepsOfACall = 0;  // the most calendar steps one call took
  std::uint64_t stepsInAll = 0;
  std::uint64_t mostListed = 0;      // the longest listing
  std::uint64_t advances = 0;        // advances the catch-up loop made
};

namespace invariants_detail {

// Runs one engine call, counts its steps, and notes the first fault.
template <class Call>
void Measure(EngineRun& run, const char* what, Call&& call) {
  const std::uint64_t before = RecurrenceStepsTaken();
  std::string fault;
  try {
    fault = call();
  } catch (const RuntimeError&) {
    // A failure reaching the caller is allowed (SetFirstOccurrence, the
    // advances); only what it leaves behind is checked, by the call itself.
  }
  const std::uint64_t steps = RecurrenceStepsTaken() - before;
  run.stepsInAll += steps;
  run.mostStepsOfACall = std::max(run.mostStepsOfACall, steps);
  if (run.fault.empty() && steps > kMostStepsOfAValidWalk)
    run.fault = std::string(what) + " took " + std::to_string(steps) + " calendar steps";
  if (run.fault.empty() && !fault.empty()) run.fault = std::string(what) + ": " + fault;
}

inline std::string ListingByCount(EngineRun& run, CMailProps& record, std::int32_t count) {
  const std::optional<DateList> list = record.GetOccurrences(Variant(count));
  if (list) run.mostListed = std::max<std::uint64_t>(run.mostListed, list->size());
  return ListingFault(list, count < 0 ? 0 : static_cast<std::uint64_t>(count),
                      std::numeric_limits<double>::infinity());
}

inline std::string ListingByDate(EngineRun& run, CMailProps& record, double limit) {
  const std::optional<DateList> list = record.GetOccurrences(DateValue{limit});
  if (list) run.mostListed = std::max<std::uint64_t>(run.mostListed, list->size());
  return ListingFault(list, 999, DatePart(limit) + record.m_StartTime + 1e-9);
}

}  // namespace invariants_detail

// Every engine entry on copies of record. dateLimit is the end of a listing
// by date; now is the clock of the sending pass whose catch-up loop is run
// (it runs at most one advance per day between the send time and now, plus
// two, before it is reported as endless).
inline EngineRun RunEngine(const CMailProps& record, double dateLimit, double now) {
  using namespace invariants_detail;
  EngineRun run;
  // The largest listings come from m_Occurrences (up to 2^31 - 1).
  for (const std::int32_t count : {0, 1, 2, 7, record.m_Occurrences}) {
    CMailProps copy = record;
    Measure(run, "listing by count", [&] { return ListingByCount(run, copy, count); });
  }
  {
    CMailProps copy = record;
    Measure(run, "listing by date", [&] { return ListingByDate(run, copy, dateLimit); });
  }
  {
    CMailProps copy = record;
    Measure(run, "last occurrence", [&] {
      copy.GetLastOccurrence();
      return std::string();
    });
  }
  {
    CMailProps copy = record;
    Measure(run, "description", [&] {
      copy.GetDescText(true);
      return std::string();
    });
  }
  {
    CMailProps copy = record;
    Measure(run, "first occurrence", [&] {
      const CMailProps before = copy;
      copy.SetFirstOccurrence();
      if (!copy.m_IsRecurring)
        return SameValue(copy.m_ScheduleTime, before.m_ScheduleTime) ? std::string() : std::string("a one-time record moved");
      return copy.m_PatternStartDate == DatePart(copy.m_ScheduleTime) ? std::string()
                                                                       : std::string("the pattern start is not the first send's date");
    });
  }
  // The catch-up loop of a sending pass: advance while the send time is due.
  CMailProps copy = record;
  const double span = now - copy.m_ScheduleTime;
  const double most = std::isfinite(span) && span > 0 ? std::min(span, 4e6) + 2 : 2;
  bool done = false;
  while (!done && run.fault.empty()) {
    Measure(run, "catch-up advance", [&] {
      const CMailProps before = copy;
      bool moved = false;
      try {
        moved = copy.SetNextOccurrence();
      } catch (const RuntimeError&) {
        done = true;
        return SameValue(before.m_ScheduleTime, copy.m_ScheduleTime) ? std::string() : std::string("a failed advance moved");
      }
      if (!moved || !(now >= copy.m_ScheduleTime)) done = true;
      if (moved && static_cast<double>(++run.advances) > most) return std::string("the catch-up loop does not end");
      return AdvanceFault(before, copy, moved);
    });
  }
  return run;
}

}  // namespace qorvane::testing
