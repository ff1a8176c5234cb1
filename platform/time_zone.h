// The user's time zone, for the one place where the mail client compares
// date-times in UTC: its DASL filters. Everything else in the add-in keeps
// local time.
//
// Windows: TzSpecificLocalTimeToSystemTime and its reverse; POSIX: mktime
// and localtime_r. A local time that falls twice (the hour the clocks go
// back) converts to whichever instant the system picks; one that does not
// exist (the hour they go forward) to the instant the system normalises it
// to. Values the system cannot convert are returned unchanged.
//
// Lifecycle: the system's zone is current unless SetTimeZone installs
// another (the simulated client, tests), which must outlive its use;
// nullptr restores it. UI thread only.
#pragma once

namespace qorvane {

class TimeZone {
 public:
  virtual ~TimeZone() = default;
  // OLE date-times in, OLE date-times out.
  virtual double LocalToUtc(double local) const = 0;
  virtual double UtcToLocal(double utc) const = 0;
};

const TimeZone& SystemTimeZone();
const TimeZone& CurrentTimeZone();
void SetTimeZone(const TimeZone* zone);

// A zone without daylight saving time, minutes east of UTC (CET is 60).
class FixedOffsetTimeZone final : public TimeZone {
 public:
  explicit FixedOffsetTimeZone(int minutesEast) : minutesEast_(minutesEast) {}
  double LocalToUtc(double local) const override { return local - minutesEast_ / 1440.0; }
  double UtcToLocal(double utc) const override { return utc + minutesEast_ / 1440.0; }
  int MinutesEast() const noexcept { return minutesEast_; }

 private:
  int minutesEast_;
};

}  // namespace qorvane
