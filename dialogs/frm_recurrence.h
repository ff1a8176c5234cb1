// frmRecurrence: the recurrence dialog. The user sets the time of day, a
// pattern on one of four pages (daily, weekly, monthly, yearly) and the
// range (start date; no end, a number of occurrences, or an end date). The
// end date and the count are kept in step by listing the pattern being
// edited with the recurrence engine. It edits the record in the hand-over
// slot.
//
// Controls, in tab order (name, kind, caption; container):
//   Frame3             group    "Qorvane time"
//   Label10            label    "S&tart:"               Frame3
//   ctlStartTime       time                             Frame3
//   Frame1             group    "Recurrence pattern"
//   optDaily           option   "Daily"                 Frame1
//   optWeekly          option   "Weekly"                Frame1
//   optMonthly         option   "Monthly"               Frame1
//   optYearly          option   "Yearly"                Frame1
//   ctlDailyPage       page                             Frame1
//     optInterval1     option   "E&very"                ctlDailyPage
//     txtInterval1     text                             ctlDailyPage
//     Label3           label    "day(s)"                ctlDailyPage
//     optEveryWeekday1 option   "Every wee&kday"        ctlDailyPage
//   ctlWeeklyPage      page                             Frame1
//     Label1           label    "Recur every"           ctlWeeklyPage
//     txtInterval2     text                             ctlWeeklyPage
//     Label2           label    "week(s) on:"           ctlWeeklyPage
//     arWeekDays(0..6) check    "Sunday" .. "Saturday"  ctlWeeklyPage
//   ctlMonthlyPage     page                             Frame1
//     optDayOfMonth3   option   "&Day"                  ctlMonthlyPage
//     txtDayOfMonth3   text                             ctlMonthlyPage
//     Label4           label    "of every"              ctlMonthlyPage
//     txtInterval3     text                             ctlMonthlyPage
//     Label5           label    "month(s)"              ctlMonthlyPage
//     optTheMonthNth3  option   "T&he"                  ctlMonthlyPage
//     cboInstance3     combo    first .. last           ctlMonthlyPage
//     cboDayOfWeekMask3 combo   day .. saturday         ctlMonthlyPage
//     Label7           label    "of every"              ctlMonthlyPage
//     txtInterval33    text                             ctlMonthlyPage
//     Label6           label    "month(s)"              ctlMonthlyPage
//   ctlYearlyPage      page                             Frame1
//     optYearly4       option   "E&very"                ctlYearlyPage
//     cboMonthOfYear4  combo    january .. december     ctlYearlyPage
//     txtDayOfMonth4   text                             ctlYearlyPage
//     optYearNth4      option   "T&he"                  ctlYearlyPage
//     cboInstance4     combo                            ctlYearlyPage
//     cboDayOfWeekMask4 combo                           ctlYearlyPage
//     Label11          label    "of"                    ctlYearlyPage
//     cboMonthOfYear44 combo                            ctlYearlyPage
//   Frame2             group    "Range of recurrence"
//   Label8             label    "&Start:"               Frame2
//   ctlStartDate       date                             Frame2
//   optNoEndDate       option   "N&o end date"          Frame2
//   optEndAfter        option   "End a&fter:"           Frame2
//   txtOccurrences     text                             Frame2
//   Label9             label    "occurrences"           Frame2
//   optEndBy           option   "End &by:"              Frame2
//   ctlEndDate         date                             Frame2
//   btnOK              button   "Qorvane"               (Enter)
//   btnCancel          button   "Cancel"                (Esc; no validation)
//   btnRemoveRec       button   "Remove Recurrence"
//   btnAttachments     button   "Attachments"
// F1 opens the recurrence dialog's help page.
//
// The change and click handlers that pick an option or bring the end range
// in step act only when their control is the active one (the user's own
// action), so that what the dialog sets by itself sets off nothing.
//
// Lifecycle: created by the dialog service for one modal showing over the
// hand-over slot. UI thread only.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/schedule_dialog.h"
#include "platform/form.h"
#include "schedule/mail_props.h"

class frmRecurrence final : public qorvane::forms::Form {
 public:
  frmRecurrence();

  void Load() override;
  void Click(std::string_view controlName) override;
  void Change(std::string_view controlName) override;
  bool Validate(std::string_view controlName) override;
  void Help() override;

  // The store routine: the controls into `record`, with the dialog's checks;
  // with messages, a refusal is shown (and logged) and the field at fault
  // gets the focus. False, with the fields before the refusal stored, when
  // a check fails or the user cancels the question about short months.
  bool StoreProps(CMailProps& record, bool bShowMessages);

  // The number check: a positive whole number written in digits alone
  // ("0", "-3", "2.5" and "1 2" are not). Says "The number is not valid."
  // with messages.
  static bool IsValidNumber(std::string_view text, bool bShowMessages);

  // The pattern being edited listed up to `count` occurrences (byCount) or
  // up to `endDate`: both come back as the listing's length and its last
  // occurrence; a listing without any gives the first occurrence alone.
  // False when the controls do not hold a pattern or it can't be listed.
  bool CalcOccurrences(std::int32_t& count, double& endDate, bool byCount);

  // Brings the end date (for no end or a count) or the count (for an end
  // date) in step with what the user set.
  void SyncEndDate();

  // The dialog to show once this one has closed.
  dialogs::NextDialog next = dialogs::NextDialog::None;

 private:
  void LoadProps(const CMailProps& record);
  void ShowPattern(int page);
  void FillPageDefaults(int page);
  int SelectedPattern() const;
  bool Checked(std::string_view controlName) const;
  std::string& Text(std::string_view controlName);
  bool Refuse(const std::string& message, bool bShowMessages, std::string_view focus = {});
  bool ReadNumber(std::string_view controlName, bool bShowMessages, std::int32_t& number);
  bool ReadListIndex(std::string_view controlName, bool bShowMessages, int& index);
  bool StorePattern(CMailProps& record, bool bShowMessages);
  void PatternOption_Click(std::string_view controlName, int page);
  void btnOK_Click();
};
