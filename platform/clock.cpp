// The installed clock and the fixed clock of tests; the system clock lives in
// clock_posix.cpp / clock_win.cpp.
#include "platform/clock.h"

#include "base/ole_date.h"

namespace qorvane {

namespace {
const Clock* g_installed = nullptr;
}  // namespace

const Clock& CurrentClock() { return g_installed ? *g_installed : SystemClock(); }

void SetClock(const Clock* clock) { g_installed = clock; }

float FixedClock::SecondsSinceMidnight() const { return static_cast<float>(TimePart(now_) * 86400.0); }

}  // namespace qorvane
