// The driver's steps and its timer.
#include "dialog_driver.h"

#include <commctrl.h>
#include <oleauto.h>

#include <utility>
#include <vector>

#include "platform/form_templates.h"
#include "win/com/wide_text.h"

namespace qorvane::testing {
namespace {

DialogDriver* g_driver = nullptr;

bool IsDialogWindow(HWND window) {
  wchar_t name[16] = {};
  return window && GetClassNameW(window, name, 16) && std::wstring_view(name) == L"#32770";
}

// The static control that holds a message box's text, in Windows and wine.
constexpr int kMessageBoxTextId = 0xFFFF;

bool IsMessageBox(HWND window) {
  if (!IsDialogWindow(window) || !GetDlgItem(window, kMessageBoxTextId)) return false;
  for (const forms::FormTemplate& layout : forms::FormTemplates()) {
    if (ShowsForm(window, layout.form)) return false;
  }
  return true;
}

bool StepMayRun(HWND active, std::string_view form) {
  return form == kMessageBoxStep ? IsMessageBox(active) : ShowsForm(active, form);
}

BOOL CALLBACK CollectDialogs(HWND window, LPARAM list) {
  if (IsDialogWindow(window)) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

}  // namespace

HWND ControlWindow(HWND dialog, std::string_view form, std::string_view control) {
  const forms::FormTemplate* layout = forms::FindFormTemplate(form);
  const int id = layout ? forms::TemplateControlId(*layout, control) : 0;
  return id ? GetDlgItem(dialog, id) : nullptr;
}

bool ShowsForm(HWND dialog, std::string_view form) {
  // Every template's controls have numbers of their own, apart from OK and Cancel.
  const forms::FormTemplate* layout = forms::FindFormTemplate(form);
  if (!layout || !IsDialogWindow(dialog)) return false;
  for (const forms::TemplateControl& control : layout->controls) {
    if (control.id > IDCANCEL) return GetDlgItem(dialog, control.id) != nullptr;
  }
  return false;
}

std::wstring TextOf(HWND window) {
  wchar_t text[512] = {};
  GetWindowTextW(window, text, 512);
  return text;
}

DialogDriver::DialogDriver(std::chrono::milliseconds limit) : deadline_(std::chrono::steady_clock::now() + limit) {
  g_driver = this;
  timer_ = SetTimer(nullptr, 0, 15, &DialogDriver::Tick);
}

DialogDriver::~DialogDriver() {
  KillTimer(nullptr, timer_);
  g_driver = nullptr;
}

void CALLBACK DialogDriver::Tick(HWND, UINT, UINT_PTR, DWORD) {
  if (g_driver) g_driver->RunNext();
}

void DialogDriver::RunNext() {
  if (std::chrono::steady_clock::now() > deadline_) {
    timedOut_ = true;
    std::vector<HWND> open;
    EnumThreadWindows(GetCurrentThreadId(), &CollectDialogs, reinterpret_cast<LPARAM>(&open));
    for (HWND dialog : open) PostMessageW(dialog, WM_CLOSE, 0, 0);
    return;
  }
  HWND active = GetActiveWindow();
  // A modal dialog is active (its first control has the focus) a moment
  // before its loop shows it; a person acts on what they see.
  if (steps_.empty() || !IsWindowVisible(active) || !steps_.front().ready(active)) return;
  if (std::chrono::steady_clock::now() - lastRun_ < steps_.front().wait) return;
  // Taken off first: a step may open a modal loop in which the next ones run.
  Step step = std::move(steps_.front());
  steps_.pop_front();
  lastRun_ = std::chrono::steady_clock::now();
  step.action(active);
}

DialogDriver& DialogDriver::Do(std::string_view form, Action action) {
  return DoWhen([name = std::string(form)](HWND active) { return StepMayRun(active, name); }, std::move(action));
}

DialogDriver& DialogDriver::DoWhen(Ready ready, Action action) {
  steps_.push_back({std::move(ready), std::move(action), std::exchange(nextWait_, std::chrono::milliseconds(0))});
  return *this;
}

DialogDriver& DialogDriver::Pause(std::chrono::milliseconds wait) {
  nextWait_ = wait;
  return *this;
}

DialogDriver& DialogDriver::Click(std::string_view form, std::string_view control) {
  std::string name(control), formName(form);
  return Do(form, [name, formName](HWND dialog) {
    HWND target = ControlWindow(dialog, formName, name);
    wchar_t kind[16] = {};
    GetClassNameW(target, kind, 16);
    if (std::wstring_view(kind) == L"Static") {
      // A label that notifies (a link) hears the mouse, not BM_CLICK.
      PostMessageW(target, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
      PostMessageW(target, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
    } else {
      PostMessageW(target, BM_CLICK, 0, 0);
    }
  });
}

DialogDriver& DialogDriver::SetDate(std::string_view form, std::string_view control, double oleDate) {
  Focus(form, control);
  std::string name(control), formName(form);
  return Do(form, [name, formName, oleDate](HWND dialog) {
    HWND picker = ControlWindow(dialog, formName, name);
    NMDATETIMECHANGE change = {};
    change.nmhdr.hwndFrom = picker;
    change.nmhdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(picker));
    change.nmhdr.code = DTN_DATETIMECHANGE;
    change.dwFlags = GDT_VALID;
    VariantTimeToSystemTime(oleDate, &change.st);
    SendMessageW(picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&change.st));
    SendMessageW(dialog, WM_NOTIFY, change.nmhdr.idFrom, reinterpret_cast<LPARAM>(&change));
  });
}

DialogDriver& DialogDriver::Pick(std::string_view form, std::string_view control, int index) {
  Focus(form, control);
  std::string name(control), formName(form);
  return Do(form, [name, formName, index](HWND dialog) {
    HWND combo = ControlWindow(dialog, formName, name);
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
  });
}

DialogDriver& DialogDriver::SelectRows(std::string_view form, std::string_view control, std::initializer_list<int> rows) {
  std::string name(control), formName(form);
  std::vector<int> chosen(rows);
  return Do(form, [name, formName, chosen](HWND dialog) {
    HWND list = ControlWindow(dialog, formName, name);
    const int count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) {
      LVITEMW state = {};
      state.stateMask = LVIS_SELECTED;
      for (int each : chosen) state.state |= each == row ? LVIS_SELECTED : 0;
      SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&state));
    }
  });
}

