// The recurrence dialog's controls, its loading, and the handlers of the
// user's clicks and keys.
#include "dialogs/frm_recurrence.h"

#include <array>

#include "base/ole_date.h"
#include "dialogs/frm_attachments.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "store/calendar_days.h"
#include "support/help.h"

using qorvane::forms::Control;
using qorvane::forms::ControlKind;

namespace {

// Page n (1 daily, 2 weekly, 3 monthly, 4 yearly) and the option showing it.
constexpr std::array<const char*, 4> kPatternOptions = {"optDaily", "optWeekly", "optMonthly", "optYearly"};
constexpr std::array<const char*, 4> kPages = {"ctlDailyPage", "ctlWeeklyPage", "ctlMonthlyPage", "ctlYearlyPage"};

constexpr std::array<const char*, 5> kInstances = {"first", "second", "third", "fourth", "last"};
constexpr std::array<const char*, 10> kDays = {"day",     "weekday",  "weekend day", "sunday", "monday",
                                               "tuesday", "wednesday", "thursday",   "friday", "saturday"};
constexpr std::array<long, 10> kDayMasks = {127, 62, 65, 1, 2, 4, 8, 16, 32, 64};
constexpr std::array<const char*, 12> kMonths = {"january", "february", "march",     "april",   "may",      "june",
                                                 "july",    "august",   "september", "october", "november", "december"};
constexpr std::array<const char*, 7> kWeekdayCaptions = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                         "Thursday", "Friday", "Saturday"};

std::string WeekDayBox(int index) { return "arWeekDays(" + std::to_string(index) + ")"; }

template <std::size_t N>
void Fill(Control& combo, const std::array<const char*, N>& items) {
  combo.items.assign(items.begin(), items.end());
}

// The item whose data is `data`; false (nothing changed) when none has it.
bool SelectItemData(Control& combo, long data) {
  for (std::size_t i = 0; i < combo.itemData.size(); ++i) {
    if (combo.itemData[i] == data) {
      combo.listIndex = static_cast<int>(i);
      return true;
    }
  }
  return false;
}

bool SelectIndex(Control& combo, std::int32_t index) {
  if (index < 0 || static_cast<std::size_t>(index) >= combo.items.size()) return false;
  combo.listIndex = index;
  return true;
}

int PageOfType(std::int32_t type) {
  switch (type) {
    case qorvane::kRecursDaily: return 1;
    case qorvane::kRecursWeekly: return 2;
    case qorvane::kRecursMonthly:
    case qorvane::kRecursMonthNth: return 3;
    case qorvane::kRecursYearly:
    case qorvane::kRecursYearNth: return 4;
    default: return 0;
  }
}

// What opening the dialog on a one-time record writes into it: weekly on
// the send time's weekday from its date, at its hour and minute, no end.
void WriteRecurrenceDefaults(CMailProps& record) {
  const double send = record.m_ScheduleTime;
  record.m_RecurrenceType = qorvane::kRecursWeekly;
  record.m_Interval = 1;
  record.m_DayOfWeekMask = 1 << (qorvane::Weekday(send, 1) - 1);
  record.m_PatternStartDate = qorvane::DatePart(send);
  const qorvane::TimeOfDay time = qorvane::ToTimeOfDay(send);
  record.m_StartTime = qorvane::TimeSerial(time.hour, time.minute, 0);
  record.m_PatternEndDate = record.m_PatternStartDate;
  record.m_NoEndDate = true;
  record.m_Occurrences = 0;
}

}  // namespace

