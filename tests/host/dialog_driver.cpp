// The dialog driver's hook and what it reads from a dialog.
#include "tests/host/dialog_driver.h"

#include <commctrl.h>

#include "win/com/wide_text.h"

namespace host {
namespace {

DialogDriver* g_driver = nullptr;

std::string TextOf(HWND window) {
  wchar_t text[1024] = {};
  GetWindowTextW(window, text, 1024);
  return qorvane::Utf8FromWide(text);
}

// A message box keeps its prompt in the static control 0xFFFF.
constexpr int kMessageBoxText = 0xFFFF;

}  // namespace

bool CommonControls6InEffect() {
  HWND button = CreateWindowExW(0, L"Button", L"probe", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                GetModuleHandleW(nullptr), nullptr);
  if (!button) return false;
  SIZE size{};
  const bool v6 = SendMessageW(button, BCM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&size)) != FALSE;
  DestroyWindow(button);
  return v6;
}

DialogDriver::DialogDriver(Script script) : script_(std::move(script)) {
  g_driver = this;
  hook_ = SetWindowsHookExW(WH_CALLWNDPROCRET, &OnMessageDone, nullptr, GetCurrentThreadId());
}

DialogDriver::~DialogDriver() {
  if (hook_) UnhookWindowsHookEx(hook_);
  if (g_driver == this) g_driver = nullptr;
}

// What a click on the button tells its dialog; unlike BM_CLICK it needs
// the dialog neither shown nor active.
void DialogDriver::Press(HWND dialog, int buttonId) {
  PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(buttonId, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(dialog, buttonId)));
}

LRESULT CALLBACK DialogDriver::OnMessageDone(int code, WPARAM wParam, LPARAM lParam) {
  const auto* message = reinterpret_cast<const CWPRETSTRUCT*>(lParam);
  if (code == HC_ACTION && g_driver && message && message->message == WM_INITDIALOG) {
    const HWND dialog = message->hwnd;
    SeenDialog seen;
    seen.title = TextOf(dialog);
    if (HWND prompt = GetDlgItem(dialog, kMessageBoxText)) seen.text = TextOf(prompt);
    // The hook runs inside the call that made the dialog, in its context.
    seen.commonControls6 = CommonControls6InEffect();
    g_driver->seen_.push_back(seen);
    if (g_driver->script_) g_driver->script_(dialog, seen);
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace host
