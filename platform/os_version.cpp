// The current operating-system version service.
#include "platform/os_version.h"

namespace qorvane {
namespace {
OsVersionService* g_current = nullptr;
}  // namespace

OsVersionService& CurrentOsVersion() { return g_current ? *g_current : PlatformOsVersion(); }
void SetOsVersion(OsVersionService* service) { g_current = service; }

}  // namespace qorvane
