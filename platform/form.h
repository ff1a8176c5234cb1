// A dialog as the add-in's logic sees it: a form of named controls, each a
// piece of plain state, and handlers that a view calls when the user acts.
//
// Every rule of a dialog (captions, defaults, validation, messages) lives in
// the form logic (a Form subclass in dialogs/ or support/) and is tested
// without a window. A view only mirrors the controls' state to what the user
// sees and reports the user's actions back through the handlers:
//   - on Windows, a Win32 dialog built from a resource template;
//   - in tests, the demo and on Linux, a scripted user acting by name.
// So a person's click on Windows and a script step on Linux run the same
// handler.
//
// Contract between a form and its view:
//   - Before a handler runs, the view writes the user's change into the
//     control (a click on an option button checks it and clears the other
//     option buttons of its container; a typed text, a picked date, a combo
//     selection, list-view row selection) and sets the active control.
//   - The focus moves through MoveFocus: the control losing it is validated
//     first (unless the control gaining it is a Cancel-like button, see
//     `causesValidation`), and when Validate says no, the focus stays and
//     the user's action is dropped, as a native dialog drops a click on
//     another control while a field refuses its text.
//   - Enter presses `defaultButton`, Esc presses `cancelButton`, F1 calls
//     Help().
//   - After every handler, the view shows the whole state again (captions,
//     texts, values, checked, enabled, visible, lists, focus, position). It
//     must not rely on notifications that programmatic changes do not send.
//   - A handler ends the dialog by setting `unloaded`; the view closes the
//     window once the handler returns. A handler may show another form
//     modally (ShowModal) from inside its own.
//
// Lifecycle: forms are created by whoever shows them and live for one modal
// showing. The view service is replaceable like the message box service.
// UI thread only.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qorvane::forms {

enum class ControlKind {
  Label,
  Group,         // a frame with a caption
  Page,          // a set of controls shown one at a time (by `visible`)
  Button,
  OptionButton,  // excludes the other option buttons of its container
  CheckBox,
  TextBox,
  ComboBox,      // a drop-down list: items with item data, one selected
  DatePicker,
  TimePicker,
  ListView,      // report style, multi-select
};

struct ListRow {
  std::vector<std::string> cells;
  bool selected = false;
};

struct Control {
  std::string name;       // the code's own name: "btnOk", "arWeekDays(3)"
  ControlKind kind = ControlKind::Label;
  std::string container;  // the group or page that holds it; "" for the form
  std::string caption;    // as the user sees it, "&" marking the accelerator
  std::string text;       // text box contents
  double value = 0.0;     // date and time pickers: an OLE date-time
  bool checked = false;   // option buttons and check boxes
  bool enabled = true;
  bool visible = true;

  std::vector<std::string> items;  // combo box
  std::vector<long> itemData;      // parallel to items; empty when unused
  int listIndex = -1;              // selected item, -1 for none

  std::vector<std::string> columns;  // list view headers
  std::vector<ListRow> rows;

  std::vector<long> columnWidths;    // list view, twips, parallel to columns

  std::string customFormat;  // time picker: "h:mm tt"; "" for the default
  bool upDown = false;       // time picker: a spinner instead of a calendar
  int selStart = 0;          // text box caret, in UTF-16 code units

  // False for a button that must work whatever a field holds (Cancel): the
  // focus moving to it does not validate the field it leaves.
  bool causesValidation = true;
};

// Position and size in the dialogs' units (twips, see screen_metrics.h).
struct FormRect {
  long left = 0;
  long top = 0;
  long width = 0;
  long height = 0;
};

class Form {
 public:
  virtual ~Form() = default;

  // The form's name ("frmOnce"), its caption and its controls, in tab order.
  std::string name;
  std::string caption;
  std::vector<Control> controls;

  // Raises error 9 (subscript out of range) for a name the form lacks.
  Control& operator[](std::string_view controlName);
  const Control& operator[](std::string_view controlName) const;
  bool Has(std::string_view controlName) const;
  // Appends a control (forms build their controls in tab order with it).
  Control& Add(ControlKind kind, std::string controlName, std::string caption = {}, std::string container = {});
  // The control and every container it sits in are visible: the user can
  // see it (a control on a hidden page is not shown).
  bool Shown(std::string_view controlName) const;

  // The buttons Enter and Esc press; "" for none.
  std::string defaultButton;
  std::string cancelButton;

  // The control that has the focus, as the view reports it.
  std::string activeControl;
  // A focus request from the logic (SetFocus); the view moves the focus
  // there and clears it.
  std::string focusRequest;

  FormRect rect;         // the view sets width and height before Load
  bool topmost = false;  // made topmost without moving or activating
  bool unloaded = false;

  // Handlers, called by the view.
  virtual void Load() {}
  virtual void Click(std::string_view controlName) {}
  virtual void Change(std::string_view controlName) {}
  // Leaving a control; false keeps the focus in it.
  virtual bool Validate(std::string_view controlName) { return true; }
  // The window's close box.
  virtual void QueryClose() { unloaded = true; }
  // F1: the form's help page, if it has one.
  virtual void Help() {}

  // Checks one option button and clears the others of its container.
  void SelectOption(std::string_view controlName);
};

// Moves the focus to `target` as the user does: the active control, when
// another one, is validated first unless `target` does not cause validation.
// False when validation kept the focus where it was (the caller then drops
// the action that moved it); true with `target` now the active control.
bool MoveFocus(Form& form, std::string_view target);

class FormView {
 public:
  virtual ~FormView() = default;
  // Shows the form modally: sets its size, calls Load, mirrors state after
  // each handler, and returns when the form is unloaded.
  virtual void ShowModal(Form& form) = 0;
};

// The platform's view: the Win32 dialogs on Windows; on POSIX, where there
// is no window, a view that cancels every form (as the close box would).
FormView& PlatformFormView();
FormView& CurrentFormView();
// nullptr restores the platform's view; an installed view must outlive its use.
void SetFormView(FormView* view);

void ShowModal(Form& form);

}  // namespace qorvane::forms
