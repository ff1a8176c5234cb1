// CMailProps: defaults, comparison and copy. The engine, the text form and the
// description live in their own files.
#include "schedule/mail_props.h"

#include <cmath>

#include "base/ole_date.h"
#include "infra/cdebug.h"
#include "platform/clock.h"

using namespace qorvane;

double CMailProps::DefaultScheduleTime(double now) {
  // Next whole minute (a full minute when already on one), then the next
  // half-hour mark strictly after it: 10:00:00 -> 10:30, 10:29:30 -> 11:00.
  std::int64_t day = SerialDay(now);
  const auto secondOfDay = static_cast<std::int64_t>(std::llround(TimePart(now) * 86400.0));
  std::int64_t minutes = secondOfDay / 60 + 1;
  minutes += (minutes % 60) < 30 ? 30 - minutes % 60 : 60 - minutes % 60;
  day += minutes / (24 * 60);
  minutes %= 24 * 60;
  return ComposeDate(day, TimeSerial(static_cast<int>(minutes / 60), static_cast<int>(minutes % 60), 0));
}

void CMailProps::Init() {
  m_ScheduleTime = DefaultScheduleTime(Now());
  m_IsRecurring = false;
  m_collAttachments = AttachmentList{};
}

bool CMailProps::Equal(const CMailProps& oOther) const {
  if (m_ScheduleTime != oOther.m_ScheduleTime || m_IsRecurring != oOther.m_IsRecurring) return false;
  if (!m_IsRecurring) return true;
  if (m_RecurrenceType != oOther.m_RecurrenceType || m_StartTime != oOther.m_StartTime ||
      m_PatternStartDate != oOther.m_PatternStartDate || m_PatternEndDate != oOther.m_PatternEndDate ||
      m_Occurrences != oOther.m_Occurrences || m_NoEndDate != oOther.m_NoEndDate)
    return false;
  switch (m_RecurrenceType) {
    case kRecursDaily:
    case kRecursWeekly:
      return m_Interval == oOther.m_Interval && m_DayOfWeekMask == oOther.m_DayOfWeekMask;
    case kRecursMonthly:
      return m_Interval == oOther.m_Interval && m_DayOfMonth == oOther.m_DayOfMonth;
    case kRecursMonthNth:
      return m_Interval == oOther.m_Interval && m_Instance == oOther.m_Instance &&
             m_DayOfWeekMask == oOther.m_DayOfWeekMask;
    case kRecursYearly:
      return m_MonthOfYear == oOther.m_MonthOfYear && m_DayOfMonth == oOther.m_DayOfMonth;
    case kRecursYearNth:
      return m_MonthOfYear == oOther.m_MonthOfYear && m_Instance == oOther.m_Instance &&
             m_DayOfWeekMask == oOther.m_DayOfWeekMask;
    default:
      g_debug.OutWarning("CMailProps.Equal", "m_RecurrenceType is bad");
      return false;
  }
}

void CMailProps::Copy(CMailProps& oOther) const {
  oOther.SetScheduleTime(m_ScheduleTime);
  oOther.SetIsRecurring(m_IsRecurring);
  oOther.SetRecurrenceType(m_RecurrenceType);
  oOther.SetDayOfMonth(m_DayOfMonth);
  oOther.SetMonthOfYear(m_MonthOfYear);
  oOther.SetInstance(m_Instance);
  oOther.SetDayOfWeekMask(m_DayOfWeekMask);
  oOther.SetInterval(m_Interval);
  oOther.SetOccurrences(m_Occurrences);
  oOther.SetNoEndDate(m_NoEndDate);
  oOther.SetStartTime(m_StartTime);
  oOther.SetPatternStartDate(m_PatternStartDate);
  oOther.SetPatternEndDate(m_PatternEndDate);
}
