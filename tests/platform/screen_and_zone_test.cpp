// The screen's units per pixel and the time zone's conversions.
#include <gtest/gtest.h>

#include <cstdlib>

#include "base/ole_date.h"
#include "platform/screen_metrics.h"
#include "platform/time_zone.h"

namespace qorvane {
namespace {

TEST(ScreenMetrics, TheScreenIsMeasuredInTwipsAndCanBePinned) {
  const ScreenMetrics platform = PlatformScreenMetrics();
  EXPECT_GT(platform.unitsPerPixelX, 0.0);
  EXPECT_GT(platform.width, platform.unitsPerPixelX * 320) << "a screen of at least 320 pixels";
#ifndef _WIN32
  EXPECT_EQ(platform.unitsPerPixelX, 15.0);
  EXPECT_EQ(platform.height, 1080 * 15.0);
#endif
  const ScreenMetrics pinned{10.0, 12.0, 1000.0, 2000.0};
  SetScreenMetrics(&pinned);
  EXPECT_EQ(CurrentScreenMetrics().unitsPerPixelY, 12.0);
  SetScreenMetrics(nullptr);
  EXPECT_EQ(CurrentScreenMetrics().width, platform.width);
}

TEST(TimeZone, AFixedOffsetConvertsBothWays) {
  const double local = DateSerialRollOver(2025, 3, 3) + TimeSerial(0, 30, 0);
  const std::pair<int, double> cases[] = {{60, DateSerialRollOver(2025, 3, 2) + TimeSerial(23, 30, 0)},
                                          {-300, DateSerialRollOver(2025, 3, 3) + TimeSerial(5, 30, 0)},
                                          {0, local}};
  for (const auto& [minutes, utc] : cases) {
    const FixedOffsetTimeZone zone(minutes);
    EXPECT_NEAR(zone.LocalToUtc(local), utc, 1e-9) << minutes;
    EXPECT_NEAR(zone.UtcToLocal(zone.LocalToUtc(local)), local, 1e-9) << minutes;
  }
}

TEST(TimeZone, TheSystemZoneRoundTripsAndStaysWithinADayOfLocal) {
  const double local = DateSerialRollOver(2025, 7, 15) + TimeSerial(12, 0, 0);
  const double utc = SystemTimeZone().LocalToUtc(local);
  EXPECT_LT(std::abs(utc - local), 1.0);
  EXPECT_NEAR(SystemTimeZone().UtcToLocal(utc), local, 1.0 / 86400);
  const FixedOffsetTimeZone pinned(120);
  SetTimeZone(&pinned);
  EXPECT_NEAR(CurrentTimeZone().LocalToUtc(local), local - 2.0 / 24, 1e-9);
  SetTimeZone(nullptr);
  EXPECT_EQ(&CurrentTimeZone(), &SystemTimeZone());
}

}  // namespace
}  // namespace qorvane