frmRecurrence::frmRecurrence() {
  name = "frmRecurrence";
  caption = "Qorvane Recurrence";
  // Design size in twips; the Windows view replaces it with its template's.
  rect.width = 7440;
  rect.height = 5760;
  Add(ControlKind::Group, "Frame3", "Qorvane time");
  Add(ControlKind::Label, "Label10", "S&tart:", "Frame3");
  Add(ControlKind::TimePicker, "ctlStartTime", "", "Frame3");

  Add(ControlKind::Group, "Frame1", "Recurrence pattern");
  Add(ControlKind::OptionButton, "optDaily", "Daily", "Frame1");
  Add(ControlKind::OptionButton, "optWeekly", "Weekly", "Frame1");
  Add(ControlKind::OptionButton, "optMonthly", "Monthly", "Frame1");
  Add(ControlKind::OptionButton, "optYearly", "Yearly", "Frame1");

  Add(ControlKind::Page, "ctlDailyPage", "", "Frame1");
  Add(ControlKind::OptionButton, "optInterval1", "E&very", "ctlDailyPage");
  Add(ControlKind::TextBox, "txtInterval1", "", "ctlDailyPage");
  Add(ControlKind::Label, "Label3", "day(s)", "ctlDailyPage");
  Add(ControlKind::OptionButton, "optEveryWeekday1", "Every wee&kday", "ctlDailyPage");

  Add(ControlKind::Page, "ctlWeeklyPage", "", "Frame1");
  Add(ControlKind::Label, "Label1", "Recur every", "ctlWeeklyPage");
  Add(ControlKind::TextBox, "txtInterval2", "", "ctlWeeklyPage");
  Add(ControlKind::Label, "Label2", "week(s) on:", "ctlWeeklyPage");
  for (int i = 0; i < 7; ++i) Add(ControlKind::CheckBox, WeekDayBox(i), kWeekdayCaptions[i], "ctlWeeklyPage");

  Add(ControlKind::Page, "ctlMonthlyPage", "", "Frame1");
  Add(ControlKind::OptionButton, "optDayOfMonth3", "&Day", "ctlMonthlyPage");
  Add(ControlKind::TextBox, "txtDayOfMonth3", "", "ctlMonthlyPage");
  Add(ControlKind::Label, "Label4", "of every", "ctlMonthlyPage");
  Add(ControlKind::TextBox, "txtInterval3", "", "ctlMonthlyPage");
  Add(ControlKind::Label, "Label5", "month(s)", "ctlMonthlyPage");
  Add(ControlKind::OptionButton, "optTheMonthNth3", "T&he", "ctlMonthlyPage");
  Fill(Add(ControlKind::ComboBox, "cboInstance3", "", "ctlMonthlyPage"), kInstances);
  Fill(Add(ControlKind::ComboBox, "cboDayOfWeekMask3", "", "ctlMonthlyPage"), kDays);
  Add(ControlKind::Label, "Label7", "of every", "ctlMonthlyPage");
  Add(ControlKind::TextBox, "txtInterval33", "", "ctlMonthlyPage");
  Add(ControlKind::Label, "Label6", "month(s)", "ctlMonthlyPage");

  Add(ControlKind::Page, "ctlYearlyPage", "", "Frame1");
  Add(ControlKind::OptionButton, "optYearly4", "E&very", "ctlYearlyPage");
  Fill(Add(ControlKind::ComboBox, "cboMonthOfYear4", "", "ctlYearlyPage"), kMonths);
  Add(ControlKind::TextBox, "txtDayOfMonth4", "", "ctlYearlyPage");
  Add(ControlKind::OptionButton, "optYearNth4", "T&he", "ctlYearlyPage");
  Fill(Add(ControlKind::ComboBox, "cboInstance4", "", "ctlYearlyPage"), kInstances);
  Fill(Add(ControlKind::ComboBox, "cboDayOfWeekMask4", "", "ctlYearlyPage"), kDays);
  Add(ControlKind::Label, "Label11", "of", "ctlYearlyPage");
  Fill(Add(ControlKind::ComboBox, "cboMonthOfYear44", "", "ctlYearlyPage"), kMonths);
  for (const char* days : {"cboDayOfWeekMask3", "cboDayOfWeekMask4"})
    (*this)[days].itemData.assign(kDayMasks.begin(), kDayMasks.end());

  Add(ControlKind::Group, "Frame2", "Range of recurrence");
  Add(ControlKind::Label, "Label8", "&Start:", "Frame2");
  Add(ControlKind::DatePicker, "ctlStartDate", "", "Frame2");
  Add(ControlKind::OptionButton, "optNoEndDate", "N&o end date", "Frame2");
  Add(ControlKind::OptionButton, "optEndAfter", "End a&fter:", "Frame2");
  Add(ControlKind::TextBox, "txtOccurrences", "", "Frame2");
  Add(ControlKind::Label, "Label9", "occurrences", "Frame2");
  Add(ControlKind::OptionButton, "optEndBy", "End &by:", "Frame2");
  Add(ControlKind::DatePicker, "ctlEndDate", "", "Frame2");

  Add(ControlKind::Button, "btnOK", "Qorvane");
  Add(ControlKind::Button, "btnCancel", "Cancel").causesValidation = false;
  Add(ControlKind::Button, "btnRemoveRec", "Remove Recurrence");
  Add(ControlKind::Button, "btnAttachments", "Attachments");
  defaultButton = "btnOK";
  cancelButton = "btnCancel";
  for (const char* page : kPages) (*this)[page].visible = false;
}

bool frmRecurrence::Checked(std::string_view controlName) const { return (*this)[controlName].checked; }
std::string& frmRecurrence::Text(std::string_view controlName) { return (*this)[controlName].text; }

