// Call counting and one-shot fault countdowns.
#include "sim/call_counter.h"

#include "base/runtime_error.h"

namespace sim {

void CallCounter::Enter(std::string_view interfaceName, std::string_view member) {
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
  const auto fault = faults_.find(std::string_view(name_));
  if (fault == faults_.end() || --fault->second.remaining > 0) return;
  const std::int32_t error = fault->second.error;
  std::string description = std::move(fault->second.description);
  faults_.erase(fault);
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
                      const std::string& description) {
  if (n <= 0) {
    faults_.erase(operation);
    return;
  }
  faults_[operation] = Fault{n, error, description};
}

}  // namespace sim