DialogDriver& DialogDriver::Focus(std::string_view form, std::string_view control) {
  std::string name(control), formName(form);
  return Do(form, [name, formName](HWND dialog) {
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(ControlWindow(dialog, formName, name)), TRUE);
  });
}

DialogDriver& DialogDriver::Type(std::string_view form, std::string_view control, std::string_view text) {
  Focus(form, control);
  std::string name(control), formName(form);
  const std::wstring wide = WideFromUtf8(text);
  return Do(form, [name, formName, wide](HWND dialog) {
    HWND edit = ControlWindow(dialog, formName, name);
    SendMessageW(edit, EM_SETSEL, 0, -1);
    for (wchar_t character : wide) PostMessageW(edit, WM_CHAR, character, 1);
  });
}

DialogDriver& DialogDriver::Key(std::string_view form, WPARAM virtualKey) {
  return Do(form, [virtualKey](HWND dialog) {
    HWND target = GetFocus() ? GetFocus() : dialog;
    if (virtualKey == VK_F1) {
      // A posted key skips the system's own F1 handling, which hands the
      // focused window WM_KEYF1; its default handling asks for help (WM_HELP).
      constexpr UINT kKeyF1 = 0x004D;
      PostMessageW(target, kKeyF1, 0, 0);
      return;
    }
    PostMessageW(target, WM_KEYDOWN, virtualKey, 1);
    PostMessageW(target, WM_KEYUP, virtualKey, 0xC0000001);
  });
}

DialogDriver& DialogDriver::Answer(int button) {
  return Do(kMessageBoxStep, [this, button](HWND box) {
    messages_.push_back(TextOf(GetDlgItem(box, kMessageBoxTextId)));
    PostMessageW(GetDlgItem(box, button), BM_CLICK, 0, 0);
  });
}

DialogDriver& DialogDriver::CloseBox(std::string_view form) {
  return Do(form, [](HWND dialog) { PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); });
}

}  // namespace qorvane::testing