void frmRecurrence::Load() {
  qorvane::Trap("frmRecurrence.Form_Load", [&] {
    CMailProps& record = dialogs::EditedRecord();
    // Reached from the one-time dialog: the record gets a pattern to start
    // from, and the end date is brought in step with it.
    const bool wasRecurring = record.m_IsRecurring;
    if (!wasRecurring) WriteRecurrenceDefaults(record);
    LoadProps(record);
    if (!wasRecurring) SyncEndDate();
    dialogs::PlaceOverOpener(*this);
  });
}

void frmRecurrence::LoadProps(const CMailProps& record) {
  dialogs::ShowTimeWithoutSeconds((*this)["ctlStartTime"]);
  (*this)["ctlStartTime"].value = record.m_StartTime;
  (*this)["ctlStartDate"].value = record.m_PatternStartDate;
  (*this)["ctlEndDate"].value = record.m_PatternEndDate;
  // Every page starts from the start date, so that a page the user turns to
  // (or an option they pick on it) never holds empty fields.
  for (int page = 1; page <= 4; ++page) FillPageDefaults(page);

  // A record is never loaded onto "End by": its end date is shown, in step
  // with the count.
  if (record.m_NoEndDate) {
    SelectOption("optNoEndDate");
    Text("txtOccurrences") = "10";
  } else {
    SelectOption("optEndAfter");
    Text("txtOccurrences") = std::to_string(record.m_Occurrences);
  }

  bool found = true;
  const int page = PageOfType(record.m_RecurrenceType);
  ShowPattern(page != 0 ? page : 2);
  switch (record.m_RecurrenceType) {
    case qorvane::kRecursDaily:
      if (record.m_Interval == 0) {
        SelectOption("optEveryWeekday1");
      } else {
        SelectOption("optInterval1");
        Text("txtInterval1") = std::to_string(record.m_Interval);
      }
      break;
    case qorvane::kRecursWeekly:
      Text("txtInterval2") = std::to_string(record.m_Interval);
      for (int i = 0; i < 7; ++i) (*this)[WeekDayBox(i)].checked = (record.m_DayOfWeekMask >> i) & 1;
      break;
    case qorvane::kRecursMonthly:
      SelectOption("optDayOfMonth3");
      Text("txtDayOfMonth3") = std::to_string(record.m_DayOfMonth);
      Text("txtInterval3") = std::to_string(record.m_Interval);
      break;
    case qorvane::kRecursMonthNth:
      SelectOption("optTheMonthNth3");
      found = SelectIndex((*this)["cboInstance3"], record.m_Instance - 1) &&
              SelectItemData((*this)["cboDayOfWeekMask3"], record.m_DayOfWeekMask);
      Text("txtInterval33") = std::to_string(record.m_Interval);
      break;
    case qorvane::kRecursYearly:
      SelectOption("optYearly4");
      found = SelectIndex((*this)["cboMonthOfYear4"], record.m_MonthOfYear - 1);
      Text("txtDayOfMonth4") = std::to_string(record.m_DayOfMonth);
      break;
    case qorvane::kRecursYearNth:
      SelectOption("optYearNth4");
      found = SelectIndex((*this)["cboInstance4"], record.m_Instance - 1) &&
              SelectItemData((*this)["cboDayOfWeekMask4"], record.m_DayOfWeekMask) &&
              SelectIndex((*this)["cboMonthOfYear44"], record.m_MonthOfYear - 1);
      break;
    default:
      found = false;
      break;
  }
  if (!found) g_debug.OutWarning("frmRecurrence.Form_Load", "Init Failed!");
}

void frmRecurrence::ShowPattern(int page) {
  for (int i = 1; i <= 4; ++i) (*this)[kPages[i - 1]].visible = i == page;
  SelectOption(kPatternOptions[page - 1]);
}

