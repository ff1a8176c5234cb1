// CMailProps: the schedule of one deferred mail. When it is next sent, whether
// and how it recurs, which files and folders go with it. Every subsystem
// handles schedules only through this record.
//
// The recurrence travels on the mail item as one line of text
// (WriteToString / ReadFromString); the next send time travels on its own.
// Recurrence arithmetic lives in recurrence.cpp, the sentence describing a
// pattern in description.cpp, the text form in text_form.cpp.
//
// Lifecycle: a plain value owned by whoever edits or sends a schedule; no
// reference into the mail client is kept. UI thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/variant.h"
#include "client/fwd.h"

namespace qorvane {

// Recurrence type codes: the mail client's own numbers, hence no 4.
enum RecurrenceType : std::int32_t {
  kRecursDaily = 0,
  kRecursWeekly = 1,
  kRecursMonthly = 2,
  kRecursMonthNth = 3,
  kRecursYearly = 5,
  kRecursYearNth = 6,
};

// Instance 5 stands for "last".
inline constexpr std::int32_t kInstanceLast = 5;

using DateList = std::vector<double>;
using AttachmentList = std::vector<std::string>;

// What a field-by-field read of the text form (CMailProps::ReadEachField)
// could set. A field not read keeps the value it had.
struct LineFields {
  bool recurring = false;    // m_IsRecurring
  bool pattern = false;      // the seven numbers and m_NoEndDate, all of them
  bool attachments = false;  // the list: the head has its nine fields
  bool startTime = false;
  bool patternStart = false;
  bool endDate = false;
  // The start time and the pattern start read, and their texts are exactly
  // what the current locale writes for them. False for a line written under
  // another locale's formats, whose dates may have read as other dates.
  bool datesAsWrittenHere = false;
  // Why the first field that did not read failed; empty when all read.
  std::string firstFailure;
};

}  // namespace qorvane

class CMailProps {
 public:
  // Fields, in declaration order.
  double m_ScheduleTime = 0.0;
  qorvane::AttachmentList m_collAttachments;
  bool m_IsRecurring = false;
  std::int32_t m_RecurrenceType = 0;
  std::int32_t m_DayOfMonth = 0;
  std::int32_t m_MonthOfYear = 0;
  std::int32_t m_Instance = 0;
  std::int32_t m_DayOfWeekMask = 0;
  std::int32_t m_Interval = 0;
  std::int32_t m_Occurrences = 0;
  bool m_NoEndDate = false;
  double m_StartTime = 0.0;
  double m_PatternStartDate = 0.0;
  double m_PatternEndDate = 0.0;

  // Accessors, one pair per field.
  double ScheduleTime() const { return m_ScheduleTime; }
  void SetScheduleTime(double v) { m_ScheduleTime = v; }
  const qorvane::AttachmentList& collAttachments() const { return m_collAttachments; }
  qorvane::AttachmentList& collAttachmentsRef() { return m_collAttachments; }
  void SetcollAttachments(qorvane::AttachmentList v) { m_collAttachments = std::move(v); }
  bool IsRecurring() const { return m_IsRecurring; }
  void SetIsRecurring(bool v) { m_IsRecurring = v; }
  std::int32_t RecurrenceType() const { return m_RecurrenceType; }
  void SetRecurrenceType(std::int32_t v) { m_RecurrenceType = v; }
  std::int32_t DayOfMonth() const { return m_DayOfMonth; }
  void SetDayOfMonth(std::int32_t v) { m_DayOfMonth = v; }
  std::int32_t MonthOfYear() const { return m_MonthOfYear; }
  void SetMonthOfYear(std::int32_t v) { m_MonthOfYear = v; }
  std::int32_t Instance() const { return m_Instance; }
  void SetInstance(std::int32_t v) { m_Instance = v; }
  std::int32_t DayOfWeekMask() const { return m_DayOfWeekMask; }
  void SetDayOfWeekMask(std::int32_t v) { m_DayOfWeekMask = v; }
  std::int32_t Interval() const { return m_Interval; }
  void SetInterval(std::int32_t v) { m_Interval = v; }
  std::int32_t Occurrences() const { return m_Occurrences; }
  void SetOccurrences(std::int32_t v) { m_Occurrences = v; }
  bool NoEndDate() const { return m_NoEndDate; }
  void SetNoEndDate(bool v) { m_NoEndDate = v; }
  double StartTime() const { return m_StartTime; }
  void SetStartTime(double v) { m_StartTime = v; }
  double PatternStartDate() const { return m_PatternStartDate; }
  void SetPatternStartDate(double v) { m_PatternStartDate = v; }
  double PatternEndDate() const { return m_PatternEndDate; }
  void SetPatternEndDate(double v) { m_PatternEndDate = v; }

