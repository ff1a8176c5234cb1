// The current message box service.
#include "platform/message_box.h"

namespace qorvane {
namespace {
MessageBoxService* g_current = nullptr;
}

MessageBoxService& CurrentMessageBox() { return g_current ? *g_current : PlatformMessageBox(); }
void SetMessageBox(MessageBoxService* service) { g_current = service; }

long MsgBox(const std::string& prompt, long buttons, const std::string& title) {
  return CurrentMessageBox().Show(prompt, buttons, title);
}

}  // namespace qorvane
