// The client's first day of the week as the engine gets it, and the version.
#include "store/main_options.h"

#include <gtest/gtest.h>

#include "base/ole_date.h"
#include "infra/cwinreg.h"
#include "infra/settings.h"
#include "schedule/first_dow.h"
#include "schedule/mail_props.h"
#include "tests/support/registry_sandbox.h"
#include "tests/support/test_env.h"

namespace {

constexpr const char* kVersion = "77.0";
const std::vector<std::string> kClientKeys = {"Software\\Microsoft\\Office\\77.0"};

void StoreFirstDOW(std::int32_t value) {
  CWinReg reg;
  ASSERT_TRUE(reg.InitForWrite(CWinReg::HKEY_CURRENT_USER, qorvane::settings::CalendarOptionsKey(kVersion), true));
  ASSERT_TRUE(reg.WriteLong("FirstDOW", value));
}

TEST(LoadFirstDOW, TurnsTheClientOptionIntoAWeekdayNumber) {
  const struct {
    std::int32_t stored;
    int expected;
  } cases[] = {{0, 1}, {1, 2}, {6, 7}, {7, 0}, {9, 0}, {-1, 0}, {-2, 0}};
  for (const auto& c : cases) {
    qorvane::testing::ScopedRegistryKeys sandbox(kClientKeys);
    const qorvane::testing::ScopedClientVersion version(kVersion);
    StoreFirstDOW(c.stored);
    EXPECT_EQ(Main::LoadFirstDOW(), c.expected) << c.stored;
  }
}

TEST(LoadFirstDOW, IsZeroWithoutTheOption) {
  qorvane::testing::ScopedRegistryKeys sandbox(kClientKeys);
  const qorvane::testing::ScopedClientVersion version(kVersion);
  EXPECT_EQ(Main::LoadFirstDOW(), 0) << "no key";
  CWinReg reg;
  ASSERT_TRUE(reg.InitForWrite(CWinReg::HKEY_CURRENT_USER, qorvane::settings::CalendarOptionsKey(kVersion), true));
  EXPECT_EQ(Main::LoadFirstDOW(), 1) << "a missing value reads as 0 = Sunday";
}

TEST(LoadFirstDOW, AlignsTheWeeksOfWeeklyPatterns) {
  qorvane::testing::ScopedRegistryKeys sandbox(kClientKeys);
  qorvane::testing::ScopedLocale locale("en-US");
  const qorvane::testing::ScopedClientVersion version(kVersion);
  const qorvane::testing::ScopedFirstDOW firstDow(0);
  // Every other week on Sunday and Monday, from Sunday 2 March 2025.
  CMailProps r;
  r.m_IsRecurring = true;
  r.m_RecurrenceType = 1;
  r.m_Interval = 2;
  r.m_DayOfWeekMask = 3;
  r.m_PatternStartDate = qorvane::DateSerialRollOver(2025, 3, 2);
  const struct {
    std::int32_t stored;
    double second;
  } cases[] = {{0, qorvane::DateSerialRollOver(2025, 3, 3)}, {1, qorvane::DateSerialRollOver(2025, 3, 10)}};
  for (const auto& c : cases) {
    StoreFirstDOW(c.stored);
    Main::ApplyClientFirstDOW();
    EXPECT_EQ((*r.GetOccurrences(2))[1], c.second) << c.stored;
  }
}

TEST(AppVersion, IsThreeUnpaddedNumbers) {
  const std::string version = Main::GetAppVersion();
  int major = -1, minor = -1, revision = -1;
  char tail = 0;
  EXPECT_EQ(std::sscanf(version.c_str(), "%d.%d.%d%c", &major, &minor, &revision, &tail), 3) << version;
  EXPECT_EQ(version, std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(revision));
}

}  // namespace
