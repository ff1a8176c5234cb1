// The host's foreground window, its keystrokes in SendKeys notation, and the
// message pump.
#include "tests/host/client_window.h"

#include <algorithm>
#include <string>

#include "win/com/wide_text.h"

namespace host {
namespace {

constexpr wchar_t kWindowClass[] = L"QorvaneHostClientWindow";

struct KeyName {
  WORD vk;
  const char* notation;
};

constexpr KeyName kKeyNames[] = {
    {VK_RETURN, "~"},         {VK_TAB, "{TAB}"},       {VK_ESCAPE, "{ESC}"},     {VK_BACK, "{BACKSPACE}"},
    {VK_DELETE, "{DELETE}"},  {VK_INSERT, "{INSERT}"}, {VK_HOME, "{HOME}"},      {VK_END, "{END}"},
    {VK_PRIOR, "{PGUP}"},     {VK_NEXT, "{PGDN}"},     {VK_LEFT, "{LEFT}"},      {VK_RIGHT, "{RIGHT}"},
    {VK_UP, "{UP}"},          {VK_DOWN, "{DOWN}"},     {VK_CANCEL, "{BREAK}"},   {VK_HELP, "{HELP}"},
    {VK_CAPITAL, "{CAPSLOCK}"}, {VK_NUMLOCK, "{NUMLOCK}"}, {VK_SCROLL, "{SCROLLLOCK}"}, {VK_SNAPSHOT, "{PRTSC}"},
    {VK_ADD, "{ADD}"},        {VK_SUBTRACT, "{SUBTRACT}"}, {VK_MULTIPLY, "{MULTIPLY}"}, {VK_DIVIDE, "{DIVIDE}"},
};

bool Held(int vk) { return GetKeyState(vk) < 0; }

std::string Modifiers() {
  std::string held;
  if (Held(VK_SHIFT)) held += '+';
  if (Held(VK_CONTROL)) held += '^';
  if (Held(VK_MENU)) held += '%';
  return held;
}

// A non-character key's notation, or "" for a key that types a character.
std::string NameOf(WPARAM vk) {
  if (vk >= VK_F1 && vk <= VK_F16) return "{F" + std::to_string(vk - VK_F1 + 1) + "}";
  for (const KeyName& key : kKeyNames) {
    if (key.vk == vk) return key.notation;
  }
  return {};
}

bool IsModifier(WPARAM vk) {
  return vk == VK_SHIFT || vk == VK_CONTROL || vk == VK_MENU || vk == VK_LSHIFT || vk == VK_RSHIFT ||
         vk == VK_LCONTROL || vk == VK_RCONTROL || vk == VK_LMENU || vk == VK_RMENU;
}

// A typed character in notation: the notation's own signs go in braces.
std::string CharacterNotation(const std::string& utf8) {
  if (utf8.size() == 1 && std::string_view("+^%~(){}").find(utf8[0]) != std::string_view::npos)
    return "{" + utf8 + "}";
  return utf8;
}

}  // namespace

ClientWindow::ClientWindow(client::Ref<client::Application> application) : application_(std::move(application)) {
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = &WindowProc;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.lpszClassName = kWindowClass;
  RegisterClassExW(&windowClass);  // fails harmlessly when registered already
  window_ = CreateWindowExW(0, kWindowClass, L"Outlook (host)", WS_OVERLAPPEDWINDOW, 0, 0, 640, 480, nullptr, nullptr,
                            GetModuleHandleW(nullptr), nullptr);
  if (window_) {
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ShowWindow(window_, SW_SHOW);
  }
}

ClientWindow::~ClientWindow() {
  if (window_) {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
  }
}

bool ClientWindow::Activate() {
  if (!window_) return false;
  SetForegroundWindow(window_);
  SetFocus(window_);
  PumpWaitingMessages();
  return GetForegroundWindow() == window_;
}

void ClientWindow::Keystroke(const std::string& keys) {
  if (application_) application_->SendKeys(keys);
}

LRESULT CALLBACK ClientWindow::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<ClientWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!self) return DefWindowProcW(window, message, wParam, lParam);
  switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: {
      if (IsModifier(wParam)) return 0;
      const std::string name = NameOf(wParam);
      if (!name.empty()) {
        self->Keystroke(Modifiers() + name);
      } else if ((Held(VK_CONTROL) || Held(VK_MENU)) &&
                 ((wParam >= 'A' && wParam <= 'Z') || (wParam >= '0' && wParam <= '9'))) {
        // With Ctrl or Alt the key types no character of its own.
        const char key = static_cast<char>(wParam >= 'A' && wParam <= 'Z' ? wParam - 'A' + 'a' : wParam);
        self->Keystroke(Modifiers() + key);
      }
      return 0;
    }
    case WM_CHAR: {
      if (wParam < 0x20 || Held(VK_CONTROL) || Held(VK_MENU)) return 0;
      const wchar_t unit = static_cast<wchar_t>(wParam);
      static wchar_t pendingHigh = 0;  // the first half of a surrogate pair
      if (IS_HIGH_SURROGATE(unit)) {
        pendingHigh = unit;
        return 0;
      }
      const wchar_t pair[] = {pendingHigh, unit};
      const std::string utf8 = pendingHigh ? qorvane::Utf8FromWide(pair, 2) : qorvane::Utf8FromWide(&unit, 1);
      pendingHigh = 0;
      self->Keystroke(CharacterNotation(utf8));
      return 0;
    }
    case WM_SYSCHAR:
      return 0;  // handled at the key-down: no menu beeps
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
}

int PumpWaitingMessages() {
  int delivered = 0;
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
    ++delivered;
  }
  return delivered;
}

bool RunMessageLoopUntil(const std::function<bool()>& done, DWORD timeoutMs) {
  const ULONGLONG end = GetTickCount64() + timeoutMs;
  for (;;) {
    PumpWaitingMessages();
    if (done()) return true;
    const ULONGLONG now = GetTickCount64();
    if (now >= end) return false;
    const DWORD wait = static_cast<DWORD>(std::min<ULONGLONG>(10, end - now));
    MsgWaitForMultipleObjectsEx(0, nullptr, wait, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  }
}

}  // namespace host
