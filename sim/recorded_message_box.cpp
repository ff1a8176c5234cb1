// Recording message boxes and picking their answer.
#include "sim/recorded_message_box.h"

namespace sim {
namespace {

// The first button of each of the runtime's button sets (the low three bits).
long FirstButton(long buttons) {
  switch (buttons & 7) {
    case 2: return 3;  // Abort, Retry, Ignore
    case 3:            // Yes, No, Cancel
    case qorvane::vbYesNo: return qorvane::vbYes;
    case 5: return 4;  // Retry, Cancel
    default: return qorvane::vbOK;
  }
}

}  // namespace

long RecordedMessageBox::Show(const std::string& prompt, long buttons, const std::string& title) {
  long answer = answer_ != 0 ? answer_ : FirstButton(buttons);
  if (!queued_.empty()) {
    answer = queued_.front();
    queued_.pop_front();
  }
  calls_.push_back(MessageBoxCall{prompt, buttons, title, answer});
  return answer;
}

}  // namespace sim
