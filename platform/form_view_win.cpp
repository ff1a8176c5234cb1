// The Win32 view of a form: a modal dialog from the form's template among
// this module's resources, showing the form's state in real controls and
// telling the form what the user did.
//
// Showing: the template is looked up in the module that holds this code
// (the add-in's DLL inside the mail client, or a test executable), never in
// the process's EXE. The dialog is created per-monitor DPI aware, with
// comctl32 v6 from the module's own manifest, owned by the active window of
// the process and placed where the form asks.
//
// Mirroring: after Load and after every handler the whole state of the form
// is written into the controls with the view's own notifications ignored,
// so nothing depends on a notification that a programmatic change does not
// send (a picker set by DTM_SETSYSTEMTIME sends none). Only what differs is
// written, so that a control the user is working in is left alone.
//
// Reporting: a user's action is first written into the form's control (the
// new check, text, value, selection, the active control), then the handler
// runs. Leaving a control for another one of the dialog asks the form to
// validate it; a refusal puts the focus back and drops the action that
// moved it. The dialog ends once a handler has unloaded the form.
//
// Failures: a form without a template, or a dialog that cannot be created,
// leaves the form unloaded and raises a RuntimeError to the caller (the
// caller's trap logs it; the form reads as cancelled). An error escaping a
// handler ends the dialog the same way and is raised again by ShowModal once
// the window is gone: nothing ever unwinds through the window procedure.
#include <windows.h>
#include <commctrl.h>
#include <oleauto.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "base/runtime_error.h"
#include "platform/form.h"
#include "platform/form_templates.h"
#include "platform/screen_metrics.h"
#include "platform/win_text.h"
#include "win/com/common_controls.h"
#include "win/com/dpi_awareness.h"
#include "win/com/unique_handle.h"

namespace qorvane::forms {
namespace {

// Posted to the dialog to settle what waits for the message loop to come
// round: a validation after a focus move, a list view's new selection.
constexpr UINT kSettleMessage = WM_APP + 0x51;
constexpr UINT_PTR kSubclassId = 0x51;

std::wstring WindowText(HWND window) {
  const int length = GetWindowTextLengthW(window);
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), length + 1)));
  return text;
}

void SetTextIfDifferent(HWND window, const std::string& text) {
  const std::wstring wide = WideFromUtf8(text);
  if (WindowText(window) != wide) SetWindowTextW(window, wide.c_str());
}

bool HasStyle(HWND window, LONG style) { return (GetWindowLongW(window, GWL_STYLE) & style) == style; }

bool IsUsable(HWND window) { return window && IsWindowEnabled(window) && HasStyle(window, WS_VISIBLE); }

bool SameSecond(const SYSTEMTIME& a, const SYSTEMTIME& b) {
  return a.wYear == b.wYear && a.wMonth == b.wMonth && a.wDay == b.wDay && a.wHour == b.wHour &&
         a.wMinute == b.wMinute && a.wSecond == b.wSecond;
}

// The user's own time format ("h:mm:ss tt"): what a time picker without a
// format of the form's shows, in either style (without the spinner style a
// picker would show a date).
std::wstring UserTimeFormat() {
  wchar_t format[80] = {};
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, format, 80);
  return length > 1 ? std::wstring(format, static_cast<std::size_t>(length - 1)) : std::wstring(L"h:mm:ss tt");
}

long ToUnits(long pixels, double unitsPerPixel) { return std::lround(pixels * unitsPerPixel); }
int ToPixels(long units, double unitsPerPixel) {
  return unitsPerPixel > 0 ? static_cast<int>(std::lround(units / unitsPerPixel)) : static_cast<int>(units);
}

// Sets a flag for a scope and puts back what it was.
class FlagScope {
 public:
  explicit FlagScope(bool& flag) : flag_(flag), previous_(std::exchange(flag, true)) {}
  ~FlagScope() { flag_ = previous_; }
  FlagScope(const FlagScope&) = delete;
  FlagScope& operator=(const FlagScope&) = delete;

 private:
  bool& flag_;
  bool previous_;
};

// One showing of one form.
class DialogSession {
 public:
  DialogSession(Form& form, const FormTemplate& layout, HWND owner) : form_(form), layout_(layout), owner_(owner) {}
  DialogSession(const DialogSession&) = delete;
  DialogSession& operator=(const DialogSession&) = delete;

  static INT_PTR CALLBACK Proc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

