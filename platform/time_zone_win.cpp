// The system's time zone on Windows.
#include <windows.h>

#include <cmath>

#include "base/ole_date.h"
#include "platform/time_zone.h"

namespace qorvane {
namespace {

bool ToSystemTime(double date, SYSTEMTIME& out) {
  if (!std::isfinite(date) || date < -109205.0 || date > 2958465.0) return false;
  const CivilDate civil = ToCivil(date);
  const double seconds = TimePart(date) * 86400.0;
  const auto whole = static_cast<long long>(std::floor(seconds));
  out = SYSTEMTIME{};
  out.wYear = static_cast<WORD>(civil.year);
  out.wMonth = static_cast<WORD>(civil.month);
  out.wDay = static_cast<WORD>(civil.day);
  out.wHour = static_cast<WORD>(whole / 3600);
  out.wMinute = static_cast<WORD>(whole / 60 % 60);
  out.wSecond = static_cast<WORD>(whole % 60);
  out.wMilliseconds = static_cast<WORD>(std::llround((seconds - static_cast<double>(whole)) * 1000.0) % 1000);
  return out.wYear >= 1601;
}

double FromSystemTime(const SYSTEMTIME& t) {
  const std::int64_t serial = DaysFromCivil(t.wYear, t.wMonth, t.wDay) + kOleEpochOffset;
  return ComposeDate(serial, TimeSerial(t.wHour, t.wMinute, t.wSecond) + t.wMilliseconds / 86400000.0);
}

class WindowsTimeZone final : public TimeZone {
 public:
  double LocalToUtc(double local) const override {
    SYSTEMTIME in{}, out{};
    if (!ToSystemTime(local, in) || !TzSpecificLocalTimeToSystemTime(nullptr, &in, &out)) return local;
    return FromSystemTime(out);
  }

  double UtcToLocal(double utc) const override {
    SYSTEMTIME in{}, out{};
    if (!ToSystemTime(utc, in) || !SystemTimeToTzSpecificLocalTime(nullptr, &in, &out)) return utc;
    return FromSystemTime(out);
  }
};

}  // namespace

const TimeZone& SystemTimeZone() {
  static const WindowsTimeZone zone;
  return zone;
}

}  // namespace qorvane
