// The self-check over many patterns: random patterns of every type, each
// listed by the recurrence engine and by the mail client's own calendar
// (store/occurrence_self_check.h), with the first day of the week it was
// listed under. `qorvane selfcheck` and its test run these.
#pragma once

#include <random>

#include "base/variant.h"
#include "schedule/mail_props.h"
#include "store/occurrence_self_check.h"

namespace qorvane::tool {

struct SelfCheckCase {
  CMailProps record;
  Variant limit;           // a count or an end date
  int firstDayOfWeek = 1;  // 1 = Sunday .. 7
};

// A pattern as the recurrence dialog's controls can hold it (days of the
// month 1..31 for every month, the weekday lists' masks, intervals of a few
// units), starting between 2000 and 2040, listed by a count, up to a date,
// or now and then up to a date far enough away to pass the engine's cap.
SelfCheckCase RandomSelfCheckCase(std::mt19937& random);

struct SelfCheckResult {
  Main::OccurrenceComparison comparison;
  Main::ByDesign reason = Main::ByDesign::None;  // for a comparison that does not agree

  bool Unexplained() const { return !comparison.Agree() && reason == Main::ByDesign::None; }
};

// Lists the case both ways through the current client, the engine under
// the case's first day of the week (the setting is put back afterwards).
SelfCheckResult RunSelfCheckCase(SelfCheckCase& c);

}  // namespace qorvane::tool
