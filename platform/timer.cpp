// The installed timer service; the platform's own lives in timer_posix.cpp /
// timer_win.cpp.
#include "platform/timer.h"

namespace qorvane {
namespace {
TimerService* g_installed = nullptr;
}  // namespace

TimerService& CurrentTimerService() { return g_installed ? *g_installed : PlatformTimerService(); }
void SetTimerService(TimerService* service) { g_installed = service; }

}  // namespace qorvane
