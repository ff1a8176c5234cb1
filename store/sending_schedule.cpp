// Main: the schedule of a due item, read the way sending needs it.
#include "store/sending_schedule.h"

#include "base/ole_date.h"
#include "client/items.h"
#include "infra/error_trap.h"
#include "infra/variant_text.h"
#include "store/item_props.h"

namespace Main {
namespace {

void Unusable(DueSchedule& due, const char* cause, std::string details) {
  due.cause = cause;
  due.details = std::move(details);
}

// The pattern start and start time an unchanged record has for this send
// time: its date, and its time of day to the second (as the line stores it).
void AnchorOnSendTime(CMailProps& props) {
  qorvane::CivilDate date;
  qorvane::TimeOfDay time;
  qorvane::SplitRounded(props.m_ScheduleTime, date, time);
  props.m_PatternStartDate =
      static_cast<double>(qorvane::DaysFromCivil(date.year, date.month, date.day) + qorvane::kOleEpochOffset);
  props.m_StartTime = qorvane::TimeSerial(time.hour, time.minute, time.second);
}

}  // namespace

DueSchedule ReadDueSchedule(const client::Ref<client::Item>& item) {
  DueSchedule due;
  CMailProps& props = due.props;
  if (!GetUserProp(item, props.m_ScheduleTime) || !qorvane::IsInCalendar(props.m_ScheduleTime)) {
    Unusable(due, "send time", "its send time (\"ScheduleTime\") is missing or not a date");
    return due;
  }
  due.savedTime = props.m_ScheduleTime;
  auto recurrence = item->UserProperties()->Find(kRecurrenceProperty);
  // No line at all: a one-time mail without attachments, as ReadProps has it.
  if (!recurrence) return due;
  due.savedLine = qorvane::CStr(recurrence->Value());

  const qorvane::LineFields fields = props.ReadEachField(*due.savedLine);
  if (!fields.recurring || !fields.attachments) {
    Unusable(due, "schedule line", "its schedule line cannot be read (" + fields.firstFailure + ")");
    return due;
  }
  if (!props.m_IsRecurring) return due;
  if (!fields.pattern) {
    Unusable(due, "pattern", "its recurrence pattern cannot be read (" + fields.firstFailure + ")");
    return due;
  }
  if (!fields.datesAsWrittenHere) {
    AnchorOnSendTime(props);
    due.anchoredOnSendTime = true;
  }
  return due;
}

void RestoreSchedule(const client::Ref<client::Item>& item, const DueSchedule& read) {
  qorvane::Trap("Main.RestoreSchedule", [&] {
    SetUserProp(item, read.savedTime);
    auto properties = item->UserProperties();
    auto recurrence = properties->Find(kRecurrenceProperty);
    if (!read.savedLine) {
      if (recurrence) recurrence->Delete();
      return;
    }
    if (!recurrence) recurrence = properties->Add(kRecurrenceProperty, client::olText);
    recurrence->Value(*read.savedLine);
  });
}

}  // namespace Main
