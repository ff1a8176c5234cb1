// Acts on the modal dialogs a test opens, from inside the process, as a
// person would: a thread timer runs the next queued step once the active
// window is a dialog of the step's form. Steps send what the controls
// themselves would: BM_CLICK; DTM_SETSYSTEMTIME followed by the
// DTN_DATETIMECHANGE the user's change sends; CB_SETCURSEL with
// CBN_SELCHANGE; LVM_SETITEMSTATE; focus moves; typed characters; keys the
// dialog manager handles (Enter, Esc, F1); the close box; the button of a
// message box the dialog shows.
//
// A driver whose steps have not all run within its time limit closes every
// dialog of the thread (through the close box), so that a test fails instead
// of hanging. One driver at a time, UI thread only.
#pragma once

#include <windows.h>

#include <chrono>
#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace qorvane::testing {

// The window of a form's control in a dialog showing that form.
HWND ControlWindow(HWND dialog, std::string_view form, std::string_view control);
// Whether a dialog shows the form's template.
bool ShowsForm(HWND dialog, std::string_view form);
std::wstring TextOf(HWND window);

// The form name under which a step waits for a message box (Do, Answer).
inline constexpr std::string_view kMessageBoxStep = "(message box)";

class DialogDriver {
 public:
  using Action = std::function<void(HWND dialog)>;

  explicit DialogDriver(std::chrono::milliseconds limit = std::chrono::seconds(10));
  ~DialogDriver();
  DialogDriver(const DialogDriver&) = delete;
  DialogDriver& operator=(const DialogDriver&) = delete;

  using Ready = std::function<bool(HWND active)>;

  // Any step, once a dialog of the form is active.
  DialogDriver& Do(std::string_view form, Action action);
  // Any step, once the active window passes `ready` (a system dialog that a
  // form opened: the open-file dialog, the folder browser).
  DialogDriver& DoWhen(Ready ready, Action action);

  DialogDriver& Click(std::string_view form, std::string_view control);
  // The picker and the combo box get the focus first, as a click into them gives it.
  DialogDriver& SetDate(std::string_view form, std::string_view control, double oleDate);
  DialogDriver& Pick(std::string_view form, std::string_view control, int index);
  DialogDriver& SelectRows(std::string_view form, std::string_view control, std::initializer_list<int> rows);
  DialogDriver& Focus(std::string_view form, std::string_view control);
  // Focuses the text box, selects its text and types over it.
  DialogDriver& Type(std::string_view form, std::string_view control, std::string_view text);
  DialogDriver& Key(std::string_view form, WPARAM virtualKey);
  DialogDriver& CloseBox(std::string_view form);
  // Once a message box is the active window: keeps its text (Messages())
  // and presses the button of that id (IDOK, IDCANCEL, IDYES...).
  DialogDriver& Answer(int button);
  // The next step waits this long after the one before it ran.
  DialogDriver& Pause(std::chrono::milliseconds wait);

  bool Done() const { return steps_.empty(); }
  bool TimedOut() const { return timedOut_; }
  // The texts of the message boxes answered, in order.
  const std::vector<std::wstring>& Messages() const { return messages_; }

 private:
  struct Step {
    Ready ready;
    Action action;
    std::chrono::milliseconds wait{0};
  };
  static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
  void RunNext();

  std::deque<Step> steps_;
  UINT_PTR timer_ = 0;
  std::chrono::steady_clock::time_point deadline_;
  std::chrono::steady_clock::time_point lastRun_;
  std::chrono::milliseconds nextWait_{0};
  bool timedOut_ = false;
  std::vector<std::wstring> messages_;
};

}  // namespace qorvane::testing
