// The current dialog service, and the one that shows the forms.
#include "dialogs/dialog_service.h"

#include "dialogs/frm_once.h"
#include "dialogs/frm_recurrence.h"
#include "dialogs/hand_over.h"
#include "support/frm_about.h"

namespace dialogs {
namespace {

class FormDialogService final : public DialogService {
 public:
  void ShowOnce() override { ShowSchedule(NextDialog::Once); }
  void ShowRecurrence() override { ShowSchedule(NextDialog::Recurrence); }
  void ShowAbout() override {
    frmAbout form;
    qorvane::forms::ShowModal(form);
  }

 private:
  // Each dialog is closed before the one it hands over to is shown.
  template <class Form>
  static NextDialog ShowOne() {
    Form form;
    qorvane::forms::ShowModal(form);
    return form.next;
  }
  static void ShowSchedule(NextDialog dialog) {
    while (dialog != NextDialog::None) {
      dialog = dialog == NextDialog::Once ? ShowOne<frmOnce>() : ShowOne<frmRecurrence>();
    }
  }
};

DialogService* g_current = nullptr;

}  // namespace

DialogService& FormDialogs() {
  static FormDialogService service;
  return service;
}

DialogService& CurrentDialogService() { return g_current ? *g_current : FormDialogs(); }

void SetDialogService(DialogService* service) { g_current = service; }

bool ShowScheduleDialog() {
  if (!g_HandOver.m_MailProps) return false;
  if (g_HandOver.m_MailProps->m_IsRecurring) {
    CurrentDialogService().ShowRecurrence();
  } else {
    CurrentDialogService().ShowOnce();
  }
  return g_HandOver.Confirmed();
}

}  // namespace dialogs
