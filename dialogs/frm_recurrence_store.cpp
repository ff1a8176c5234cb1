// The recurrence dialog's store routine and the end range kept in step: the
// controls into a record with every check of the dialog, the number check,
// and the listing that gives the end date for a count and the count for an
// end date.
#include "dialogs/frm_recurrence.h"

#include <algorithm>
#include <optional>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "base/variant.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "platform/message_box.h"

namespace {

constexpr const char* kPatternNotValid = "Recurrence pattern is not valid";
constexpr const char* kNumberNotValid = "The number is not valid.";
// The engine lists at most this many occurrences up to an end date.
constexpr std::int32_t kDateListingCap = 999;
constexpr std::int32_t kLastDayOfAnyMonth = 31;

bool IsDayField(std::string_view controlName) {
  return controlName == "txtDayOfMonth3" || controlName == "txtDayOfMonth4";
}

}  // namespace

bool frmRecurrence::IsValidNumber(std::string_view text, bool bShowMessages) {
  bool valid = false;
  qorvane::IgnoreErrors([&] {
    const std::int32_t number = qorvane::CLng(text);
    const std::string_view trimmed = qorvane::Trim(text);
    valid = number != 0 && !trimmed.empty() &&
            std::all_of(trimmed.begin(), trimmed.end(), [](char c) { return c >= '0' && c <= '9'; });
  });
  if (!valid && bShowMessages) qorvane::MsgBox(kNumberNotValid);
  return valid;
}

bool frmRecurrence::Refuse(const std::string& message, bool bShowMessages, std::string_view focus) {
  if (!bShowMessages) return false;
  qorvane::MsgBox(message);
  g_debug.OutWarning("frmRecurrence", message);
  if (!focus.empty()) focusRequest = std::string(focus);
  return false;
}

// A field's number; a day of the month is at most 31.
bool frmRecurrence::ReadNumber(std::string_view controlName, bool bShowMessages, std::int32_t& number) {
  const std::string& text = Text(controlName);
  if (!IsValidNumber(text, false)) return Refuse(kNumberNotValid, bShowMessages, controlName);
  number = qorvane::CLng(text);
  if (IsDayField(controlName) && number > kLastDayOfAnyMonth) return Refuse(kPatternNotValid, bShowMessages, controlName);
  return true;
}

// A drop-down list always has a choice once the dialog is loaded; one
// without is refused rather than read as item -1.
bool frmRecurrence::ReadListIndex(std::string_view controlName, bool bShowMessages, int& index) {
  index = (*this)[controlName].listIndex;
  if (index < 0 || static_cast<std::size_t>(index) >= (*this)[controlName].items.size())
    return Refuse(kPatternNotValid, bShowMessages, controlName);
  return true;
}

bool frmRecurrence::StoreProps(CMailProps& record, bool bShowMessages) {
  const int page = SelectedPattern();
  std::int32_t day = 0;
  if (page == 3 && Checked("optDayOfMonth3")) {
    if (!ReadNumber("txtDayOfMonth3", bShowMessages, day)) return false;
    if (day >= 29 && bShowMessages &&
        qorvane::MsgBox("Some months have fewer than " + std::string(qorvane::Trim(Text("txtDayOfMonth3"))) +
                            " days. For thease months, the occurrence will fall on the last day of the month.",
                        qorvane::vbOKCancel) == qorvane::vbCancel) {
      focusRequest = "txtDayOfMonth3";
      return false;
    }
  }
  const double startDate = qorvane::DatePart((*this)["ctlStartDate"].value);
  if (page == 4 && Checked("optYearly4")) {
    int month = 0;
    if (!ReadListIndex("cboMonthOfYear4", bShowMessages, month) ||
        !ReadNumber("txtDayOfMonth4", bShowMessages, day))
      return false;
    if (day > qorvane::DaysInMonth(qorvane::Year(startDate), month + 1))
      return Refuse(kPatternNotValid, bShowMessages, "txtDayOfMonth4");
  }

  record.m_PatternStartDate = startDate;
  const qorvane::TimeOfDay time = qorvane::ToTimeOfDay((*this)["ctlStartTime"].value);
  record.m_StartTime = qorvane::TimeSerial(time.hour, time.minute, 0);
  record.m_PatternEndDate = qorvane::DatePart((*this)["ctlEndDate"].value);
  if (Checked("optNoEndDate")) {
    record.m_NoEndDate = true;
    record.m_Occurrences = 0;
  } else {
    std::int32_t occurrences = 0;
    if (!ReadNumber("txtOccurrences", bShowMessages, occurrences)) return false;
    record.m_NoEndDate = false;
    record.m_Occurrences = occurrences;
  }
  return StorePattern(record, bShowMessages);
}

