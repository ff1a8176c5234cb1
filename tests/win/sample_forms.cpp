// The four sample forms: the dialogs' controls with their captions, filled
// as the dialogs open, and handlers that record.
#include "sample_forms.h"

#include <algorithm>

namespace qorvane::testing {

using forms::Control;
using forms::ControlKind;

Control& SampleForm::Add(std::string name, ControlKind kind, std::string container, std::string caption) {
  Control& control = controls.emplace_back();
  control.name = std::move(name);
  control.kind = kind;
  control.container = std::move(container);
  control.caption = std::move(caption);
  return control;
}

void SampleForm::ShowPage(std::string_view page) {
  for (const char* each : {"ctlDailyPage", "ctlWeeklyPage", "ctlMonthlyPage", "ctlYearlyPage"}) {
    (*this)[each].visible = page == each;
  }
}

int SampleForm::Count(std::string_view call) const {
  return static_cast<int>(std::count(calls.begin(), calls.end(), call));
}

std::vector<std::string> SampleForm::Actions() const {
  std::vector<std::string> actions;
  for (const std::string& call : calls) {
    if (call.rfind("Validate ", 0) != 0) actions.push_back(call);
  }
  return actions;
}

std::string SampleForm::ActiveAt(std::string_view call) const {
  const auto found = std::find(calls.begin(), calls.end(), call);
  return found == calls.end() ? "(not called)" : activeAtCall[static_cast<std::size_t>(found - calls.begin())];
}

void SampleForm::Record(std::string call) {
  calls.push_back(std::move(call));
  activeAtCall.push_back(activeControl);
}

void SampleForm::Load() {
  Record("Load");
  if (fill_) fill_(*this);
  if (onLoad) onLoad(*this);
}

void SampleForm::Click(std::string_view controlName) {
  Record("Click " + std::string(controlName));
  if (onClick) {
    onClick(*this, controlName);
    return;
  }
  if (controlName == "btnOk" || controlName == "btnOK" || controlName == "btnCancel") unloaded = true;
  static constexpr std::string_view kPages[][2] = {{"optDaily", "ctlDailyPage"},
                                                   {"optWeekly", "ctlWeeklyPage"},
                                                   {"optMonthly", "ctlMonthlyPage"},
                                                   {"optYearly", "ctlYearlyPage"}};
  for (const auto& [option, page] : kPages) {
    if (controlName == option) ShowPage(page);
  }
}

void SampleForm::Change(std::string_view controlName) {
  Record("Change " + std::string(controlName));
  if (onChange) onChange(*this, controlName);
}

bool SampleForm::Validate(std::string_view controlName) {
  Record("Validate " + std::string(controlName));
  return onValidate ? onValidate(*this, controlName) : true;
}

void SampleForm::QueryClose() {
  Record("QueryClose");
  unloaded = true;
}

void SampleForm::Help() { Record("Help"); }

void SampleForm::SetButtons(std::string ok, std::string cancel) {
  defaultButton = std::move(ok);
  cancelButton = std::move(cancel);
  if (cancelButton != defaultButton) (*this)[cancelButton].causesValidation = false;
}

std::unique_ptr<SampleForm> SampleOnce() {
  auto form = std::make_unique<SampleForm>();
  form->name = "frmOnce";
  form->caption = "Qorvane";
  form->Add("Frame3", ControlKind::Group, "", "Select date and time for the e-mail to be sent.");
  form->Add("Label4", ControlKind::Label, "Frame3", "&Date:");
  form->Add("ctlDate", ControlKind::DatePicker, "Frame3");
  form->Add("Label3", ControlKind::Label, "Frame3", "&Time:");
  form->Add("ctlTime", ControlKind::TimePicker, "Frame3");
  form->Add("Frame2", ControlKind::Group, "", "Recurrence");
  form->Add("optOnce", ControlKind::OptionButton, "Frame2", "&Once");
  form->Add("optRecurrence", ControlKind::OptionButton, "Frame2", "&Recurrence...");
  form->Add("btnAttachments", ControlKind::Button, "", "Attachments");
  form->Add("btnOk", ControlKind::Button, "", "Qorvane");
  form->Add("btnCancel", ControlKind::Button, "", "Cancel");
  form->Add("btnHelp", ControlKind::Button, "", "&Help");
  form->SetButtons("btnOk", "btnCancel");
  form->fill_ = [](SampleForm& f) {
    f["ctlDate"].value = kSampleSendTime;
    f["ctlTime"].value = kSampleSendTime;
    f["ctlTime"].customFormat = "h:mm tt";
    f["ctlTime"].upDown = true;
    f["optOnce"].checked = true;
  };
  return form;
}

std::unique_ptr<SampleForm> SampleRecurrence() {
  auto form = std::make_unique<SampleForm>();
  SampleForm& f = *form;
  f.name = "frmRecurrence";
  f.caption = "Qorvane Recurrence";
  f.Add("Frame3", ControlKind::Group, "", "Qorvane time");
  f.Add("Label10", ControlKind::Label, "Frame3", "S&tart:");
  f.Add("ctlStartTime", ControlKind::TimePicker, "Frame3");
  f.Add("Frame1", ControlKind::Group, "", "Recurrence pattern");
  f.Add("optDaily", ControlKind::OptionButton, "Frame1", "Daily");
  f.Add("optWeekly", ControlKind::OptionButton, "Frame1", "Weekly");
  f.Add("optMonthly", ControlKind::OptionButton, "Frame1", "Monthly");
  f.Add("optYearly", ControlKind::OptionButton, "Frame1", "Yearly");

  f.Add("ctlDailyPage", ControlKind::Page, "Frame1");
  f.Add("optInterval1", ControlKind::OptionButton, "ctlDailyPage", "E&very");
  f.Add("txtInterval1", ControlKind::TextBox, "ctlDailyPage");
  f.Add("Label3", ControlKind::Label, "ctlDailyPage", "day(s)");
  f.Add("optEveryWeekday1", ControlKind::OptionButton, "ctlDailyPage", "Every wee&kday");

  f.Add("ctlWeeklyPage", ControlKind::Page, "Frame1");
  f.Add("Label1", ControlKind::Label, "ctlWeeklyPage", "Recur every");
  f.Add("txtInterval2", ControlKind::TextBox, "ctlWeeklyPage");
  f.Add("Label2", ControlKind::Label, "ctlWeeklyPage", "week(s) on:");
  static const char* const kDays[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
  for (int day = 0; day < 7; ++day) {
    f.Add("arWeekDays(" + std::to_string(day) + ")", ControlKind::CheckBox, "ctlWeeklyPage", kDays[day]);
  }

  const std::vector<std::string> instances = {"first", "second", "third", "fourth", "last"};
  const std::vector<std::string> weekdays = {"day",     "weekday", "weekend day", "sunday", "monday",
                                             "tuesday", "wednesday", "thursday",  "friday", "saturday"};
  const std::vector<long> weekdayMasks = {127, 62, 65, 1, 2, 4, 8, 16, 32, 64};
  const std::vector<std::string> months = {"january", "february", "march",     "april",   "may",      "june",
                                           "july",    "august",   "september", "october", "november", "december"};
  auto combo = [&](const char* name, const char* page, const std::vector<std::string>& items,
                   const std::vector<long>& data = {}) {
    Control& control = f.Add(name, ControlKind::ComboBox, page);
    control.items = items;
    control.itemData = data;
    control.listIndex = 0;
  };

  f.Add("ctlMonthlyPage", ControlKind::Page, "Frame1");
  f.Add("optDayOfMonth3", ControlKind::OptionButton, "ctlMonthlyPage", "Da&y");
  f.Add("txtDayOfMonth3", ControlKind::TextBox, "ctlMonthlyPage");
  f.Add("Label4", ControlKind::Label, "ctlMonthlyPage", "of every");
  f.Add("txtInterval3", ControlKind::TextBox, "ctlMonthlyPage");
  f.Add("Label5", ControlKind::Label, "ctlMonthlyPage", "month(s)");
  f.Add("optTheMonthNth3", ControlKind::OptionButton, "ctlMonthlyPage", "T&he");
  combo("cboInstance3", "ctlMonthlyPage", instances);
  combo("cboDayOfWeekMask3", "ctlMonthlyPage", weekdays, weekdayMasks);
  f.Add("Label7", ControlKind::Label, "ctlMonthlyPage", "of every");
  f.Add("txtInterval33", ControlKind::TextBox, "ctlMonthlyPage");
  f.Add("Label6", ControlKind::Label, "ctlMonthlyPage", "month(s)");

  f.Add("ctlYearlyPage", ControlKind::Page, "Frame1");
  f.Add("optYearly4", ControlKind::OptionButton, "ctlYearlyPage", "E&very");
  combo("cboMonthOfYear4", "ctlYearlyPage", months);
  f.Add("txtDayOfMonth4", ControlKind::TextBox, "ctlYearlyPage");
  f.Add("optYearNth4", ControlKind::OptionButton, "ctlYearlyPage", "Th&e");
  combo("cboInstance4", "ctlYearlyPage", instances);
  combo("cboDayOfWeekMask4", "ctlYearlyPage", weekdays, weekdayMasks);
  f.Add("Label11", ControlKind::Label, "ctlYearlyPage", "of");
  combo("cboMonthOfYear44", "ctlYearlyPage", months);

  f.Add("Frame2", ControlKind::Group, "", "Range of recurrence");
  f.Add("Label8", ControlKind::Label, "Frame2", "&Start:");
  f.Add("ctlStartDate", ControlKind::DatePicker, "Frame2");
  f.Add("optNoEndDate", ControlKind::OptionButton, "Frame2", "N&o end date");
  f.Add("optEndAfter", ControlKind::OptionButton, "Frame2", "End a&fter:");
  f.Add("txtOccurrences", ControlKind::TextBox, "Frame2");
  f.Add("Label9", ControlKind::Label, "Frame2", "occurrences");
  f.Add("optEndBy", ControlKind::OptionButton, "Frame2", "End &by:");
  f.Add("ctlEndDate", ControlKind::DatePicker, "Frame2");
  f.Add("btnOK", ControlKind::Button, "", "Qorvane");
  f.Add("btnCancel", ControlKind::Button, "", "Cancel");
  f.Add("btnRemoveRec", ControlKind::Button, "", "Remove Recurrence");
  f.SetButtons("btnOK", "btnCancel");
  f.Add("btnAttachments", ControlKind::Button, "", "Attachments");

  f.fill_ = [](SampleForm& s) {
    s["ctlStartTime"].value = kSampleSendTime;
    s["ctlStartTime"].customFormat = "h:mm tt";
    s["ctlStartTime"].upDown = true;
    s["ctlStartDate"].value = kSampleSendTime;
    s["ctlEndDate"].value = kSampleSendTime + 63;  // the tenth weekly Monday
    s["optWeekly"].checked = true;
    s.ShowPage("ctlWeeklyPage");
    for (const char* text : {"txtInterval1", "txtInterval2", "txtInterval3", "txtInterval33"}) s[text].text = "1";
    s["txtDayOfMonth3"].text = "3";
    s["txtDayOfMonth4"].text = "3";
    s["optInterval1"].checked = true;
    s["arWeekDays(1)"].checked = true;
    s["optDayOfMonth3"].checked = true;
    s["cboDayOfWeekMask3"].listIndex = 4;
    s["cboDayOfWeekMask4"].listIndex = 4;
    s["cboMonthOfYear4"].listIndex = 2;
    s["cboMonthOfYear44"].listIndex = 2;
    s["optYearly4"].checked = true;
    s["optNoEndDate"].checked = true;
    s["txtOccurrences"].text = "10";
  };
  return form;
}

std::unique_ptr<SampleForm> SampleAttachments() {
  auto form = std::make_unique<SampleForm>();
  form->name = "frmAttachments";
  form->caption = "Attachments";
  form->Add("Label2", ControlKind::Label, "", "Attachments:");
  Control& files = form->Add("lvFiles", ControlKind::ListView, "");
  files.columns = {"Name", "Reference"};
  form->Add("btnAddFile", ControlKind::Button, "", "Add File");
  form->Add("btnAddFolder", ControlKind::Button, "", "Add Folder");
  form->Add("btnRemove", ControlKind::Button, "", "Remove");
  form->Add("Frame1", ControlKind::Group, "", "Folder Options");
  form->Add("Label1", ControlKind::Label, "Frame1", "Ignore file(s). When entering more than one file use commas:");
  form->Add("txtIgnore", ControlKind::TextBox, "Frame1");
  form->Add("bntAddIgnore", ControlKind::Button, "Frame1", "Add to List");
  form->Add("chkIgnore", ControlKind::CheckBox, "Frame1", "Ignore System && Hidden Files");
  form->Add("btnOK", ControlKind::Button, "", "OK");
  form->Add("btnCancel", ControlKind::Button, "", "Cancel");
  form->SetButtons("btnOK", "btnCancel");
  form->fill_ = [](SampleForm& f) {
    f["lvFiles"].rows = {{{"summary.pdf", "C:\\Reports\\summary.pdf"}, false},
                         {{"<LastModificated>", "C:\\Data\\"}, false},
                         {{"notes.txt", "C:\\Users\\ann\\notes.txt"}, false}};
    f["btnRemove"].enabled = false;
    f["txtIgnore"].text = "thumbs.db, desktop.ini";
    f["txtIgnore"].selStart = static_cast<int>(f["txtIgnore"].text.size());
    f["chkIgnore"].checked = true;
  };
  return form;
}

std::unique_ptr<SampleForm> SampleAbout() {
  auto form = std::make_unique<SampleForm>();
  form->name = "frmAbout";
  form->caption = "About Qorvane (ver.1.0.0)";
  form->Add("lblProduct", ControlKind::Label, "", "Qorvane");
  form->Add("lblVersion", ControlKind::Label, "", "Version 1.0.0");
  form->Add("lblWebPage", ControlKind::Label, "", "www.qorvane.example");
  form->Add("lblSupport", ControlKind::Label, "", "support@qorvane.example");
  form->Add("btnOK", ControlKind::Button, "", "OK");
  form->Add("btnHelp", ControlKind::Button, "", "&Help");
  form->Add("btnBugReport", ControlKind::Button, "", "&Bug Report");
  form->SetButtons("btnOK", "btnOK");
  return form;
}

std::unique_ptr<SampleForm> SampleByName(std::string_view formName) {
  if (formName == "frmOnce") return SampleOnce();
  if (formName == "frmRecurrence") return SampleRecurrence();
  if (formName == "frmAttachments") return SampleAttachments();
  if (formName == "frmAbout") return SampleAbout();
  return nullptr;
}

}  // namespace qorvane::testing
