// Timers on a virtual clock: a started timer is due its interval after the
// clock's reading when it was started, and fires only when its driver runs
// time forward past that point. Portable; the POSIX platform's timers and the
// simulated client's are these.
//
// RunUntil is the driver's one call: it takes the running timers in the
// order of their due times (equal times in the order they were armed), moves
// the clock to each due time through the driver's callback and fires the
// timer there, until the next one is due after the target. Each arming fires
// exactly once and never before its due time; a periodic timer is then due
// again one interval later, or one interval after the clock's reading when
// the clock has already passed that point (ticks that a jump of the clock
// skipped are not delivered in a burst, as the message loop coalesces them).
//
// Lifecycle: the service owns the schedule; a Timer it handed out may outlive
// it (its calls then do nothing). UI thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "platform/clock.h"
#include "platform/timer.h"

namespace qorvane {

class VirtualTimers final : public TimerService {
 public:
  // Due times are read on `clock`; null means whichever clock is current.
  explicit VirtualTimers(const Clock* clock = nullptr);
  ~VirtualTimers() override;
  VirtualTimers(const VirtualTimers&) = delete;
  VirtualTimers& operator=(const VirtualTimers&) = delete;

  std::unique_ptr<Timer> CreateTimer(std::function<void()> onTick) override;

  // The earliest due time of a running timer, as an OLE date-time.
  std::optional<double> NextDue() const;
  std::size_t RunningCount() const;

  // Fires every timer due by `until`, in due-time order. Before each tick,
  // moveClockTo(due) must move the clock to a reading not before `due`
  // (and never backwards); a driver that fails to stops the run there.
  // Returns the number of ticks delivered.
  std::size_t RunUntil(double until, const std::function<void(double)>& moveClockTo);

  struct State;  // the schedule, shared with the timers handed out

 private:
  std::shared_ptr<State> state_;
};

// Milliseconds since the OLE epoch, and back.
std::int64_t OleDateToMs(double date) noexcept;
double MsToOleDate(std::int64_t ms) noexcept;

}  // namespace qorvane
