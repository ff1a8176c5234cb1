// The one-time schedule dialog's controls and handlers.
#include "dialogs/frm_once.h"

#include <string>

#include "dialogs/frm_attachments.h"
#include "infra/error_trap.h"
#include "support/help.h"

using qorvane::forms::ControlKind;

namespace {
constexpr const char* kLogName = "frmDelay";
}  // namespace

frmOnce::frmOnce() {
  name = "frmOnce";
  caption = "Qorvane";
  // Design size in twips; the Windows view replaces it with its template's.
  rect.width = 4680;
  rect.height = 3240;
  Add(ControlKind::Group, "Frame3", "Select date and time for the e-mail to be sent.");
  Add(ControlKind::Label, "Label4", "&Date:", "Frame3");
  Add(ControlKind::DatePicker, "ctlDate", "", "Frame3");
  Add(ControlKind::Label, "Label3", "&Time:", "Frame3");
  Add(ControlKind::TimePicker, "ctlTime", "", "Frame3");
  Add(ControlKind::Group, "Frame2", "Recurrence");
  Add(ControlKind::OptionButton, "optOnce", "&Once", "Frame2").checked = true;
  Add(ControlKind::OptionButton, "optRecurrence", "&Recurrence...", "Frame2");
  Add(ControlKind::Button, "btnOk", "Qorvane");
  Add(ControlKind::Button, "btnCancel", "Cancel").causesValidation = false;
  Add(ControlKind::Button, "btnAttachments", "Attachments");
  Add(ControlKind::Button, "btnHelp", "&Help");
  defaultButton = "btnOk";
  cancelButton = "btnCancel";
}

void frmOnce::Load() {
  qorvane::Trap(std::string(kLogName) + ".Form_Load", [&] {
    dialogs::ShowTimeWithoutSeconds((*this)["ctlTime"]);
    const CMailProps& record = dialogs::EditedRecord();
    (*this)["ctlDate"].value = record.m_ScheduleTime;
    (*this)["ctlTime"].value = record.m_ScheduleTime;
    (*this)["ctlDate"].enabled = !record.m_IsRecurring;
    (*this)["ctlTime"].enabled = !record.m_IsRecurring;
    dialogs::PlaceOverOpener(*this);
  });
}

double frmOnce::PickedTime() const { return dialogs::PickedTime((*this)["ctlDate"].value, (*this)["ctlTime"].value); }

void frmOnce::Click(std::string_view controlName) {
  const std::string label = std::string(kLogName) + "." + std::string(controlName) + "_Click";
  if (controlName == "btnOk") {
    btnOk_Click();
  } else if (controlName == "btnCancel") {
    unloaded = true;
  } else if (controlName == "optRecurrence") {
    qorvane::Trap(label, [&] { optRecurrence_Click(); });
  } else if (controlName == "btnAttachments") {
    qorvane::Trap(label, [&] { frmAttachments::ShowOverHandOver(); });
  } else if (controlName == "btnHelp") {
    Help();
  }
}

void frmOnce::Help() { support::ShowHelp(support::HelpTopic::Once); }

// Each step on its own: a failing step does not keep the dialog open.
void frmOnce::btnOk_Click() {
  qorvane::IgnoreErrors([] { dialogs::ConfirmHandOver(); });
  qorvane::IgnoreErrors([&] { dialogs::EditedRecord().m_ScheduleTime = PickedTime(); });
  unloaded = true;
}

// The picked time becomes the recurrence's start; frmRecurrence takes over.
void frmOnce::optRecurrence_Click() {
  dialogs::EditedRecord().m_ScheduleTime = PickedTime();
  unloaded = true;
  next = dialogs::NextDialog::Recurrence;
}