  Form& form() const { return form_; }
  HWND window() const { return dialog_; }
  HWND owner() const { return owner_; }
  void RethrowFailure() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  // What the view last put into a control, for the parts it cannot read
  // back cheaply (lists, formats) or must not keep re-applying (the caret).
  struct Slot {
    std::string name;
    HWND window = nullptr;
    ControlKind kind = ControlKind::Label;
    bool listed = false;
    std::vector<std::string> items;
    std::vector<long> itemData;
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> cells;
    bool formatted = false;
    std::wstring format;  // kept alive: the picker may keep the pointer
    int selStart = -1;
  };

  static LRESULT CALLBACK ControlProc(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data);

  INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);
  BOOL Init();
  void OnCommand(int id, int code, HWND from);
  void OnNotify(const NMHDR& header);
  INT_PTR LinkColours(HDC dc, HWND label);
  bool OverLink(HWND window) const;

  // Reporting.
  template <class Handler>
  void Act(Handler&& handler);
  template <class Handler>
  void Run(Handler&& handler);
  bool Settle();
  void FocusLeft(HWND control, HWND next) noexcept;
  void FocusEntered(HWND control) noexcept;
  void ReadSelection(Slot& slot, Control& control) const;
  void Fail() noexcept;
  void End();

  // Mirroring.
  void Mirror();
  void MirrorControl(Slot& slot, const Control& control);
  void MirrorCombo(Slot& slot, const Control& control);
  void MirrorList(Slot& slot, const Control& control);
  void MirrorPicker(Slot& slot, const Control& control);
  void Rebuild(Slot& slot, LONG style);
  void MirrorPlacement();
  void MirrorFocus(HWND focusBefore);

  Slot* SlotOf(HWND window);
  Slot* SlotById(int id);
  Slot* SlotByName(std::string_view name);
  HWND ControlOf(HWND window) const;

  Form& form_;
  const FormTemplate& layout_;
  HWND owner_;
  HWND dialog_ = nullptr;
  std::vector<Slot> slots_;
  com::UniqueGdiObject linkFont_;

  bool mirroring_ = false;     // the view is writing: its notifications are not the user's
  bool busy_ = false;          // a handler runs
  bool ended_ = false;
  bool focusPlaced_ = false;   // the form asked for the focus during Load
  int pendingValidate_ = -1;   // the slot left for another control, to validate
  int deferredValidate_ = -1;  // the slot left for a control that does not validate
  int pendingList_ = -1;       // a list view whose selection the user changed
  long placedLeft_ = 0;        // the position the window has, in the form's units
  long placedTop_ = 0;
  std::exception_ptr failure_;
};

bool IsTopmost(HWND window) { return (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; }

struct OwnedSearch {
  HWND owner;
  std::vector<HWND> found;
};

// A named CALLBACK rather than a lambda: 32-bit Windows wants __stdcall.
BOOL CALLBACK CollectOwned(HWND window, LPARAM data) {
  auto* search = reinterpret_cast<OwnedSearch*>(data);
  if (GetWindow(window, GW_OWNER) == search->owner) search->found.push_back(window);
  return TRUE;
}

// The thread's top-level windows that `owner` owns.
std::vector<HWND> OwnedPopups(HWND owner) {
  OwnedSearch search{owner, {}};
  EnumThreadWindows(GetCurrentThreadId(), &CollectOwned, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// --- the window procedures ----------------------------------------------------

INT_PTR CALLBACK DialogSession::Proc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  DialogSession* session = nullptr;
  if (message == WM_INITDIALOG) {
    session = reinterpret_cast<DialogSession*>(lParam);
    SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    session->dialog_ = dialog;
  } else {
    session = reinterpret_cast<DialogSession*>(GetWindowLongPtrW(dialog, DWLP_USER));
  }
  if (!session) return FALSE;
  try {
    return session->Handle(message, wParam, lParam);
  } catch (...) {
    session->Fail();
    return FALSE;
  }
}

LRESULT CALLBACK DialogSession::ControlProc(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                            DWORD_PTR data) {
  auto* session = reinterpret_cast<DialogSession*>(data);
  switch (message) {
    case WM_KILLFOCUS:
      session->FocusLeft(control, reinterpret_cast<HWND>(wParam));
      break;
    case WM_SETFOCUS:
      session->FocusEntered(control);
      break;
    case WM_NCDESTROY:
      RemoveWindowSubclass(control, &ControlProc, kSubclassId);
      break;
    default:
      break;
  }
  return DefSubclassProc(control, message, wParam, lParam);
}

INT_PTR DialogSession::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      return Init();
    case WM_COMMAND:
      OnCommand(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam));
      return TRUE;
    case WM_NOTIFY:
      OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
      return FALSE;
    case WM_CLOSE:
      // The close box (and Alt+F4): no validation, the form decides.
      if (!busy_ && !ended_) {
        pendingValidate_ = pendingList_ = -1;
        Run([&] { form_.QueryClose(); });
      }
      return TRUE;
    case kSettleMessage:
      if (!busy_ && !ended_) Settle();
      return TRUE;
    case WM_HELP:
      // F1, wherever the focus is in the dialog.
      Act([&] { form_.Help(); });
      SetWindowLongPtrW(dialog_, DWLP_MSGRESULT, TRUE);
      return TRUE;
    case WM_CTLCOLORSTATIC:
      return LinkColours(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
    case WM_SETCURSOR:
      if (OverLink(reinterpret_cast<HWND>(wParam))) {
        SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32649)));  // IDC_HAND
        SetWindowLongPtrW(dialog_, DWLP_MSGRESULT, TRUE);
        return TRUE;
      }
      return FALSE;
    default:
      return FALSE;
  }
}

