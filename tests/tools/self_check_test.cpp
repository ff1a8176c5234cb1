// The self-check over thousands of random patterns: the engine and the
// simulated client's calendar agree on almost all of them, and every
// difference is one the engine makes on purpose, each of those seen.
#include "tools/self_check.h"

#include <gtest/gtest.h>

#include <map>

#include "schedule/first_dow.h"
#include "sim/sim_client.h"
#include "tests/support/test_env.h"
#include "tests/tools/tool_invoke.h"

namespace qorvane::tool {
namespace {

TEST(SelfCheck, RandomPatternsDifferOnlyByDesign) {
  qorvane::testing::ScopedLogFolder log;
  qorvane::testing::ScopedLocale locale("en-US");
  const int savedFirstDOW = FirstDOW();
  sim::SimClient client;
  client.Install();
  std::mt19937 random(20251123);
  constexpr int kPatterns = 3000;
  std::map<Main::ByDesign, int> reasons;
  int agree = 0;
  for (int n = 1; n <= kPatterns; ++n) {
    SelfCheckCase c = RandomSelfCheckCase(random);
    const SelfCheckResult result = RunSelfCheckCase(c);
    ASSERT_TRUE(result.comparison.engineListed) << "pattern " << n << ": " << c.record.GetDescText(false);
    if (result.comparison.Agree()) {
      ++agree;
      continue;
    }
    EXPECT_FALSE(result.Unexplained()) << "pattern " << n << ": " << c.record.GetDescText(false)
                                       << ", first day of the week " << c.firstDayOfWeek;
    ++reasons[result.reason];
  }
  client.Uninstall();
  EXPECT_EQ(FirstDOW(), savedFirstDOW);
  // Most patterns meet no deliberate rule; each rule shows up somewhere.
  EXPECT_GT(agree, kPatterns * 8 / 10);
  for (Main::ByDesign reason : {Main::ByDesign::WeeksFromFirstDayOfWeek, Main::ByDesign::YearlyDayClampedToStartMonth,
                                Main::ByDesign::DateListingCap})
    EXPECT_GT(reasons[reason], 0) << Main::ByDesignReason(reason);
}

TEST(SelfCheck, CommandSumsUpAndSucceeds) {
  qorvane::testing::ScopedLogFolder log;
  qorvane::testing::ScopedLocale locale("en-US");
  const testing::Result result = testing::Invoke({"selfcheck", "--patterns", "200", "--seed", "7"});
  EXPECT_EQ(result.code, 0) << result.err;
  EXPECT_NE(result.out.find("200 patterns: "), std::string::npos) << result.out;
  EXPECT_NE(result.out.find(", 0 differ otherwise"), std::string::npos) << result.out;
  EXPECT_EQ(testing::Invoke({"selfcheck", "--patterns", "200", "--seed", "7"}).out, result.out) << "same seed";
  EXPECT_EQ(testing::Invoke({"selfcheck", "--patterns", "0"}).code, 2);
}

}  // namespace
}  // namespace qorvane::tool
