// The engine's guarantees over thousands of random records, extreme and
// invalid values included: every listing ends within a valid walk's work and
// a valid listing's size, every advance that reports success moves forward,
// and the catch-up loop of a sending pass ends. A failing record is printed
// with its fields so that it can be replayed.
#include <gtest/gtest.h>

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <iostream>
#include <limits>
#include <random>

#include "schedule/first_dow.h"
#include "tests/schedule/schedule_test_util.h"
#include "tests/support/schedule_invariants.h"
#include "tests/support/test_env.h"

namespace qorvane {
namespace {

constexpr int kRecords = 4000;
constexpr std::uint64_t kSeed = 20250303;

constexpr std::int32_t kIntEdges[] = {
    std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::min() + 1, -1000000000, -65536, -32768,
    -366, -31, -13, -7, -2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 28, 29, 30, 31, 32, 62, 100, 127, 128, 255,
    366, 1000, 32767, 65536, 1000000000, std::numeric_limits<std::int32_t>::max() - 1,
    std::numeric_limits<std::int32_t>::max()};

class RandomRecords {
 public:
  explicit RandomRecords(std::uint64_t seed) : rng_(seed) {}

  // A value of the field's valid range most of the time, else an edge or any
  // int at all.
  std::int32_t Field(std::int32_t low, std::int32_t high) {
    switch (Below(5)) {
      case 0: return kIntEdges[Below(std::size(kIntEdges))];
      case 1: return static_cast<std::int32_t>(static_cast<std::uint32_t>(rng_()));
      default: return low + static_cast<std::int32_t>(Below(static_cast<std::uint64_t>(high - low) + 1));
    }
  }

  // A date mostly within a few centuries, sometimes at the calendar's ends,
  // sometimes outside it or no number at all.
  double Day() {
    switch (Below(12)) {
      case 0: return static_cast<double>(kFirstSerialDay + static_cast<std::int64_t>(Below(3)));
      case 1: return static_cast<double>(kLastSerialDay - static_cast<std::int64_t>(Below(400)));
      case 2: {
        constexpr double kOdd[] = {-1e300, 1e300, -3e6, 3e6, -657435, 2958466, 0, -1, -0.5,
                                   std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()};
        return kOdd[Below(std::size(kOdd))];
      }
      case 3: return static_cast<double>(DateSerialRollOver(8990, 1, 1)) + static_cast<double>(Below(4000));
      default: return DateSerialRollOver(1900, 1, 1) + static_cast<double>(Below(200 * 366));
    }
  }

  double TimeOfDay() {
    switch (Below(10)) {
      case 0: {
        constexpr double kOdd[] = {-0.25, 1.0, 1.5, 45719.375, -45719.375, 1e300,
                                   std::numeric_limits<double>::quiet_NaN(), 0.999999999};
        return kOdd[Below(std::size(kOdd))];
      }
      default: return TimeSerial(0, static_cast<int>(Below(24 * 60)), 0);
    }
  }

  CMailProps Record() {
    CMailProps r;
    r.m_IsRecurring = Below(10) != 0;
    constexpr std::int32_t kTypes[] = {0, 1, 2, 3, 5, 6, 4, 7, -1, 100, std::numeric_limits<std::int32_t>::min()};
    r.m_RecurrenceType = Below(4) == 0 ? kTypes[Below(std::size(kTypes))] : kTypes[Below(6)];
    r.m_DayOfMonth = Field(1, 31);
    r.m_MonthOfYear = Field(1, 12);
    r.m_Instance = Field(1, 5);
    r.m_DayOfWeekMask = Field(1, 127);
    r.m_Interval = Field(0, 12);
    r.m_Occurrences = Field(1, 40);
    r.m_NoEndDate = Below(2) == 0;
    r.m_StartTime = TimeOfDay();
    r.m_PatternStartDate = Day();
    r.m_PatternEndDate = Day();
    // Mostly the consistent record an advance leaves; sometimes a send time
    // the user moved, or one that is damaged.
    switch (Below(6)) {
      case 0: r.m_ScheduleTime = r.m_PatternStartDate + static_cast<double>(Below(800)) - 400 + TimeOfDay(); break;
      case 1: r.m_ScheduleTime = Day() + TimeOfDay(); break;
      default: r.m_ScheduleTime = r.m_PatternStartDate + r.m_StartTime; break;
    }
    return r;
  }

  double DateLimit(const CMailProps& r) {
    if (Below(8) == 0) return Day();
    return r.m_PatternStartDate + static_cast<double>(Below(40000)) - 100;
  }

  double Now(const CMailProps& r) {
    if (Below(10) == 0) return r.m_ScheduleTime - 1;
    return r.m_ScheduleTime + static_cast<double>(Below(3650)) + 0.5;
  }

  int FirstDow() { return static_cast<int>(Below(9)); }

 private:
  std::uint64_t Below(std::uint64_t n) { return rng_() % n; }
  std::mt19937_64 rng_;
};

std::string Describe(const CMailProps& r, double dateLimit, double now, int firstDow) {
  char text[512];
  std::snprintf(text, sizeof text,
                "recurring %d type %d day %d month %d instance %d mask %d interval %d occurrences %d noEnd %d "
                "start %.17g time %.17g sendTime %.17g dateLimit %.17g now %.17g firstDow %d",
                r.m_IsRecurring, r.m_RecurrenceType, r.m_DayOfMonth, r.m_MonthOfYear, r.m_Instance, r.m_DayOfWeekMask,
                r.m_Interval, r.m_Occurrences, r.m_NoEndDate, r.m_PatternStartDate, r.m_StartTime, r.m_ScheduleTime,
                dateLimit, now, firstDow);
  return text;
}

class ScopedFirstDow {
 public:
  ScopedFirstDow() : saved_(FirstDOW()) {}
  ~ScopedFirstDow() { SetFirstDOW(saved_); }

 private:
  int saved_;
};

TEST(EngineProperties, HoldForRandomAndExtremeRecords) {
  testing::ScopedLocale locale("en-US");
  testing::ScopedLogFolder log;
  ScopedFirstDow firstDow;
  RandomRecords random(kSeed);
  std::uint64_t worstCall = 0, longestListing = 0, advances = 0, steps = 0;
  const auto started = std::chrono::steady_clock::now();
  for (int i = 0; i < kRecords; ++i) {
    const CMailProps record = random.Record();
    const double dateLimit = random.DateLimit(record);
    const double now = random.Now(record);
    const int dow = random.FirstDow();
    SetFirstDOW(dow);
    const testing::EngineRun run = testing::RunEngine(record, dateLimit, now);
    ASSERT_EQ(run.fault, "") << "record " << i << ": " << Describe(record, dateLimit, now, dow);
    worstCall = std::max(worstCall, run.mostStepsOfACall);
    longestListing = std::max(longestListing, run.mostListed);
    advances += run.advances;
    steps += run.stepsInAll;
  }
  const auto ms =
      std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - started).count();
  std::cout << "engine properties: " << kRecords << " records in " << ms << " ms, " << steps
            << " calendar steps, worst call " << worstCall << " steps, longest listing " << longestListing << ", "
            << advances << " catch-up advances\n";
  RecordProperty("worst_call_steps", static_cast<int>(worstCall));
  // The records do reach the heavy cases, or the bounds above prove little.
  EXPECT_GT(worstCall, 100000u);
  EXPECT_GT(longestListing, 10000u);
}

}  // namespace
}  // namespace qorvane
