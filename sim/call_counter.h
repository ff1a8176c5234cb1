// Per-operation call counts and fault countdowns of the simulated client.
//
// Every interface call on a sim object passes through Enter("<Interface>",
// "<Member>") before it does anything: the call is counted, and when a fault
// armed for that operation counts down to this call, the armed runtime error
// is thrown instead of running the call. A one-shot fault fires once; a
// persistent one keeps failing every later call of its operation until the
// client has been broken for the armed stretch of (virtual) time, then the
// client recovers. Every failure thrown counts as a fault fired, so a
// campaign can prove that each fault it armed really happened.
//
// While a pause is held (the harness looking at the client, not the add-in)
// calls are neither counted nor failed. Lookups avoid allocating, because a
// walk over a large folder enters here for every item.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"

namespace sim {

class CallCounter {
 public:
  // Persistent faults measure their stretch on `clock`.
  explicit CallCounter(const qorvane::Clock& clock) : clock_(clock) {}

  // Counts the call and throws the armed fault when its countdown ends here.
  void Enter(std::string_view interfaceName, std::string_view member);

  std::int64_t Count(std::string_view operation) const;
  std::int64_t Total() const { return total_; }
  std::map<std::string, std::int64_t> Counts() const;
  void Reset();

  // The nth call from now (1-based) raises; n <= 0 clears the fault. With
  // brokenForDays > 0 the fault is persistent: every later call of the
  // operation raises too, until brokenForDays have passed on the clock since
  // the first failure.
  void Arm(const std::string& operation, std::int64_t n, std::int32_t error, const std::string& description,
           double brokenForDays = 0.0);
  void ClearFaults() { faults_.clear(); }
  // Failures thrown since construction (ClearFaults and Reset keep them).
  std::int64_t FaultsFired() const { return fired_; }

  void Pause() { ++paused_; }
  void Resume() { --paused_; }

  // Every operation entered since construction; Reset does not forget them,
  // so a fault campaign can list what a first run touched.
  std::vector<std::string> Seen() const { return {seen_.begin(), seen_.end()}; }

 private:
  struct Fault {
    std::int64_t remaining = 0;
    std::int32_t error = 0;
    std::string description;
    double brokenForDays = 0.0;
    std::optional<double> recoversAt;  // set by the first failure of a persistent fault
  };

  const qorvane::Clock& clock_;
  std::string name_;  // reused buffer for "<Interface>.<Member>"
  std::map<std::string, std::int64_t, std::less<>> counts_;
  std::map<std::string, Fault, std::less<>> faults_;
  std::set<std::string, std::less<>> seen_;
  std::int64_t total_ = 0;
  std::int64_t fired_ = 0;
  int paused_ = 0;
};

}  // namespace sim
