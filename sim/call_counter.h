// Per-operation call counts and fault countdowns of the simulated client.
//
// Every interface call on a sim object passes through Enter("<Interface>",
// "<Member>") before it does anything: the call is counted, and when a fault
// armed for that operation counts down to this call, the armed runtime error
// is thrown instead of running the call. A fault fires once. Lookups avoid
// allocating, because a walk over a large folder enters here for every item.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

class CallCounter {
 public:
  // Counts the call and throws the armed fault when its countdown ends here.
  void Enter(std::string_view interfaceName, std::string_view member);

  std::int64_t Count(std::string_view operation) const;
  std::int64_t Total() const { return total_; }
  std::map<std::string, std::int64_t> Counts() const;
  void Reset();

  // The nth call from now (1-based) raises; n <= 0 clears the fault.
  void Arm(const std::string& operation, std::int64_t n, std::int32_t error, const std::string& description);
  void ClearFaults() { faults_.clear(); }

  // Every operation entered since construction; Reset does not forget them,
  // so a fault campaign can list what a first run touched.
  std::vector<std::string> Seen() const { return {seen_.begin(), seen_.end()}; }

 private:
  struct Fault {
    std::int64_t remaining = 0;
    std::int32_t error = 0;
    std::string description;
  };

  std::string name_;  // reused buffer for "<Interface>.<Member>"
  std::map<std::string, std::int64_t, std::less<>> counts_;
  std::map<std::string, Fault, std::less<>> faults_;
  std::set<std::string, std::less<>> seen_;
  std::int64_t total_ = 0;
};

}  // namespace sim