BOOL DialogSession::Init() {
  for (const TemplateControl& entry : layout_.controls) {
    if (entry.id == 0 || !form_.Has(entry.name)) continue;
    HWND window = GetDlgItem(dialog_, entry.id);
    if (!window) continue;
    Slot& slot = slots_.emplace_back();
    slot.name = entry.name;
    slot.window = window;
    slot.kind = form_[entry.name].kind;
    SetWindowSubclass(window, &ControlProc, kSubclassId, reinterpret_cast<DWORD_PTR>(this));
  }
  for (Slot& slot : slots_) {
    if (slot.kind == ControlKind::ListView) {
      SendMessageW(slot.window, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    } else if (slot.kind == ControlKind::Label && HasStyle(slot.window, SS_NOTIFY)) {
      // A label the user clicks is drawn as a link: underlined, in the link colour.
      if (!linkFont_) {
        LOGFONTW font = {};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(dialog_, WM_GETFONT, 0, 0)), sizeof(font), &font);
        font.lfUnderline = TRUE;
        linkFont_.Reset(CreateFontIndirectW(&font));
      }
      SendMessageW(slot.window, WM_SETFONT, reinterpret_cast<WPARAM>(linkFont_.get()), FALSE);
    }
  }

  // Enter presses the form's default button, whatever the template says.
  if (Slot* chosen = SlotByName(form_.defaultButton)) {
    SendMessageW(dialog_, DM_SETDEFID, static_cast<WPARAM>(GetDlgCtrlID(chosen->window)), 0);
  }

  // The form learns its size (and where the dialog manager put it) before Load.
  RECT frame = {};
  GetWindowRect(dialog_, &frame);
  const ScreenMetrics metrics = CurrentScreenMetrics();
  form_.rect.left = placedLeft_ = ToUnits(frame.left, metrics.unitsPerPixelX);
  form_.rect.top = placedTop_ = ToUnits(frame.top, metrics.unitsPerPixelY);
  form_.rect.width = ToUnits(frame.right - frame.left, metrics.unitsPerPixelX);
  form_.rect.height = ToUnits(frame.bottom - frame.top, metrics.unitsPerPixelY);

  Run([&] { form_.Load(); });
  // TRUE lets the dialog manager focus the first control, unless the form chose one.
  return focusPlaced_ ? FALSE : TRUE;
}

// --- reporting ----------------------------------------------------------------

// A user's action: whatever waits to be settled first (a refused validation
// drops the action), then the handler.
template <class Handler>
void DialogSession::Act(Handler&& handler) {
  if (busy_ || ended_) return;
  if (!Settle()) return;
  Run(std::forward<Handler>(handler));
}

// Runs a handler of the form, then shows the form's state; ends the dialog
// when the form was unloaded or the handler failed.
template <class Handler>
void DialogSession::Run(Handler&& handler) {
  {
    const FlagScope busy(busy_);
    try {
      handler();
    } catch (...) {
      Fail();
    }
  }
  if (ended_) return;
  Mirror();
  if (form_.unloaded) End();
}

bool DialogSession::Settle() {
  if (pendingValidate_ >= 0) {
    const std::string name = slots_[static_cast<std::size_t>(std::exchange(pendingValidate_, -1))].name;
    bool valid = true;
    Run([&] {
      valid = form_.Validate(name);
      if (!valid && form_.focusRequest.empty()) form_.focusRequest = name;
    });
    if (!valid || ended_) {
      pendingList_ = -1;
      return false;
    }
    if (Slot* focused = SlotOf(ControlOf(GetFocus()))) form_.activeControl = focused->name;
  }
  if (pendingList_ >= 0) {
    Slot& slot = slots_[static_cast<std::size_t>(std::exchange(pendingList_, -1))];
    Run([&] {
      Control& control = form_[slot.name];
      ReadSelection(slot, control);
      form_.activeControl = slot.name;
      form_.Click(slot.name);
    });
  }
  return !ended_;
}

