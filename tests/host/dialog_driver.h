// Drives the modal windows an add-in shows, from inside the client's process,
// as a user at the screen would: a hook on the UI thread sees each dialog
// once it has initialised (WM_INITDIALOG returned, whether or not it ever
// gets activated) and hands it to a script, which reads it and posts to
// its controls (a button's click as WM_COMMAND; DTM_SETSYSTEMTIME on a picker;
// CB_SETCURSEL then WM_COMMAND CBN_SELCHANGE on a combo box). Posted messages
// run inside the dialog's own modal loop, after the hook returns.
//
// What each dialog looked like when it came is kept: its title, its text
// (a message box's prompt) and whether the common controls version 6 were
// in effect where it was made (the add-in's activation context).
//
// Lifecycle: one at a time per thread; the hook lives with the object.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace host {

struct SeenDialog {
  std::string title;
  std::string text;
  bool commonControls6 = false;
};

class DialogDriver {
 public:
  using Script = std::function<void(HWND dialog, const SeenDialog& seen)>;
  explicit DialogDriver(Script script);
  ~DialogDriver();
  DialogDriver(const DialogDriver&) = delete;
  DialogDriver& operator=(const DialogDriver&) = delete;

  const std::vector<SeenDialog>& Seen() const { return seen_; }

  // Presses a dialog's button by its id (IDOK, IDCANCEL, IDYES...).
  static void Press(HWND dialog, int buttonId);

 private:
  static LRESULT CALLBACK OnMessageDone(int code, WPARAM wParam, LPARAM lParam);

  Script script_;
  HHOOK hook_ = nullptr;
  std::vector<SeenDialog> seen_;
};

// Whether windows made now get the common controls version 6 (the active
// activation context asks for them): a button then knows its ideal size.
bool CommonControls6InEffect();

}  // namespace host
