// What the scheduler tick asks of the deferred folder: the mail items whose
// "ScheduleTime" has come, in folder order, and the earliest "ScheduleTime"
// of all its mail items.
//
// The answers are exactly those of a walk over every item (a mail item with
// a date-time "ScheduleTime" is due when now is not earlier), but a client
// that filters items (version 12 on) does the finding, so that a pass costs
// in proportion to the due items rather than to the folder:
//  - due: a DASL restriction "ScheduleTime <= bound" on the property's
//    schema URL. DASL compares in UTC and without seconds, so the bound is
//    now converted to UTC and rounded up to the whole minute; that gives
//    every due item and perhaps a few not yet due, each re-checked exactly.
//  - earliest: the items that have a "ScheduleTime", sorted on it, the first
//    one that passes the exact check. Sorting needs "ScheduleTime" to be a
//    date-time field of the folder; it is made one when it is missing.
// When the client refuses the filter or the sort (an older store), or finds
// nothing while the earliest send time has already come (it read the bound's
// date differently), that is logged once and the walk answers from then on. A failure on one item skips that item (logged under
// the caller's label); it never stops the others.
//
// Lifecycle: one per connection (it remembers what the client refused).
// UI thread only.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "client/client.h"

class DeferredFolderScan {
 public:
  // The due mail items in folder order. label names the caller in the log.
  std::vector<client::Ref<client::MailItem>> DueItems(const client::Ref<client::MAPIFolder>& folder, double now,
                                                      std::string_view label);
  // The earliest "ScheduleTime" of the folder's mail items; none when no mail
  // item has one. Right after a DueItems that found nothing due, the answer
  // it already had.
  std::optional<double> Earliest(const client::Ref<client::MAPIFolder>& folder, std::string_view label);

  // The DASL filter for "due at now" in the current time zone and locale.
  static std::string DueFilter(double now);
  // A date-time on a whole minute as the client reads filter dates: the
  // locale's short date and time without seconds (the date alone at midnight).
  static std::string FilterDateText(double minute);

 private:
  bool filterRefused_ = false;
  std::optional<std::optional<double>> earliestOfThisPass_;
  bool sortRefused_ = false;
};
