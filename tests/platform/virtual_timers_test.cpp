// Virtual timers: due-time order, never early, once per arming, and ticks
// that stop, restart or destroy timers.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "base/ole_date.h"
#include "platform/virtual_timers.h"

namespace qorvane {
namespace {

constexpr double kSecond = 1.0 / 86400;

class VirtualTimersTest : public ::testing::Test {
 protected:
  std::unique_ptr<Timer> Make(const std::string& name) {
    return timers_.CreateTimer([this, name] { ticks_.push_back(name + "@" + std::to_string(Seconds())); });
  }
  long Seconds() const { return std::lround((clock_.Now() - start_) / kSecond); }
  std::size_t RunFor(double seconds) {
    return timers_.RunUntil(clock_.Now() + seconds * kSecond, [this](double due) {
      // This driver shows whole seconds, as the simulated client's clock does.
      const double reading = std::ceil(due * 86400 - 1e-6) / 86400;
      if (reading > clock_.Now()) clock_.Set(reading);
    });
  }

  const double start_ = DateSerialRollOver(2025, 3, 3) + TimeSerial(9, 0, 0);
  FixedClock clock_{start_};
  VirtualTimers timers_{&clock_};
  std::vector<std::string> ticks_;
};

TEST_F(VirtualTimersTest, FireInDueOrderEveryIntervalAndEqualTimesInArmingOrder) {
  auto slow = Make("slow");
  auto fast = Make("fast");
  auto tie = Make("tie");
  slow->Start(3000);
  fast->Start(2000);
  tie->Start(3000);
  EXPECT_EQ(RunFor(6), 7u);
  EXPECT_EQ(ticks_, (std::vector<std::string>{"fast@2", "slow@3", "tie@3", "fast@4", "slow@6", "tie@6", "fast@6"}));
  EXPECT_EQ(clock_.Now(), start_ + 6 * kSecond) << "the clock ends on the target";
}

TEST_F(VirtualTimersTest, NeverEarlyOnAClockOfWholeSeconds) {
  auto timer = Make("t");
  timer->Start(1500);
  RunFor(4);
  EXPECT_EQ(ticks_, (std::vector<std::string>{"t@2", "t@3"})) << "due at 1.5 s, shown at 2 s; then every 1.5 s";
}

TEST_F(VirtualTimersTest, StopRestartAndDestroyInsideATick) {
  std::unique_ptr<Timer> self;
  int selfTicks = 0;
  self = timers_.CreateTimer([&] {
    if (++selfTicks == 2) self.reset();  // destroys itself in its own tick
  });
  self->Start(1000);
  auto other = Make("other");
  auto restarter = timers_.CreateTimer([&] { other->Start(5000); });
  restarter->Start(2000);  // armed first, so it comes first when both are due
  other->Start(2000);
  RunFor(10);
  EXPECT_EQ(selfTicks, 2);
  EXPECT_EQ(self, nullptr);
  EXPECT_TRUE(ticks_.empty()) << "restarted every 2 s, a 5 s countdown never ends";
  restarter->Stop();
  RunFor(10);
  EXPECT_EQ(ticks_, (std::vector<std::string>{"other@15", "other@20"}));
  EXPECT_EQ(timers_.RunningCount(), 1u);
}

TEST_F(VirtualTimersTest, AClockThatJumpedDeliversOneTickNotABurst) {
  auto timer = Make("t");
  timer->Start(60000);
  clock_.Set(start_ + 3 * 3600 * kSecond);  // the machine slept three hours
  RunFor(1);
  EXPECT_EQ(ticks_, std::vector<std::string>{"t@10800"});
  EXPECT_EQ(*timers_.NextDue(), start_ + (10800 + 60) * kSecond);
}

TEST_F(VirtualTimersTest, ATimerOutlivingItsServiceDoesNothing) {
  std::unique_ptr<Timer> orphan;
  {
    VirtualTimers gone(&clock_);
    orphan = gone.CreateTimer([] {});
    orphan->Start(1000);
    EXPECT_TRUE(orphan->Running());
  }
  orphan->Start(1000);
  orphan->Stop();
  EXPECT_FALSE(orphan->Running());
}

}  // namespace
}  // namespace qorvane