void DialogSession::OnCommand(int id, int code, HWND from) {
  if (mirroring_ || ended_) return;
  if (id == IDCANCEL && code == BN_CLICKED) {
    // Esc presses the form's cancel button (the about box's is its OK); a
    // form without one reads it as its close box. A cancel button that is
    // off does nothing.
    Slot* cancel = SlotByName(form_.cancelButton);
    if (!cancel) {
      SendMessageW(dialog_, WM_CLOSE, 0, 0);
      return;
    }
    if (!IsUsable(cancel->window)) return;
    from = cancel->window;
  }
  // The dialog manager names the default button by its id (and wine's finds
  // the first window of that id, which may be a part of another control).
  Slot* slot = SlotOf(from);
  if (!slot) slot = SlotById(id);
  if (!slot) return;
  const std::string name = slot->name;
  switch (slot->kind) {
    case ControlKind::Button:
    case ControlKind::Label:  // only a label that notifies (a link) sends this
      if (code == BN_CLICKED) Act([&] {
          form_.activeControl = name;
          form_.Click(name);
        });
      break;
    case ControlKind::OptionButton:
      // An option that is already on does not change, so it is not a click.
      // (Windows also sends this when the arrow keys move onto an option.)
      if (code == BN_CLICKED && !form_[name].checked) Act([&] {
          form_.SelectOption(name);
          form_.activeControl = name;
          form_.Click(name);
        });
      break;
    case ControlKind::CheckBox:
      if (code == BN_CLICKED) Act([&] {
          Control& control = form_[name];
          control.checked = !control.checked;
          form_.activeControl = name;
          form_.Click(name);
        });
      break;
    case ControlKind::TextBox:
      if (code == EN_CHANGE) {
        HWND window = slot->window;
        Act([&, window] {
          Control& control = form_[name];
          control.text = Utf8FromWide(WindowText(window).c_str());
          DWORD start = 0;
          SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
          control.selStart = static_cast<int>(start);
          if (Slot* shown = SlotByName(name)) shown->selStart = control.selStart;
          form_.activeControl = name;
          form_.Change(name);
        });
      }
      break;
    case ControlKind::ComboBox:
      if (code == CBN_SELCHANGE) {
        HWND window = slot->window;
        Act([&, window] {
          Control& control = form_[name];
          control.listIndex = static_cast<int>(SendMessageW(window, CB_GETCURSEL, 0, 0));
          control.text = control.listIndex >= 0 && control.listIndex < static_cast<int>(control.items.size())
                             ? control.items[static_cast<std::size_t>(control.listIndex)]
                             : std::string();
          form_.activeControl = name;
          form_.Click(name);
        });
      }
      break;
    default:
      break;
  }
}

void DialogSession::OnNotify(const NMHDR& header) {
  if (mirroring_ || ended_) return;
  Slot* slot = SlotOf(header.hwndFrom);
  if (!slot) return;
  if (header.code == DTN_DATETIMECHANGE &&
      (slot->kind == ControlKind::DatePicker || slot->kind == ControlKind::TimePicker)) {
    SYSTEMTIME shown = {};
    double value = 0.0;
    if (SendMessageW(slot->window, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&shown)) != GDT_VALID ||
        !SystemTimeToVariantTime(&shown, &value)) {
      return;
    }
    // The picker also reports when its calendar closes on the same day.
    SYSTEMTIME held = {};
    if (VariantTimeToSystemTime(form_[slot->name].value, &held) && SameSecond(held, shown)) return;
    const std::string name = slot->name;
    Act([&] {
      form_[name].value = value;
      form_.activeControl = name;
      form_.Change(name);
    });
  } else if (header.code == LVN_ITEMCHANGED && slot->kind == ControlKind::ListView) {
    // One click changes several rows; the form hears of it once, when the
    // message loop comes round.
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
    if ((change.uChanged & LVIF_STATE) && ((change.uOldState ^ change.uNewState) & LVIS_SELECTED)) {
      pendingList_ = static_cast<int>(slot - slots_.data());
      PostMessageW(dialog_, kSettleMessage, 0, 0);
    }
  }
}

