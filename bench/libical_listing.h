// The reference side of the occurrence benchmark: listings of an RFC 5545
// recurrence rule through libical's iterator, in the same "YYYY-MM-DD HH:MM"
// and OLE-date terms as the engine's, so the two can be compared and timed on
// equal footing.
#pragma once

#include <string>
#include <vector>

struct icalrecurrencetype;

namespace qorvane::bench {

class IcalRule {
 public:
  // Parses the rule once; the start is "YYYYMMDDTHHMMSS" (floating local
  // time, as the add-in's dates are). Throws std::runtime_error when libical
  // refuses the rule.
  IcalRule(const std::string& rrule, const std::string& dtstart);
  ~IcalRule();
  IcalRule(const IcalRule&) = delete;
  IcalRule& operator=(const IcalRule&) = delete;

  // The first `count` occurrences as OLE dates; fewer when the rule ends.
  // This is the timed path: one iterator, `count` steps.
  void List(int count, std::vector<double>& out) const;

  // The same listing as text, for the equality check.
  std::vector<std::string> ListText(int count) const;

 private:
  struct Impl;
  Impl* impl_;
};

}  // namespace qorvane::bench
