// The add-in's dialogs as one replaceable service: the one-time schedule
// dialog (frmOnce), the recurrence dialog (frmRecurrence) and the about box
// (frmAbout). The schedule dialogs work on the hand-over slot (hand_over.h).
//
// The service in place unless another is installed shows the forms through
// the current form view (platform/form.h): the Win32 dialogs on Windows, a
// scripted user in tests and the demo. The two schedule dialogs hand over to
// each other without nesting: the one closes, then the other opens in its
// place, as often as the user switches.
//
// Lifecycle: SetDialogService installs another service (it must outlive its
// use); nullptr puts the form dialogs back. Every call is modal and returns
// when the dialog has closed. UI thread only.
#pragma once

namespace dialogs {

class DialogService {
 public:
  virtual ~DialogService() = default;
  // frmOnce over g_HandOver: OK picks the send time and sets the result flag;
  // its "Recurrence..." option hands over to frmRecurrence.
  virtual void ShowOnce() = 0;
  // frmRecurrence over g_HandOver: OK stores the pattern and sets the result
  // flag; "Remove Recurrence" hands over to frmOnce.
  virtual void ShowRecurrence() = 0;
  virtual void ShowAbout() = 0;
};

// The forms through the current form view.
DialogService& FormDialogs();

DialogService& CurrentDialogService();
void SetDialogService(DialogService* service);

// The opener's call: frmRecurrence when the record in the slot recurs, else
// frmOnce; true when the user confirmed. A slot without a record shows
// nothing and returns false.
bool ShowScheduleDialog();

}  // namespace dialogs
