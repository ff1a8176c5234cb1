// The add-in's dialogs as one replaceable service: the one-time schedule
// dialog (frmOnce), the recurrence dialog (frmRecurrence) and the about box
// (frmAbout). The schedule dialogs work on the hand-over slot (hand_over.h).
// The real dialogs implement it on Windows; a scripted user (scenario/)
// answers it in tests and the demo.
//
// Lifecycle: without an installed service, no dialog can be shown: each call
// is logged as a warning and acts as Cancel. SetDialogService installs one
// (it must outlive its use); nullptr uninstalls it. Every call is modal and
// returns when the dialog has closed. UI thread only.
#pragma once

namespace dialogs {

class DialogService {
 public:
  virtual ~DialogService() = default;
  // frmOnce over g_HandOver: OK picks the send time and sets the result flag;
  // its "Recurrence..." option hands over to ShowRecurrence.
  virtual void ShowOnce() = 0;
  // frmRecurrence over g_HandOver: OK stores the pattern and sets the result
  // flag; "Remove Recurrence" hands over to ShowOnce.
  virtual void ShowRecurrence() = 0;
  virtual void ShowAbout() = 0;
};

DialogService& CurrentDialogService();
void SetDialogService(DialogService* service);

// The opener's call: frmRecurrence when the record in the slot recurs, else
// frmOnce; true when the user confirmed. A slot without a record shows
// nothing and returns false.
bool ShowScheduleDialog();

}  // namespace dialogs
