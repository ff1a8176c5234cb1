// Message boxes through user32, the text converted from UTF-8.
#include <windows.h>

#include <string>

#include "platform/message_box.h"
#include "platform/win_text.h"

namespace qorvane {
namespace {

class Win32MessageBox final : public MessageBoxService {
 public:
  long Show(const std::string& prompt, long buttons, const std::string& title) override {
    return MessageBoxW(GetActiveWindow(), WideFromUtf8(prompt).c_str(), WideFromUtf8(title).c_str(), static_cast<UINT>(buttons));
  }
};

}  // namespace

MessageBoxService& PlatformMessageBox() {
  static Win32MessageBox box;
  return box;
}

}  // namespace qorvane
