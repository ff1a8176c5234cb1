// The settings of the add-in and the client options it reads.
#include "infra/settings.h"

#include <gtest/gtest.h>

#include "infra/cwinreg.h"
#include "tests/support/registry_sandbox.h"

namespace qorvane::settings {
namespace {

const std::vector<std::string> kTouched = {"Software\\Brendix", "Software\\VB and VBA Program Settings\\Qorvane",
                                           "Software\\Microsoft\\Office\\77.0"};

TEST(Settings, StoreLivesWhereTheRuntimeKeepsIt) {
  testing::ScopedRegistryKeys sandbox(kTouched);
  EXPECT_EQ(GetSetting(kAppName, kSettingsSection, kIgnoreList, "thumbs.db"), "thumbs.db");
  ASSERT_TRUE(SaveSetting(kAppName, kSettingsSection, kIgnoreList, "a, b"));
  EXPECT_EQ(GetSetting(kAppName, kSettingsSection, kIgnoreList, "thumbs.db"), "a, b");
  ASSERT_TRUE(SaveSetting(kAppName, kSettingsSection, kIgnoreList, ""));
  EXPECT_EQ(GetSetting(kAppName, kSettingsSection, kIgnoreList, "thumbs.db"), "") << "a stored empty text is kept";
  CWinReg raw;
  ASSERT_TRUE(raw.InitForRead(CWinReg::HKEY_CURRENT_USER, "Software\\VB and VBA Program Settings\\Qorvane\\Settings"));
  EXPECT_TRUE(raw.Values(0) == "IgnoreList");
  EXPECT_TRUE(DeleteSetting(kAppName, kSettingsSection, kIgnoreList));
  EXPECT_EQ(GetSetting(kAppName, kSettingsSection, kIgnoreList, "d"), "d");
}

// The runtime's store has no 256-character limit; only CWinReg::ReadString does.
TEST(Settings, StoredTextsOfAnyLengthReadBack) {
  testing::ScopedRegistryKeys sandbox(kTouched);
  for (const std::size_t length : {255u, 256u, 300u, 20000u}) {
    const std::string text(length, 'n');
    ASSERT_TRUE(SaveSetting(kAppName, kSettingsSection, kIgnoreList, text));
    EXPECT_EQ(GetSetting(kAppName, kSettingsSection, kIgnoreList, "thumbs.db"), text) << length;
  }
}

TEST(Settings, SendAndExitIsConsumedOnce) {
  testing::ScopedRegistryKeys sandbox(kTouched);
  EXPECT_EQ(TakeSendAndExitRequest(), "");
  ASSERT_TRUE(WriteOwnString(kSendAndExit, "any text"));
  EXPECT_EQ(TakeSendAndExitRequest(), "any text");
  EXPECT_EQ(TakeSendAndExitRequest(), "");
  EXPECT_EQ(ReadOwnString(kSendAndExit), "");
  CWinReg own;
  EXPECT_TRUE(own.InitForRead(CWinReg::HKEY_CURRENT_USER, "Software\\Brendix\\Qorvane")) << "the key now exists";
}

TEST(Settings, ClientVersionTexts) {
  const struct {
    const char* version;
    const char* recorded;
    const char* major;
  } cases[] = {{"11.0.6359", "11.0", "11"}, {"9.0", "9.0", "9"}, {"12", "12", "12"},
               {"16.0.17928.20114", "16.0", "16"}, {"", "", ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(RecordedClientVersion(c.version), c.recorded);
    EXPECT_EQ(ClientMajorVersion(c.version), c.major);
  }
  EXPECT_EQ(CalendarOptionsKey("11.0"), "Software\\Microsoft\\Office\\11.0\\Outlook\\Options\\Calendar");
  EXPECT_EQ(SpellingOptionsKey("11"), "Software\\Microsoft\\Office\\11.0\\Outlook\\Options\\Spelling");
}

TEST(Settings, SpellingCheckFollowsTheClientOption) {
  testing::ScopedRegistryKeys sandbox(kTouched);
  EXPECT_FALSE(ClientWantsSpellingCheck("77"));
  CWinReg spelling;
  ASSERT_TRUE(spelling.InitForWrite(CWinReg::HKEY_CURRENT_USER, SpellingOptionsKey("77"), true));
  ASSERT_TRUE(spelling.WriteLong("Check", 0));
  EXPECT_FALSE(ClientWantsSpellingCheck("77"));
  ASSERT_TRUE(spelling.WriteLong("Check", 1));
  EXPECT_TRUE(ClientWantsSpellingCheck("77"));
}

}  // namespace
}  // namespace qorvane::settings
