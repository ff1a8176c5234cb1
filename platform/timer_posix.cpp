// Without a client's message loop there is nothing to deliver real ticks on
// POSIX: the platform's timers are virtual, on whichever clock is current,
// and fire when a driver (a test, the demo) runs them forward.
#include "platform/timer.h"
#include "platform/virtual_timers.h"

namespace qorvane {

TimerService& PlatformTimerService() {
  static VirtualTimers timers(nullptr);
  return timers;
}

void ReleasePlatformTimers() {}

}  // namespace qorvane
