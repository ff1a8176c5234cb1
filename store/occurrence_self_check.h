// The recurrence engine checked against the mail client's own calendar:
// both list the same pattern (CMailProps::GetOccurrences and
// GetOccurrences2), and the two lists are compared date by date. Where the
// engine's rules differ from the calendar's on purpose, the difference is
// put down to its reason, so that a check over many patterns reports only
// what nobody meant.
//
// Needs a connected client (client/application.h); the calendar gets a test
// appointment for the length of one comparison. UI thread only.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "schedule/mail_props.h"

namespace Main {

inline constexpr const char* kTestAppointmentSubject = "QorvaneTestAppointment";

struct OccurrenceComparison {
  bool engineListed = false;   // the engine gave a list at all
  qorvane::DateList engine;    // GetOccurrences
  qorvane::DateList calendar;  // GetOccurrences2
  // Positions (from 1) where both have an occurrence and the times differ
  // by a second or more.
  std::vector<std::size_t> differingAt;

  bool Agree() const {
    return engineListed && engine.size() == calendar.size() && differingAt.empty();
  }
};

// Lists the record's pattern both ways up to the same limit (a count or a
// date, as GetOccurrences takes it). The record is not changed.
OccurrenceComparison CompareOccurrences(CMailProps& record, const qorvane::Variant& limit);

// Where the engine differs from the calendar by design.
enum class ByDesign {
  None,
  // Weekly every n > 1 weeks: the engine counts weeks from the user's first
  // day of the week, the calendar from Sunday.
  WeeksFromFirstDayOfWeek,
  // Yearly on a day its month does not have: the engine clamps it against
  // the pattern start's month, and the date rolls over into the next month.
  YearlyDayClampedToStartMonth,
  // A listing up to a date stops after 999 occurrences.
  DateListingCap,
};

std::string_view ByDesignReason(ByDesign reason);

// The reason the lists differ, for a comparison of the record's pattern up
// to `limit` that does not agree; None when no rule of the engine's explains
// it. Each reason is proven, not assumed: the engine listing again under
// Sunday as the first day of the week gives the calendar's list; the
// calendar listing the day in the month after gives the engine's; the
// engine's list is the calendar's cut at the cap.
ByDesign ExplainDifference(CMailProps& record, const qorvane::Variant& limit, const OccurrenceComparison& comparison);

}  // namespace Main
