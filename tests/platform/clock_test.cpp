// The clock seam: a fixed clock for tests, installing and removing it, and the
// system clock's two readings agreeing with each other.
#include "platform/clock.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/ole_date.h"

namespace qorvane {
namespace {

TEST(FixedClock, SecondsSinceMidnightCountFromTheTimeOfDay) {
  const struct {
    double now;
    float seconds;
  } cases[] = {
      {0.0, 0.0f},
      {0.5, 43200.0f},
      {45719.395833333336, 34200.0f},
      {45719.999988425926, 86399.0f},
      {-1.25, 21600.0f},  // before day zero the fraction still counts from midnight
      {45719.0000057870, 0.5f},
  };
  for (const auto& c : cases) {
    EXPECT_NEAR(FixedClock(c.now).SecondsSinceMidnight(), c.seconds, 0.01f) << c.now;
  }
}

TEST(ClockSeam, InstalledClockAnswersUntilRemoved) {
  FixedClock fixed(12345.5);
  SetClock(&fixed);
  EXPECT_EQ(&CurrentClock(), &fixed);
  EXPECT_EQ(Now(), 12345.5);
  fixed.Set(23456.75);
  EXPECT_EQ(Now(), 23456.75);
  SetClock(nullptr);
  EXPECT_EQ(&CurrentClock(), &SystemClock());
  EXPECT_GT(Now(), 45658.0);  // after 2025-01-01, so not the fixed clock
}

TEST(SystemClock, NowHasWholeSecondsAndAgreesWithTheTimer) {
  const Clock& clock = SystemClock();
  const double now = clock.Now();
  const float timer = clock.SecondsSinceMidnight();
  const double secondsOfNow = TimePart(now) * 86400.0;
  EXPECT_NEAR(secondsOfNow, std::round(secondsOfNow), 1e-4);
  EXPECT_GE(timer, 0.0f);
  EXPECT_LT(timer, 86400.0f);
  // The two readings are taken apart; across midnight they differ by a day.
  double gap = std::fabs(timer - secondsOfNow);
  if (gap > 43200.0) gap = 86400.0 - gap;
  EXPECT_LT(gap, 2.0);
}

}  // namespace
}  // namespace qorvane