void DialogSession::FocusLeft(HWND control, HWND next) noexcept {
  if (mirroring_ || busy_ || ended_) return;
  Slot* from = SlotOf(control);
  Slot* to = SlotOf(ControlOf(next));
  // Only a move to another control of this dialog validates: not a switch to
  // another window, nor a click inside a control's own parts.
  if (!from || !to || from == to) return;
  // A move onto a control that does not validate (Cancel) leaves the field
  // owing its validation until the focus moves on to one that does.
  const int leaving = deferredValidate_ >= 0 ? deferredValidate_ : static_cast<int>(from - slots_.data());
  bool validates = true;
  try {
    validates = form_[to->name].causesValidation;
  } catch (...) {
  }
  if (!validates) {
    deferredValidate_ = leaving;
    return;
  }
  deferredValidate_ = -1;
  if (&slots_[static_cast<std::size_t>(leaving)] == to) return;
  if (pendingValidate_ < 0) pendingValidate_ = leaving;
  PostMessageW(dialog_, kSettleMessage, 0, 0);
}

void DialogSession::FocusEntered(HWND control) noexcept {
  if (mirroring_ || busy_ || ended_ || pendingValidate_ >= 0) return;
  if (Slot* slot = SlotOf(control)) {
    try {
      form_.activeControl = slot->name;
    } catch (...) {
    }
  }
}

void DialogSession::ReadSelection(Slot& slot, Control& control) const {
  const int count = static_cast<int>(SendMessageW(slot.window, LVM_GETITEMCOUNT, 0, 0));
  for (int row = 0; row < count && row < static_cast<int>(control.rows.size()); ++row) {
    control.rows[static_cast<std::size_t>(row)].selected =
        (SendMessageW(slot.window, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) & LVIS_SELECTED) != 0;
  }
}

void DialogSession::Fail() noexcept {
  if (!failure_) failure_ = std::current_exception();
  form_.unloaded = true;
  End();
}

void DialogSession::End() {
  if (ended_) return;
  ended_ = true;
  EndDialog(dialog_, IDOK);
}

// --- mirroring ----------------------------------------------------------------

void DialogSession::Mirror() {
  const FlagScope mirroring(mirroring_);
  HWND focusBefore = ControlOf(GetFocus());
  SetTextIfDifferent(dialog_, form_.caption);
  for (Slot& slot : slots_) MirrorControl(slot, form_[slot.name]);
  MirrorPlacement();
  MirrorFocus(focusBefore);
}

void DialogSession::MirrorControl(Slot& slot, const Control& control) {
  switch (slot.kind) {
    case ControlKind::Label:
    case ControlKind::Group:
    case ControlKind::Button:
      SetTextIfDifferent(slot.window, control.caption);
      break;
    case ControlKind::OptionButton:
    case ControlKind::CheckBox: {
      SetTextIfDifferent(slot.window, control.caption);
      const WPARAM check = control.checked ? BST_CHECKED : BST_UNCHECKED;
      if (static_cast<WPARAM>(SendMessageW(slot.window, BM_GETCHECK, 0, 0)) != check) {
        SendMessageW(slot.window, BM_SETCHECK, check, 0);
      }
      break;
    }
    case ControlKind::TextBox: {
      const std::wstring text = WideFromUtf8(control.text);
      const bool rewritten = WindowText(slot.window) != text;
      if (rewritten) SetWindowTextW(slot.window, text.c_str());
      if (rewritten || slot.selStart != control.selStart) {
        SendMessageW(slot.window, EM_SETSEL, static_cast<WPARAM>(control.selStart), control.selStart);
        slot.selStart = control.selStart;
      }
      break;
    }
    case ControlKind::ComboBox:
      MirrorCombo(slot, control);
      break;
    case ControlKind::ListView:
      MirrorList(slot, control);
      break;
    case ControlKind::DatePicker:
    case ControlKind::TimePicker:
      MirrorPicker(slot, control);
      break;
    case ControlKind::Page:
      break;
  }
  if (static_cast<bool>(IsWindowEnabled(slot.window)) != control.enabled) EnableWindow(slot.window, control.enabled);
  const bool shown = form_.Shown(control.name);
  if (HasStyle(slot.window, WS_VISIBLE) != shown) ShowWindow(slot.window, shown ? SW_SHOWNA : SW_HIDE);
}

