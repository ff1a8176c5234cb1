// A form's state as a few lines of text, for the demo and for reading a
// failed test: one line a group of the dialog, the controls the user can
// see in tab order, each as it looks:
//
//   [frmRecurrence] Qorvane Recurrence
//     Qorvane time: Start: [9:30 AM]
//     Recurrence pattern: ( ) Daily (x) Weekly ( ) Monthly ( ) Yearly | Recur every [1] week(s) on: [ ]Sunday [x]Monday ...
//     Range of recurrence: Start: [3/3/2025] ( ) No end date (x) End after: [10] occurrences ( ) End by: [4/4/2025]
//     <Qorvane> <Cancel> <Remove Recurrence> <Attachments>
//
// Options "(x)", check boxes "[x]", texts and pickers in brackets, a list's
// chosen item "[item v]", list-view rows in braces with "*" before the
// selected ones, buttons in angle brackets; " (off)" after a disabled
// control. Dates and times in the current locale's formats.
#pragma once

#include <string>

#include "platform/form.h"

namespace scenario {

std::string Picture(const qorvane::forms::Form& form);

}  // namespace scenario
