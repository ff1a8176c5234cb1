// frmOnce: the one-time schedule dialog. The user picks the date and time a
// mail is sent at; from here they can switch to the recurrence dialog or
// attach files. It edits the record in the hand-over slot and logs under
// "frmDelay" (its name of old).
//
// Controls, in tab order (name, kind, caption; container):
//   Frame3          group         "Select date and time for the e-mail to be sent."
//   Label4          label         "&Date:"           Frame3
//   ctlDate         date picker                      Frame3
//   Label3          label         "&Time:"           Frame3
//   ctlTime         time picker                      Frame3
//   Frame2          group         "Recurrence"
//   optOnce         option        "&Once"            Frame2 (selected)
//   optRecurrence   option        "&Recurrence..."   Frame2
//   btnOk           button        "Qorvane"          (Enter)
//   btnCancel       button        "Cancel"           (Esc; no validation)
//   btnAttachments  button        "Attachments"
//   btnHelp         button        "&Help"            (and F1)
//
// OK stores the picked time (seconds dropped) and sets the result flag;
// Cancel and the close box change nothing; "Recurrence..." stores the picked
// time and asks for frmRecurrence in this dialog's place (`next`).
//
// Lifecycle: created by the dialog service for one modal showing over the
// hand-over slot. UI thread only.
#pragma once

#include <string_view>

#include "dialogs/schedule_dialog.h"
#include "platform/form.h"

class frmOnce final : public qorvane::forms::Form {
 public:
  frmOnce();

  void Load() override;
  void Click(std::string_view controlName) override;
  void Help() override;

  // The dialog to show once this one has closed.
  dialogs::NextDialog next = dialogs::NextDialog::None;

 private:
  double PickedTime() const;
  void btnOk_Click();
  void optRecurrence_Click();
};
