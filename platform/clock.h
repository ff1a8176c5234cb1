// Where the add-in reads the time: "now" as a local OLE date-time and the
// seconds since midnight (the runtime's Timer).
//
// Lifecycle: the system clock is current unless a test or the simulated client
// installs its own with SetClock; the installed clock must outlive its use and
// SetClock(nullptr) restores the system clock. UI thread only.
#pragma once

namespace qorvane {

class Clock {
 public:
  virtual ~Clock() = default;
  // Local date-time, whole seconds.
  virtual double Now() const = 0;
  // Seconds since local midnight, with a fraction.
  virtual float SecondsSinceMidnight() const = 0;
};

const Clock& SystemClock();
const Clock& CurrentClock();
void SetClock(const Clock* clock);

inline double Now() { return CurrentClock().Now(); }

// A clock that stands still until it is set or advanced.
class FixedClock final : public Clock {
 public:
  explicit FixedClock(double now = 0.0) : now_(now) {}
  double Now() const override { return now_; }
  float SecondsSinceMidnight() const override;
  void Set(double now) { now_ = now; }

 private:
  double now_;
};

}  // namespace qorvane
