// The system clock on Windows: local wall time from GetLocalTime.
#include <windows.h>

#include "base/ole_date.h"
#include "platform/clock.h"

namespace qorvane {

namespace {

class WindowsClock final : public Clock {
 public:
  double Now() const override {
    SYSTEMTIME t{};
    GetLocalTime(&t);
    const std::int64_t serial = DaysFromCivil(t.wYear, t.wMonth, t.wDay) + kOleEpochOffset;
    return ComposeDate(serial, TimeSerial(t.wHour, t.wMinute, t.wSecond));
  }

  float SecondsSinceMidnight() const override {
    SYSTEMTIME t{};
    GetLocalTime(&t);
    return static_cast<float>(t.wHour * 3600.0 + t.wMinute * 60.0 + t.wSecond + t.wMilliseconds / 1000.0);
  }
};

}  // namespace

const Clock& SystemClock() {
  static const WindowsClock clock;
  return clock;
}

}  // namespace qorvane
