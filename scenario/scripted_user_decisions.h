// A decision (answer.h) turned into the control steps a person takes for it
// in the dialog that is shown: what they set, pick and type, in the order a
// person fills the dialog (start first, then the pattern, then the end),
// and the button that closes it.
#pragma once

#include <vector>

#include "platform/form.h"
#include "scenario/answer.h"
#include "scenario/scripted_user_step.h"

namespace scenario {

struct Decision {
  std::vector<Step> steps;
  // The decision belongs to the other schedule dialog: the steps switch to
  // it, and the decision is taken again there.
  bool switchesDialog = false;
};

// In frmOnce and frmRecurrence a decision becomes their steps; in any other
// dialog only Cancel means something (its Cancel button, or the close box).
Decision DecideIn(const Answer& answer, const qorvane::forms::Form& form);

}  // namespace scenario
