// What the two schedule dialogs (frmOnce, frmRecurrence) share: the record
// they edit in the hand-over slot, their placement over the opener's window,
// the time picker without seconds, the picked send time, and the hand-over
// from one to the other.
#pragma once

#include "dialogs/hand_over.h"
#include "platform/form.h"
#include "schedule/mail_props.h"

namespace dialogs {

// The form a schedule dialog asks to be shown in its place once it has
// closed ("Recurrence..." in frmOnce, "Remove Recurrence" in frmRecurrence).
enum class NextDialog { None, Once, Recurrence };

// The record in the hand-over slot; error 91 when the slot is empty.
CMailProps& EditedRecord();

// A dialog of the given size centred over the opener's rectangle and kept
// on the screen: moved left or up to end at the right or bottom edge, and
// never starting left of or above 0. Sizes in twips.
qorvane::forms::FormRect CentredOver(const DialogRect& opener, long width, long height, double screenWidth,
                                     double screenHeight);

// Load's last steps: the form placed over the opener's window (the hand-over
// slot's rectangle, the current screen), and topmost when the opener asked.
void PlaceOverOpener(qorvane::forms::Form& form);

// The locale's time format without seconds, shown with a spinner, when the
// locale can tell it; otherwise the picker keeps its default display.
void ShowTimeWithoutSeconds(qorvane::forms::Control& timePicker);

// The date of `date` and the hour and minute of `time`, on a whole minute.
double PickedTime(double date, double time);

}  // namespace dialogs
