// Call counting, one-shot and persistent fault countdowns.
#include "sim/call_counter.h"

#include "base/runtime_error.h"

namespace sim {

void CallCounter::Enter(std::string_view interfaceName, std::string_view member) {
  if (paused_ > 0) return;
  name_.assign(interfaceName);
  name_ += '.';
  name_ += member;
  ++total_;
  auto count = counts_.find(std::string_view(name_));
  if (count == counts_.end()) {
    count = counts_.emplace(name_, 0).first;
    seen_.insert(name_);
  }
  ++count->second;
  if (faults_.empty()) return;
  const auto found = faults_.find(std::string_view(name_));
  if (found == faults_.end()) return;
  Fault& fault = found->second;
  if (fault.remaining > 1) {
    --fault.remaining;
    return;
  }
  fault.remaining = 0;
  const std::int32_t error = fault.error;
  std::string description = fault.description;
  if (fault.brokenForDays <= 0.0) {
    faults_.erase(found);
  } else {
    const double now = clock_.Now();
    if (!fault.recoversAt) fault.recoversAt = now + fault.brokenForDays;
    if (now >= *fault.recoversAt) {
      faults_.erase(found);  // the client has recovered
      return;
    }
  }
  ++fired_;
  qorvane::Raise(error, std::move(description));
}

std::int64_t CallCounter::Count(std::string_view operation) const {
  const auto found = counts_.find(operation);
  return found == counts_.end() ? 0 : found->second;
}

std::map<std::string, std::int64_t> CallCounter::Counts() const { return {counts_.begin(), counts_.end()}; }

void CallCounter::Reset() {
  counts_.clear();
  total_ = 0;
}

void CallCounter::Arm(const std::string& operation, std::int64_t n, std::int32_t error,
                      const std::string& description, double brokenForDays) {
  if (n <= 0) {
    faults_.erase(operation);
    return;
  }
  faults_[operation] = Fault{n, error, description, brokenForDays, std::nullopt};
}

}  // namespace sim
