// The scripted user: queued answers played into the schedule dialogs, with
// the effect each dialog has on the hand-over's record.
#include "scenario/scripted_user.h"

#include <optional>

#include "base/ole_date.h"
#include "base/variant.h"
#include "infra/cdebug.h"
#include "platform/message_box.h"
#include "schedule/mail_props.h"

namespace scenario {
namespace {

constexpr const char* kPatternNotValid = "Recurrence pattern is not valid";
constexpr const char* kNumberNotValid = "The number is not valid.";
// A shown end option of "no end" keeps this many occurrences in the count box.
constexpr std::int32_t kShownOccurrences = 10;
// The engine lists at most this many occurrences up to an end date.
constexpr std::size_t kOccurrenceCap = 999;

// What the one-time dialog's pickers give: the date, and the hour and
// minute of the time, seconds dropped.
double PickedTime(double value) {
  const qorvane::TimeOfDay time = qorvane::ToTimeOfDay(value);
  return qorvane::DatePart(value) + qorvane::TimeSerial(time.hour, time.minute, 0);
}

// The recurrence dialog's controls that an answer may leave as they are.
struct RecurrenceControls {
  double startDate = 0.0;
  double startTime = 0.0;
};

// A refusal as the dialog shows it: a plain message box, and the log.
bool Refuse(const std::string& message, bool messages) {
  if (messages) {
    qorvane::MsgBox(message);
    g_debug.OutWarning("frmRecurrence", message);
  }
  return false;
}

// The pattern page and the range's start into rec, with the dialog's checks.
bool StorePattern(CMailProps& rec, const RecurrenceAnswer& a, const RecurrenceControls& shown, bool messages) {
  const bool everyWeekday = a.recurrenceType == qorvane::kRecursDaily && a.everyWeekday;
  const bool usesInterval = a.recurrenceType != qorvane::kRecursYearly && a.recurrenceType != qorvane::kRecursYearNth;
  if (usesInterval && !everyWeekday && a.interval < 1) return Refuse(kNumberNotValid, messages);
  const bool usesDay = a.recurrenceType == qorvane::kRecursMonthly || a.recurrenceType == qorvane::kRecursYearly;
  if (usesDay && a.dayOfMonth < 1) return Refuse(kNumberNotValid, messages);
  if (usesDay && a.dayOfMonth > 31) return Refuse(kPatternNotValid, messages);
  const double startDate = a.startDate.value_or(shown.startDate);
  if (a.recurrenceType == qorvane::kRecursMonthly && a.dayOfMonth >= 29 && messages) {
    const std::string day = std::to_string(a.dayOfMonth);
    if (qorvane::MsgBox("Some months have fewer than " + day +
                            " days. For thease months, the occurrence will fall on the last day of the month.",
                        qorvane::vbOKCancel) == qorvane::vbCancel)
      return false;
  }
  if (a.recurrenceType == qorvane::kRecursYearly &&
      (a.monthOfYear < 1 || a.monthOfYear > 12 ||
       a.dayOfMonth > qorvane::DaysInMonth(qorvane::Year(startDate), a.monthOfYear)))
    return Refuse(kPatternNotValid, messages);

  rec.m_PatternStartDate = qorvane::DatePart(startDate);
  const qorvane::TimeOfDay time = qorvane::ToTimeOfDay(a.startTime.value_or(shown.startTime));
  rec.m_StartTime = qorvane::TimeSerial(time.hour, time.minute, 0);
  rec.m_RecurrenceType = a.recurrenceType;
  switch (a.recurrenceType) {
    case qorvane::kRecursDaily:
      rec.m_Interval = everyWeekday ? 0 : a.interval;
      rec.m_DayOfWeekMask = everyWeekday ? 62 : 0;
      break;
    case qorvane::kRecursWeekly:
      if ((a.dayOfWeekMask & 127) == 0) return Refuse(kPatternNotValid, messages);
      rec.m_Interval = a.interval;
      rec.m_DayOfWeekMask = a.dayOfWeekMask & 127;
      break;
    case qorvane::kRecursMonthly:
      rec.m_Interval = a.interval;
      rec.m_DayOfMonth = a.dayOfMonth;
      break;
    case qorvane::kRecursMonthNth:
    case qorvane::kRecursYearNth:
      if (a.instance < 1 || a.instance > 5 || a.dayOfWeekMask < 1 || a.dayOfWeekMask > 127)
        return Refuse(kPatternNotValid, messages);
      if (a.recurrenceType == qorvane::kRecursMonthNth) rec.m_Interval = a.interval;
      rec.m_Instance = a.instance;
      rec.m_DayOfWeekMask = a.dayOfWeekMask;
      if (a.recurrenceType == qorvane::kRecursYearNth) {
        if (a.monthOfYear < 1 || a.monthOfYear > 12) return Refuse(kPatternNotValid, messages);
        rec.m_MonthOfYear = a.monthOfYear;
      }
      break;
    case qorvane::kRecursYearly:
      rec.m_MonthOfYear = a.monthOfYear;
      rec.m_DayOfMonth = a.dayOfMonth;
      break;
    default:
      return Refuse(kPatternNotValid, messages);
  }
  return true;
}

struct EndRange {
  std::int32_t count = 0;
  double endDate = 0.0;
};

// The dialog's occurrence calculation: the pattern's occurrences up to a
// count or an end date; an empty list counts as its first occurrence alone.
std::optional<EndRange> CalcOccurrences(CMailProps pattern, const qorvane::Variant& limit) {
  std::optional<qorvane::DateList> list = pattern.GetOccurrences(limit);
  if (!list) return std::nullopt;
  if (list->empty()) {
    list = pattern.GetOccurrences(qorvane::Variant(1));
    if (!list || list->empty()) return std::nullopt;
  }
  return EndRange{static_cast<std::int32_t>(list->size()), qorvane::DatePart(list->back())};
}

// The end option into rec, with the end date kept in step as the dialog keeps it.
bool StoreEnd(CMailProps& rec, const RecurrenceAnswer& a, bool messages) {
  CMailProps pattern = rec;
  pattern.m_IsRecurring = true;
  switch (a.end) {
    case RecurrenceEnd::NoEnd: {
      const auto range = CalcOccurrences(pattern, qorvane::Variant(kShownOccurrences));
      if (range) rec.m_PatternEndDate = range->endDate;
      rec.m_NoEndDate = true;
      rec.m_Occurrences = 0;
      return true;
    }
    case RecurrenceEnd::AfterOccurrences: {
      if (a.occurrences < 1) return Refuse(kNumberNotValid, messages);
      const auto range = CalcOccurrences(pattern, qorvane::Variant(a.occurrences));
      if (range) rec.m_PatternEndDate = range->endDate;
      rec.m_NoEndDate = false;
      rec.m_Occurrences = a.occurrences;
      return true;
    }
    case RecurrenceEnd::ByDate: {
      const double chosen = qorvane::DatePart(a.endDate);
      const auto range = CalcOccurrences(pattern, qorvane::Variant(qorvane::DateValue{chosen}));
      if (!range) return Refuse(kPatternNotValid, messages);
      rec.m_PatternEndDate = chosen;
      if (range->count == 1 || (static_cast<std::size_t>(range->count) == kOccurrenceCap && range->endDate < chosen))
        rec.m_PatternEndDate = range->endDate;
      rec.m_NoEndDate = false;
      rec.m_Occurrences = range->count;
      return true;
    }
  }
  return false;
}

// What opening frmRecurrence does to a record that does not recur yet.
void LoadRecurrenceDefaults(CMailProps& rec) {
  const double send = rec.m_ScheduleTime;
  rec.m_RecurrenceType = qorvane::kRecursWeekly;
  rec.m_Interval = 1;
  rec.m_DayOfWeekMask = 1 << (qorvane::Weekday(send, 1) - 1);
  rec.m_PatternStartDate = qorvane::DatePart(send);
  const qorvane::TimeOfDay time = qorvane::ToTimeOfDay(send);
  rec.m_StartTime = qorvane::TimeSerial(time.hour, time.minute, 0);
  rec.m_PatternEndDate = rec.m_PatternStartDate;
  rec.m_NoEndDate = true;
  rec.m_Occurrences = 0;
  // The end-range synchronisation: the end date of ten occurrences.
  CMailProps pattern = rec;
  pattern.m_IsRecurring = true;
  if (const auto range = CalcOccurrences(pattern, qorvane::Variant(kShownOccurrences)))
    rec.m_PatternEndDate = range->endDate;
}

}  // namespace

void ScriptedUser::Queue(Answer answer) { answers_.push_back(std::move(answer)); }

bool ScriptedUser::Queue(std::string_view text, std::string* error) {
  ParsedAnswer parsed = ParseAnswer(text);
  if (!parsed.answer) {
    if (error) *error = parsed.error;
    return false;
  }
  Queue(std::move(*parsed.answer));
  return true;
}

std::size_t ScriptedUser::Count(std::string_view form) const {
  std::size_t count = 0;
  for (const ShownDialog& shown : shown_) count += shown.form == form ? 1 : 0;
  return count;
}

void ScriptedUser::Record(const char* form) {
  ShownDialog shown;
  shown.form = form;
  shown.keepOnTop = g_HandOver.m_OnTop;
  shown.openerRect = g_HandOver.m_OpenerRect;
  if (g_HandOver.m_MailProps) shown.sendTimeShown = g_HandOver.m_MailProps->m_ScheduleTime;
  shown_.push_back(std::move(shown));
}

void ScriptedUser::ShowOnce() {
  Record("frmOnce");
  if (!g_HandOver.m_MailProps || answers_.empty()) return;
  CMailProps& record = *g_HandOver.m_MailProps;
  const Answer answer = std::move(answers_.front());
  answers_.pop_front();
  if (const auto* once = std::get_if<OnceAnswer>(&answer)) {
    if (once->button == Button::OK) {
      record.m_ScheduleTime = PickedTime(once->sendTime);
      dialogs::ConfirmHandOver();
    }
    return;
  }
  if (std::holds_alternative<RecurrenceAnswer>(answer)) {
    // "Recurrence...": the shown date and time become the start.
    record.m_ScheduleTime = PickedTime(record.m_ScheduleTime);
    answers_.push_front(answer);
    dialogs::CurrentDialogService().ShowRecurrence();
  }
}

void ScriptedUser::ShowRecurrence() {
  Record("frmRecurrence");
  if (!g_HandOver.m_MailProps) return;
  CMailProps& record = *g_HandOver.m_MailProps;
  if (!record.m_IsRecurring) LoadRecurrenceDefaults(record);
  const RecurrenceControls shown{record.m_PatternStartDate, record.m_StartTime};
  // A refused answer keeps the dialog open for the next one.
  while (!answers_.empty()) {
    const Answer answer = std::move(answers_.front());
    answers_.pop_front();
    if (std::holds_alternative<CancelAnswer>(answer)) return;
    if (std::holds_alternative<OnceAnswer>(answer)) {
      // "Remove Recurrence", then the one-time dialog answers.
      record.m_IsRecurring = false;
      answers_.push_front(answer);
      dialogs::CurrentDialogService().ShowOnce();
      return;
    }
    const auto& pattern = std::get<RecurrenceAnswer>(answer);
    if (pattern.button == Button::Cancel) return;
    CMailProps stored = record;
    if (!StorePattern(stored, pattern, shown, true) || !StoreEnd(stored, pattern, true)) continue;
    record = stored;
    record.m_IsRecurring = true;
    dialogs::ConfirmHandOver();
    return;
  }
}

void ScriptedUser::ShowAbout() { Record("frmAbout"); }

ScopedDialogService::ScopedDialogService(dialogs::DialogService& service)
    : previous_(&dialogs::CurrentDialogService()) {
  dialogs::SetDialogService(&service);
}

ScopedDialogService::~ScopedDialogService() { dialogs::SetDialogService(previous_); }

}  // namespace scenario
