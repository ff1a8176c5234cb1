// The current dialog service, and the stand-in used while none is installed.
#include "dialogs/dialog_service.h"

#include "dialogs/hand_over.h"
#include "infra/cdebug.h"

namespace dialogs {
namespace {

class NoDialogs final : public DialogService {
 public:
  void ShowOnce() override { Missing("frmOnce"); }
  void ShowRecurrence() override { Missing("frmRecurrence"); }
  void ShowAbout() override { Missing("frmAbout"); }

 private:
  static void Missing(const char* form) { g_debug.OutWarning("dialogs.DialogService", std::string(form) + " has no view"); }
};

DialogService* g_current = nullptr;

}  // namespace

DialogService& CurrentDialogService() {
  static NoDialogs none;
  return g_current ? *g_current : none;
}

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
