// Main: the schedule of a due item, read the way sending needs it.
//
// CMailProps::ReadProps takes a schedule whole or not at all. Sending needs
// less, and must not wait forever on a field it never uses: a one-time mail
// needs its send time and its attachments; a recurring mail also its
// pattern's numbers. The pattern start and the start time are locale text in
// the line, while the send time ("ScheduleTime") is a typed date; after every
// advance the pattern start is the send time's date and every occurrence
// carries the start time, so when those texts can't be read, or were written
// under another locale's formats and may have read as other dates, the send
// time stands in for them. The end date is never needed.
#pragma once

#include <optional>
#include <string>

#include "schedule/mail_props.h"

namespace Main {

struct DueSchedule {
  CMailProps props;
  // Empty when the mail can be sent; otherwise a short cause ("send time",
  // "schedule line", "pattern") and what exactly is wrong.
  std::string cause;
  std::string details;
  // The pattern start and start time were set from the send time.
  bool anchoredOnSendTime = false;
  // The two properties as they were read, to be put back unchanged.
  double savedTime = 0.0;
  std::optional<std::string> savedLine;
};

// Reads the item's schedule for sending. A failing call into the client is
// raised to the caller; a schedule that is there but unusable is reported in
// cause and details.
DueSchedule ReadDueSchedule(const client::Ref<client::Item>& item);

// Puts the item's "ScheduleTime" and recurrence line back exactly as they
// were read. Does not save the item. Failures are logged, not raised.
void RestoreSchedule(const client::Ref<client::Item>& item, const DueSchedule& read);

}  // namespace Main