// A page's fields as the start date suggests them.
void frmRecurrence::FillPageDefaults(int page) {
  const double start = (*this)["ctlStartDate"].value;
  const int weekday = qorvane::Weekday(start, 1);
  const long singleDay = 1L << (weekday - 1);
  const std::int32_t position = Main::WeekOfMonth(start);
  switch (page) {
    case 1:
      Text("txtInterval1") = "1";
      SelectOption("optInterval1");
      break;
    case 2:
      for (int i = 0; i < 7; ++i) (*this)[WeekDayBox(i)].checked = i == weekday - 1;
      Text("txtInterval2") = "1";
      break;
    case 3:
      Text("txtDayOfMonth3") = std::to_string(qorvane::Day(start));
      Text("txtInterval3") = "1";
      SelectItemData((*this)["cboDayOfWeekMask3"], singleDay);
      SelectIndex((*this)["cboInstance3"], position - 1);
      Text("txtInterval33") = "1";
      SelectOption("optDayOfMonth3");
      break;
    case 4:
      SelectIndex((*this)["cboMonthOfYear4"], qorvane::Month(start) - 1);
      Text("txtDayOfMonth4") = std::to_string(qorvane::Day(start));
      SelectIndex((*this)["cboInstance4"], position - 1);
      SelectItemData((*this)["cboDayOfWeekMask4"], singleDay);
      SelectIndex((*this)["cboMonthOfYear44"], qorvane::Month(start) - 1);
      SelectOption("optYearly4");
      break;
    default:
      break;
  }
}

int frmRecurrence::SelectedPattern() const {
  for (int page = 1; page <= 4; ++page) {
    if (Checked(kPatternOptions[page - 1])) return page;
  }
  return 0;
}

void frmRecurrence::PatternOption_Click(std::string_view controlName, int page) {
  ShowPattern(page);
  FillPageDefaults(page);
  if (activeControl == controlName) SyncEndDate();
}

void frmRecurrence::Click(std::string_view controlName) {
  qorvane::Trap("frmRecurrence." + std::string(controlName) + "_Click", [&] {
    for (int page = 1; page <= 4; ++page) {
      if (controlName == kPatternOptions[page - 1]) return PatternOption_Click(controlName, page);
    }
    if (controlName == "btnOK") return btnOK_Click();
    if (controlName == "btnCancel") {
      unloaded = true;
      return;
    }
    if (controlName == "btnRemoveRec") {
      dialogs::EditedRecord().m_IsRecurring = false;
      unloaded = true;
      next = dialogs::NextDialog::Once;
      return;
    }
    if (controlName == "btnAttachments") return frmAttachments::ShowOverHandOver();
    // The rest acts only on the user's own click.
    if (activeControl != controlName) return;
    if (controlName == "cboInstance3" || controlName == "cboDayOfWeekMask3") {
      SelectOption("optTheMonthNth3");
    } else if (controlName == "cboMonthOfYear4") {
      SelectOption("optYearly4");
    } else if (controlName == "cboInstance4" || controlName == "cboDayOfWeekMask4" ||
               controlName == "cboMonthOfYear44") {
      SelectOption("optYearNth4");
    } else if (controlName == "optNoEndDate") {
      Text("txtOccurrences") = "10";
      SyncEndDate();
    } else if (controlName == "optInterval1" || controlName == "optEveryWeekday1" ||
               controlName == "optDayOfMonth3" || controlName == "optTheMonthNth3" || controlName == "optYearly4" ||
               controlName == "optYearNth4") {
      SyncEndDate();
    }
  });
}

void frmRecurrence::Change(std::string_view controlName) {
  qorvane::Trap("frmRecurrence." + std::string(controlName) + "_Change", [&] {
    if (activeControl != controlName) return;
    if (controlName == "txtInterval1") {
      SelectOption("optInterval1");
    } else if (controlName == "txtDayOfMonth3" || controlName == "txtInterval3") {
      SelectOption("optDayOfMonth3");
    } else if (controlName == "txtInterval33") {
      SelectOption("optTheMonthNth3");
    } else if (controlName == "txtDayOfMonth4") {
      SelectOption("optYearly4");
    } else if (controlName == "txtOccurrences") {
      SelectOption("optEndAfter");
    } else if (controlName == "ctlEndDate") {
      SelectOption("optEndBy");
      SyncEndDate();
    }
  });
}

bool frmRecurrence::Validate(std::string_view controlName) {
  bool valid = true;
  qorvane::Trap("frmRecurrence." + std::string(controlName) + "_Validate", [&] {
    if (controlName == "txtInterval1" || controlName == "txtInterval2" || controlName == "txtInterval3" ||
        controlName == "txtInterval33" || controlName == "txtDayOfMonth3" || controlName == "txtDayOfMonth4" ||
        controlName == "txtOccurrences") {
      std::int32_t number = 0;
      valid = ReadNumber(controlName, true, number);
      if (valid && controlName == "txtOccurrences") SyncEndDate();
    }
  });
  return valid;
}

void frmRecurrence::Help() { support::ShowHelp(support::HelpTopic::Recurrence); }

void frmRecurrence::btnOK_Click() {
  CMailProps& record = dialogs::EditedRecord();
  if (!StoreProps(record, true)) return;
  dialogs::ConfirmHandOver();
  record.m_IsRecurring = true;
  unloaded = true;
}
