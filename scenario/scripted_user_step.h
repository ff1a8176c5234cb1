// One thing a person does in a dialog, by control name, as the scripted user
// (scripted_user.h) plays it, and its line of text:
//
//   click NAME             a button, an option, a check box, a link label,
//                          a list view's rows (selection unchanged)
//   check NAME             a check box ticked (clicked only when it is not)
//   uncheck NAME           a check box cleared (clicked only when it is)
//   type NAME TEXT         a text box's whole text replaced by TEXT (the rest
//                          of the line; "" types an empty text)
//   set NAME YYYY-MM-DD    a date picker's date (its time of day is kept)
//   set NAME H:MM          a time picker's hour and minute (seconds kept)
//   pick NAME ITEM         a drop-down list's item, by its text
//   select NAME ROWS       a list view's selection: "1,3" (rows from 1), "none"
//   leave NAME             the focus leaves the field (it is validated)
//   press enter|esc|f1     the dialog's default button, its Cancel, its help
//   close                  the window's close box
//   choose PATH            the answer of the next file or folder picker the
//                          dialog opens (a quoted "" cancels it)
//   expect NAME VALUE      what the control shows, see below
//   expect form NAME       the dialog shown
//   expect focus NAME      the control that has the focus
//
// VALUE of an expectation: a text box's text, a drop-down's item, a date as
// YYYY-MM-DD, a time as H:MM, "checked" or "unchecked", a page's "shown" or
// "hidden", a list view's rows as "name | reference; ..." ("" for none), a
// label's, button's or group's caption; for any control also "enabled",
// "disabled", "shown" and "hidden". Words are read without regard to case;
// names and texts keep theirs.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/form.h"

namespace scenario {

enum class StepKind { Click, Check, Uncheck, Type, Set, Pick, Select, Leave, Press, Close, Choose, Expect };

struct Step {
  StepKind kind = StepKind::Click;
  std::string control;  // Expect: also "form" and "focus"; Press: the key; Choose: none
  std::string value;    // Type, Pick, Expect: the text; Set: the date or time as written; Choose: the path
  std::optional<double> date;   // Set: YYYY-MM-DD
  std::optional<double> time;   // Set: H:MM
  std::vector<int> rows;        // Select: 1-based
};

// True when the line starts with one of the step words above.
bool IsStepLine(std::string_view text);

struct ParsedStep {
  std::optional<Step> step;
  std::string error;  // why the line does not read, when step is empty
};
ParsedStep ParseStep(std::string_view text);

// The step as its line of text.
std::string StepText(const Step& step);

// What a control shows, as an expectation compares it.
std::string ShownValue(const qorvane::forms::Control& control);

}  // namespace scenario
