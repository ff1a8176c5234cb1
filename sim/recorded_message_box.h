// Message boxes as the simulated client shows them: recorded, never drawn,
// and answered with a configured button so that a test can take either path:
// the answers queued for the next boxes first, then the standing answer.
#pragma once

#include <deque>
#include <vector>

#include "platform/message_box.h"
#include "sim/sim_client.h"

namespace sim {

class RecordedMessageBox final : public qorvane::MessageBoxService {
 public:
  long Show(const std::string& prompt, long buttons, const std::string& title) override;
  // 0 answers with the first button of whatever set the box shows.
  void SetAnswer(long answer) { answer_ = answer; }
  // The next box not yet answered gives this answer.
  void QueueAnswer(long answer) { queued_.push_back(answer); }
  std::size_t PendingAnswers() const { return queued_.size(); }
  const std::vector<MessageBoxCall>& Calls() const { return calls_; }

 private:
  long answer_ = 0;
  std::deque<long> queued_;
  std::vector<MessageBoxCall> calls_;
};

}  // namespace sim
