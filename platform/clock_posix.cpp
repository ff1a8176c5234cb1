// The system clock on POSIX: local wall time from clock_gettime + localtime_r.
#include <time.h>

#include "base/ole_date.h"
#include "platform/clock.h"

namespace qorvane {

namespace {

struct LocalNow {
  struct tm fields {};
  long nanoseconds = 0;
};

LocalNow ReadLocalNow() {
  LocalNow now;
  struct timespec wall {};
  clock_gettime(CLOCK_REALTIME, &wall);
  localtime_r(&wall.tv_sec, &now.fields);
  now.nanoseconds = wall.tv_nsec;
  return now;
}

class PosixClock final : public Clock {
 public:
  double Now() const override {
    const struct tm t = ReadLocalNow().fields;
    const std::int64_t serial = DaysFromCivil(t.tm_year + 1900, t.tm_mon + 1, t.tm_mday) + kOleEpochOffset;
    // tm_sec can be 60 in a leap second; the runtime has no such second.
    return ComposeDate(serial, TimeSerial(t.tm_hour, t.tm_min, t.tm_sec > 59 ? 59 : t.tm_sec));
  }

  float SecondsSinceMidnight() const override {
    const LocalNow now = ReadLocalNow();
    const double seconds = now.fields.tm_hour * 3600.0 + now.fields.tm_min * 60.0 + now.fields.tm_sec;
    return static_cast<float>(seconds + now.nanoseconds / 1e9);
  }
};

}  // namespace

const Clock& SystemClock() {
  static const PosixClock clock;
  return clock;
}

}  // namespace qorvane