// The pattern page into the record; each page's checks in its order.
bool frmRecurrence::StorePattern(CMailProps& r, bool bShowMessages) {
  std::int32_t number = 0;
  int index = 0;
  switch (SelectedPattern()) {
    case 1:
      r.m_RecurrenceType = qorvane::kRecursDaily;
      if (Checked("optInterval1")) {
        if (!ReadNumber("txtInterval1", bShowMessages, number)) return false;
        r.m_Interval = number;
        r.m_DayOfWeekMask = 0;
        return true;
      }
      if (Checked("optEveryWeekday1")) {
        r.m_Interval = 0;
        r.m_DayOfWeekMask = 62;
        return true;
      }
      break;
    case 2: {
      r.m_RecurrenceType = qorvane::kRecursWeekly;
      if (!ReadNumber("txtInterval2", bShowMessages, number)) return false;
      r.m_Interval = number;
      std::int32_t mask = 0;
      for (int i = 0; i < 7; ++i) {
        if (Checked("arWeekDays(" + std::to_string(i) + ")")) mask |= 1 << i;
      }
      if (mask == 0) break;
      r.m_DayOfWeekMask = mask;
      return true;
    }
    case 3:
      if (Checked("optDayOfMonth3")) {
        r.m_RecurrenceType = qorvane::kRecursMonthly;
        if (!ReadNumber("txtInterval3", bShowMessages, number)) return false;
        r.m_Interval = number;
        if (!ReadNumber("txtDayOfMonth3", bShowMessages, number)) return false;
        r.m_DayOfMonth = number;
        return true;
      }
      if (Checked("optTheMonthNth3")) {
        r.m_RecurrenceType = qorvane::kRecursMonthNth;
        if (!ReadNumber("txtInterval33", bShowMessages, number)) return false;
        r.m_Interval = number;
        if (!ReadListIndex("cboInstance3", bShowMessages, index)) return false;
        r.m_Instance = index + 1;
        if (!ReadListIndex("cboDayOfWeekMask3", bShowMessages, index)) return false;
        r.m_DayOfWeekMask = static_cast<std::int32_t>((*this)["cboDayOfWeekMask3"].itemData.at(index));
        return true;
      }
      break;
    case 4:
      if (Checked("optYearly4")) {
        r.m_RecurrenceType = qorvane::kRecursYearly;
        if (!ReadListIndex("cboMonthOfYear4", bShowMessages, index)) return false;
        r.m_MonthOfYear = index + 1;
        if (!ReadNumber("txtDayOfMonth4", bShowMessages, number)) return false;
        r.m_DayOfMonth = number;
        return true;
      }
      if (Checked("optYearNth4")) {
        r.m_RecurrenceType = qorvane::kRecursYearNth;
        if (!ReadListIndex("cboInstance4", bShowMessages, index)) return false;
        r.m_Instance = index + 1;
        if (!ReadListIndex("cboDayOfWeekMask4", bShowMessages, index)) return false;
        r.m_DayOfWeekMask = static_cast<std::int32_t>((*this)["cboDayOfWeekMask4"].itemData.at(index));
        if (!ReadListIndex("cboMonthOfYear44", bShowMessages, index)) return false;
        r.m_MonthOfYear = index + 1;
        return true;
      }
      break;
    default:
      break;
  }
  return Refuse(kPatternNotValid, bShowMessages);
}

bool frmRecurrence::CalcOccurrences(std::int32_t& count, double& endDate, bool byCount) {
  bool done = false;
  qorvane::Trap("frmRecurrence.CalcOccurrences", [&] {
    CMailProps pattern;
    if (!StoreProps(pattern, false)) return;
    std::optional<qorvane::DateList> list =
        pattern.GetOccurrences(byCount ? qorvane::Variant(count) : qorvane::Variant(qorvane::DateValue{endDate}));
    if (!list) return;
    if (list->empty()) {
      list = pattern.GetOccurrences(qorvane::Variant(1));
      if (!list) return;
      if (list->empty()) qorvane::Raise(qorvane::err::kSubscriptOutOfRange, "the pattern has no occurrence");
    }
    count = static_cast<std::int32_t>(list->size());
    endDate = list->back();
    done = true;
  });
  return done;
}

void frmRecurrence::SyncEndDate() {
  qorvane::forms::Control& endDate = (*this)["ctlEndDate"];
  if (Checked("optNoEndDate") || Checked("optEndAfter")) {
    const std::string& text = Text("txtOccurrences");
    if (!IsValidNumber(text, false)) return;
    std::int32_t count = qorvane::CLng(text);
    double last = 0.0;
    if (CalcOccurrences(count, last, true)) endDate.value = qorvane::DatePart(last);
  } else if (Checked("optEndBy")) {
    const double chosen = qorvane::DatePart(endDate.value);
    std::int32_t count = 0;
    double last = chosen;
    if (!CalcOccurrences(count, last, false)) return;
    // An end before the first occurrence is moved onto it; a listing cut at
    // the engine's cap ends at its last occurrence.
    if (count == 1 || (count == kDateListingCap && qorvane::DatePart(last) < chosen)) endDate.value = qorvane::DatePart(last);
    Text("txtOccurrences") = std::to_string(count);
  } else {
    g_debug.OutWarning("frmRecurrence.SyncEndDate", "Error - No one End Option selected");
  }
}