void DialogSession::MirrorCombo(Slot& slot, const Control& control) {
  if (!slot.listed || slot.items != control.items || slot.itemData != control.itemData) {
    SendMessageW(slot.window, CB_RESETCONTENT, 0, 0);
    for (std::size_t i = 0; i < control.items.size(); ++i) {
      const LRESULT index =
          SendMessageW(slot.window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideFromUtf8(control.items[i]).c_str()));
      if (index >= 0 && i < control.itemData.size()) {
        SendMessageW(slot.window, CB_SETITEMDATA, static_cast<WPARAM>(index), control.itemData[i]);
      }
    }
    slot.items = control.items;
    slot.itemData = control.itemData;
    slot.listed = true;
  }
  if (SendMessageW(slot.window, CB_GETCURSEL, 0, 0) != control.listIndex) {
    SendMessageW(slot.window, CB_SETCURSEL, static_cast<WPARAM>(control.listIndex), 0);
  }
}

void DialogSession::MirrorList(Slot& slot, const Control& control) {
  if (!slot.listed || slot.columns != control.columns) {
    while (SendMessageW(slot.window, LVM_DELETECOLUMN, 0, 0)) {
    }
    // The columns get the form's widths and the last one what is left of
    // the list (the template, not the form, decides how wide the list is);
    // without widths the first column (a name) gets a third, the others
    // share the rest.
    RECT client = {};
    GetClientRect(slot.window, &client);
    const int width = client.right - GetSystemMetrics(SM_CXVSCROLL);
    const int count = static_cast<int>(control.columns.size());
    const bool sized = count > 0 && control.columnWidths.size() >= control.columns.size();
    const double unitsPerPixel = CurrentScreenMetrics().unitsPerPixelX;
    int left = width;
    for (int i = 0; i < count; ++i) {
      std::wstring heading = WideFromUtf8(control.columns[static_cast<std::size_t>(i)]);
      LVCOLUMNW column = {};
      column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
      column.pszText = heading.data();
      column.iSubItem = i;
      if (sized) {
        const int own = ToPixels(std::max(0L, control.columnWidths[static_cast<std::size_t>(i)]), unitsPerPixel);
        column.cx = i + 1 < count ? std::min(own, left) : std::max(left, own / 2);
        left -= column.cx;
      } else {
        column.cx = count == 1 ? width : i == 0 ? width / 3 : (width - width / 3) / (count - 1);
      }
      SendMessageW(slot.window, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
    slot.columns = control.columns;
    slot.cells.clear();
    slot.listed = false;
  }
  std::vector<std::vector<std::string>> cells;
  cells.reserve(control.rows.size());
  for (const ListRow& row : control.rows) cells.push_back(row.cells);
  if (!slot.listed || slot.cells != cells) {
    SendMessageW(slot.window, LVM_DELETEALLITEMS, 0, 0);
    for (std::size_t row = 0; row < cells.size(); ++row) {
      for (std::size_t column = 0; column < cells[row].size() && column < control.columns.size(); ++column) {
        std::wstring text = WideFromUtf8(cells[row][column]);
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.iItem = static_cast<int>(row);
        item.iSubItem = static_cast<int>(column);
        item.pszText = text.data();
        SendMessageW(slot.window, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMTEXTW, row,
                     reinterpret_cast<LPARAM>(&item));
      }
    }
    slot.cells = std::move(cells);
    slot.listed = true;
  }
  for (std::size_t row = 0; row < control.rows.size(); ++row) {
    const bool selected =
        (SendMessageW(slot.window, LVM_GETITEMSTATE, row, LVIS_SELECTED) & LVIS_SELECTED) != 0;
    if (selected == control.rows[row].selected) continue;
    LVITEMW state = {};
    state.stateMask = LVIS_SELECTED;
    state.state = control.rows[row].selected ? LVIS_SELECTED : 0;
    SendMessageW(slot.window, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&state));
  }
}

void DialogSession::MirrorPicker(Slot& slot, const Control& control) {
  // A picker spins or drops a calendar down by a style it reads when it is
  // made: switching means a new window in the old one's place.
  if (slot.kind == ControlKind::TimePicker && HasStyle(slot.window, DTS_UPDOWN) != control.upDown) {
    Rebuild(slot, static_cast<LONG>(GetWindowLongW(slot.window, GWL_STYLE) ^ DTS_UPDOWN));
  }
  const std::wstring format =
      !control.customFormat.empty() || slot.kind != ControlKind::TimePicker ? WideFromUtf8(control.customFormat)
                                                                            : UserTimeFormat();
  if (!slot.formatted || slot.format != format) {
    slot.format = format;
    slot.formatted = true;
    SendMessageW(slot.window, DTM_SETFORMATW, 0, slot.format.empty() ? 0 : reinterpret_cast<LPARAM>(slot.format.c_str()));
  }
  SYSTEMTIME wanted = {};
  if (!VariantTimeToSystemTime(control.value, &wanted)) return;
  SYSTEMTIME shown = {};
  if (SendMessageW(slot.window, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&shown)) != GDT_VALID ||
      !SameSecond(shown, wanted)) {
    SendMessageW(slot.window, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&wanted));
  }
}

