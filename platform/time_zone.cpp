// The installed time zone; the system's own is in time_zone_posix.cpp /
// time_zone_win.cpp.
#include "platform/time_zone.h"

namespace qorvane {
namespace {
const TimeZone* g_installed = nullptr;
}  // namespace

const TimeZone& CurrentTimeZone() { return g_installed ? *g_installed : SystemTimeZone(); }
void SetTimeZone(const TimeZone* zone) { g_installed = zone; }

}  // namespace qorvane
