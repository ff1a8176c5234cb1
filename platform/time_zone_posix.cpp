// The system's time zone on POSIX, through the C library's tz rules.
#include <time.h>

#include <cmath>

#include "base/ole_date.h"
#include "platform/time_zone.h"

namespace qorvane {
namespace {

constexpr double kSecondsPerDay = 86400.0;

// Whole seconds since 1970 of an OLE date-time read as UTC, and the rest.
bool SplitSeconds(double date, time_t& seconds, double& fraction) {
  const double total = (date - static_cast<double>(kOleEpochOffset)) * kSecondsPerDay;
  if (!std::isfinite(total) || std::fabs(total) > 4e11) return false;
  const double whole = std::floor(total);
  seconds = static_cast<time_t>(whole);
  fraction = total - whole;
  return true;
}

double FromSeconds(double seconds) { return seconds / kSecondsPerDay + static_cast<double>(kOleEpochOffset); }

class PosixTimeZone final : public TimeZone {
 public:
  double LocalToUtc(double local) const override {
    time_t asUtc = 0;
    double fraction = 0.0;
    if (!SplitSeconds(local, asUtc, fraction)) return local;
    struct tm fields {};
    if (!gmtime_r(&asUtc, &fields)) return local;
    fields.tm_isdst = -1;  // let the zone's rules decide
    const time_t instant = mktime(&fields);
    if (instant == static_cast<time_t>(-1)) return local;
    return FromSeconds(static_cast<double>(instant) + fraction);
  }

  double UtcToLocal(double utc) const override {
    time_t instant = 0;
    double fraction = 0.0;
    if (!SplitSeconds(utc, instant, fraction)) return utc;
    struct tm fields {};
    if (!localtime_r(&instant, &fields)) return utc;
    const time_t asUtc = timegm(&fields);
    return FromSeconds(static_cast<double>(asUtc) + fraction);
  }
};

}  // namespace

const TimeZone& SystemTimeZone() {
  static const PosixTimeZone zone;
  return zone;
}

}  // namespace qorvane
