// Message boxes through user32, the text converted from UTF-8.
#include <windows.h>

#include <string>

#include "platform/message_box.h"

namespace qorvane {
namespace {

std::wstring Wide(const std::string& text) {
  if (text.empty()) return {};
  const int n = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(n), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(), n);
  return wide;
}

class Win32MessageBox final : public MessageBoxService {
 public:
  long Show(const std::string& prompt, long buttons, const std::string& title) override {
    return MessageBoxW(GetActiveWindow(), Wide(prompt).c_str(), Wide(title).c_str(), static_cast<UINT>(buttons));
  }
};

}  // namespace

MessageBoxService& PlatformMessageBox() {
  static Win32MessageBox box;
  return box;
}

}  // namespace qorvane