void DialogSession::Rebuild(Slot& slot, LONG style) {
  HWND old = slot.window;
  RECT place = {};
  GetWindowRect(old, &place);
  MapWindowPoints(nullptr, dialog_, reinterpret_cast<POINT*>(&place), 2);
  wchar_t className[64] = {};
  GetClassNameW(old, className, 64);
  HWND fresh = CreateWindowExW(static_cast<DWORD>(GetWindowLongW(old, GWL_EXSTYLE)), className, L"",
                               static_cast<DWORD>(style), place.left, place.top, place.right - place.left,
                               place.bottom - place.top, dialog_,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(GetDlgCtrlID(old))),
                               reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(dialog_, GWLP_HINSTANCE)), nullptr);
  if (!fresh) return;  // the old picker stays, in its old style
  SendMessageW(fresh, WM_SETFONT, SendMessageW(dialog_, WM_GETFONT, 0, 0), FALSE);
  SetWindowPos(fresh, old, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);  // the tab order
  SetWindowSubclass(fresh, &ControlProc, kSubclassId, reinterpret_cast<DWORD_PTR>(this));
  const bool focused = GetFocus() == old;
  slot.window = fresh;
  slot.formatted = false;
  DestroyWindow(old);
  if (focused) SetFocus(fresh);
}

void DialogSession::MirrorPlacement() {
  if (form_.rect.left != placedLeft_ || form_.rect.top != placedTop_) {
    const ScreenMetrics metrics = CurrentScreenMetrics();
    SetWindowPos(dialog_, nullptr, ToPixels(form_.rect.left, metrics.unitsPerPixelX),
                 ToPixels(form_.rect.top, metrics.unitsPerPixelY), 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    placedLeft_ = form_.rect.left;
    placedTop_ = form_.rect.top;
  }
  if (form_.topmost == IsTopmost(dialog_)) return;
  constexpr UINT kZOrderOnly = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
  const HWND band = form_.topmost ? HWND_TOPMOST : HWND_NOTOPMOST;
  SetWindowPos(dialog_, band, 0, 0, 0, 0, kZOrderOnly);
  const std::vector<HWND> popups = OwnedPopups(dialog_);
  if (form_.topmost != IsTopmost(dialog_)) {
    // Wine keeps a window below the popups it owns (a date picker's hidden
    // drop-down calendar), which puts it out of the top band: they let go
    // of it while it moves, and are its own again after.
    for (HWND popup : popups) SetWindowLongPtrW(popup, GWLP_HWNDPARENT, 0);
    SetWindowPos(dialog_, band, 0, 0, 0, 0, kZOrderOnly);
    for (HWND popup : popups) SetWindowLongPtrW(popup, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(dialog_));
  }
  // What the dialog owns shows over it, in its band.
  for (HWND popup : popups) SetWindowPos(popup, band, 0, 0, 0, 0, kZOrderOnly);
}

void DialogSession::MirrorFocus(HWND focusBefore) {
  if (!form_.focusRequest.empty()) {
    const std::string request = std::exchange(form_.focusRequest, std::string());
    Slot* slot = SlotByName(request);
    if (slot && IsUsable(slot->window)) {
      SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(slot->window), TRUE);
      form_.activeControl = request;
      focusPlaced_ = true;
      return;
    }
  }
  // A control that was turned off or hidden under the focus hands it on to
  // the next one, as the keyboard would.
  if (!focusBefore || IsUsable(focusBefore) || GetActiveWindow() != dialog_) return;
  HWND next = GetNextDlgTabItem(dialog_, focusBefore, FALSE);
  if (!next || !IsUsable(next)) return;
  SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
  if (Slot* slot = SlotOf(next)) form_.activeControl = slot->name;
}

// The system's link colour, unless it barely stands out from the dialog's
// face (wine's default colours make it a light grey on a light grey).
COLORREF LinkColour() {
  const auto lightness = [](COLORREF colour) {
    return (GetRValue(colour) * 299 + GetGValue(colour) * 587 + GetBValue(colour) * 114) / 1000;
  };
  const COLORREF link = GetSysColor(COLOR_HOTLIGHT);
  constexpr int kReadable = 96;  // of 255
  if (std::abs(lightness(link) - lightness(GetSysColor(COLOR_BTNFACE))) >= kReadable) return link;
  return RGB(0, 102, 204);
}

