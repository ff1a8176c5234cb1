// The installed screen metrics; the platform's own are in
// screen_metrics_posix.cpp / screen_metrics_win.cpp.
#include "platform/screen_metrics.h"

namespace qorvane {
namespace {
const ScreenMetrics* g_installed = nullptr;
}  // namespace

ScreenMetrics CurrentScreenMetrics() { return g_installed ? *g_installed : PlatformScreenMetrics(); }
void SetScreenMetrics(const ScreenMetrics* metrics) { g_installed = metrics; }

}  // namespace qorvane