  // Files to attach at send time: file references that exist, folder
  // references expanded to their newest file; what is missing is logged and
  // left out. (Defined with the store services, store/mail_props_item.cpp.)
  qorvane::AttachmentList GetResolvedAttachments();

  // One sentence describing the schedule ("Occurs every 3 day(s) effective
  // 3/3/2025 9:30:00 AM"); with bCalcLastOccur and an end, names the last send.
  std::string GetDescText(bool bCalcLastOccur);

  // The last send of a pattern with an end; 0 after a logged failure.
  double GetLastOccurrence();

  // True when the two schedules would send at the same times (attachments and
  // fields the pattern doesn't use are not compared).
  bool Equal(const CMailProps& oOther) const;

  // Copies this schedule into oOther (the target), attachments excepted.
  void Copy(CMailProps& oOther) const;

  // A new, unscheduled one-time record at the next half-hour mark after the
  // next whole minute of the current clock.
  void Init();

  // The schedule to and from a mail item's user properties "ScheduleTime"
  // and "QorvaneRecurrence". Neither saves the item; the caller does.
  // Failures are logged, not passed on; the result says whether everything
  // was read or written, for callers that must not act on half a schedule.
  // (Defined with the store services, store/mail_props_item.cpp.)
  bool ReadProps(const client::Ref<client::Item>& oMail);
  bool WriteProps(const client::Ref<client::Item>& oMail);
  void ClearProps(const client::Ref<client::Item>& oMail);

  // Places a recurring record on its first occurrence. Raises when the
  // pattern yields none.
  void SetFirstOccurrence();

  // Moves a recurring record to its next occurrence; false (nothing changed)
  // for a one-time record or the last send of a pattern with an end.
  // The first occurrence listed from the pattern start is taken to be the one
  // being sent, even when m_ScheduleTime was moved away from it; the next is
  // the one after it that is also later than m_ScheduleTime. So the send time
  // always moves strictly forward. Raises (record unchanged) when the pattern
  // has no such occurrence.
  bool SetNextOccurrence();

  // The same advance when the pattern start cannot be trusted and was set
  // from m_ScheduleTime: moves to the first occurrence listed from the
  // pattern start that is later than `after`.
  bool SetNextOccurrenceAfter(double after);

  // Occurrences from the pattern start, ascending. The limit is a date (every
  // occurrence up to that day, at most 999) or a count (and then at most 1000
  // years ahead). A pattern that stops moving forward (a month interval of 0,
  // say) ends its listing there. An invalid limit, or a pattern start or
  // date outside the calendar, is logged and yields no list at all.
  std::optional<qorvane::DateList> GetOccurrences(const qorvane::Variant& EndDateOrNumOccurrences);

  // The self-check of the engine: the same listing as GetOccurrences, with
  // the mail client's own calendar expanding the pattern alongside
  // (GetOccurrences2); any difference in count or dates is shown in a
  // message box kept in the foreground. The list returned is the engine's.
  // (Defined with the store services, store/occurrence_self_check.cpp.)
  std::optional<qorvane::DateList> GetOccurrencesDebug(const qorvane::Variant& EndDateOrNumOccurrences);
  // The client calendar's side: the starts of the occurrences of a
  // throw-away appointment ("QorvaneTestAppointment") carrying this
  // pattern, ascending; short or empty after a logged failure.
  qorvane::DateList GetOccurrences2(const qorvane::Variant& EndDateOrNumOccurrences);

  // The recurrence part as one line of text and back.
  std::string WriteToString();
  // A line that fails to read is logged; the fields read so far keep their
  // new values. False after such a failure.
  bool ReadFromString(const std::string& text);
  // The same read, reporting its failure to the caller instead of the log
  // (for tools that must tell the user why a line did not read).
  void ReadFromStringOrRaise(const std::string& text);
  // Reads every field of the line that can be read, also past a field that
  // fails; the rest keep their values. Logs nothing: what a gap means is the
  // caller's decision (sending needs no end date, for instance).
  qorvane::LineFields ReadEachField(const std::string& text);

  // The send time Init gives for a given now.
  static double DefaultScheduleTime(double now);

  // Day of the month (1..31) of the instance-th day matching the mask in that
  // month; 0 (logged) for invalid parameters or no match.
  static std::int32_t GetInstanceDay(std::int32_t year, std::int32_t month, std::int32_t instance,
                                     std::int32_t mask);

 private:
  std::optional<qorvane::DateList> GetOccurrences1(const qorvane::Variant& param);
  std::string GetInstanceName() const;
  std::string GetDaysOfWeekText() const;
  std::string GetMonthName() const;
};