INT_PTR DialogSession::LinkColours(HDC dc, HWND label) {
  if (!linkFont_ || !OverLink(label)) return FALSE;
  SetTextColor(dc, LinkColour());
  SetBkMode(dc, TRANSPARENT);
  return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_BTNFACE));
}

bool DialogSession::OverLink(HWND window) const {
  for (const Slot& slot : slots_) {
    if (slot.window == window) return slot.kind == ControlKind::Label && HasStyle(window, SS_NOTIFY);
  }
  return false;
}

// --- lookups ------------------------------------------------------------------

DialogSession::Slot* DialogSession::SlotOf(HWND window) {
  if (!window) return nullptr;
  for (Slot& slot : slots_) {
    if (slot.window == window) return &slot;
  }
  return nullptr;
}

DialogSession::Slot* DialogSession::SlotById(int id) {
  const std::string_view name = TemplateControlName(layout_, id);
  return name.empty() ? nullptr : SlotByName(name);
}

DialogSession::Slot* DialogSession::SlotByName(std::string_view name) {
  for (Slot& slot : slots_) {
    if (slot.name == name) return &slot;
  }
  return nullptr;
}

// The dialog's own control that holds a window (a picker's spinner, a
// combo box's edit); null for a window outside the dialog.
HWND DialogSession::ControlOf(HWND window) const {
  if (!window || !dialog_ || !IsChild(dialog_, window)) return nullptr;
  while (window) {
    HWND parent = GetAncestor(window, GA_PARENT);
    if (parent == dialog_) return window;
    window = parent;
  }
  return nullptr;
}

// --- the view -----------------------------------------------------------------

// The dialogs open at this moment, the innermost last.
std::vector<DialogSession*>& OpenDialogs() {
  static std::vector<DialogSession*> open;
  return open;
}

class OpenDialogEntry {
 public:
  explicit OpenDialogEntry(DialogSession& session) { OpenDialogs().push_back(&session); }
  ~OpenDialogEntry() { OpenDialogs().pop_back(); }
  OpenDialogEntry(const OpenDialogEntry&) = delete;
  OpenDialogEntry& operator=(const OpenDialogEntry&) = delete;
};

// The window the new dialog belongs to. A form that unloaded itself and
// shows another in its place (the one-time and the recurrence dialog hand
// over to each other) is hidden first: the new dialog takes its owner.
HWND OwnerForNextDialog() {
  HWND owner = GetActiveWindow();
  for (auto open = OpenDialogs().rbegin(); open != OpenDialogs().rend(); ++open) {
    DialogSession& session = **open;
    if (!session.form().unloaded || !session.window()) continue;
    ShowWindow(session.window(), SW_HIDE);
    if (owner == session.window()) owner = session.owner();
  }
  return owner;
}

class Win32FormView final : public FormView {
 public:
  void ShowModal(Form& form) override {
    // The templates are in the module that holds this code.
    HMODULE module = com::ModuleOfAddress(reinterpret_cast<const void*>(&PlatformFormView));
    const FormTemplate* layout = FindFormTemplate(form.name);
    if (!layout || !module ||
        !FindResourceW(module, MAKEINTRESOURCEW(layout->resourceId), MAKEINTRESOURCEW(5) /* RT_DIALOG */)) {
      form.unloaded = true;
      Raise(err::kInvalidCall, "The form " + form.name + " has no dialog template in this module");
    }
    HWND owner = OwnerForNextDialog();
    // Both scopes stay for the whole modal call: the controls the dialog
    // makes later (a picker rebuilt, a message box of a handler) are made
    // under them too.
    const com::PerMonitorDpiScope dpi;
    const com::CommonControlsScope controls(module);
    DialogSession session(form, *layout, owner);
    INT_PTR result = 0;
    {
      const OpenDialogEntry entry(session);
      result = DialogBoxParamW(module, MAKEINTRESOURCEW(layout->resourceId), owner, &DialogSession::Proc,
                               reinterpret_cast<LPARAM>(&session));
    }
    if (result == -1) {
      form.unloaded = true;
      Raise(err::kInvalidCall,
            "The dialog of " + form.name + " could not be created (error " + std::to_string(GetLastError()) + ")");
    }
    session.RethrowFailure();
  }
};

}  // namespace

FormView& PlatformFormView() {
  static Win32FormView view;
  return view;
}

}  // namespace qorvane::forms
