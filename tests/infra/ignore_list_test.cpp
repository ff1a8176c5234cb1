// The ignore list: normalisation, matching and its settings.
#include "infra/ignore_list.h"

#include <gtest/gtest.h>

#include "infra/settings.h"
#include "tests/support/registry_sandbox.h"

namespace {

const std::vector<std::string> kStore = {"Software\\VB and VBA Program Settings\\Qorvane"};

TEST(IgnoreList, FromStringNormalisesAndDropsRepeats) {
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"Thumbs.DB,  desktop.ini,thumbs.db", "thumbs.db, desktop.ini"},
      {"", ""},
      {" , ,,", ""},
      {"A", "a"},
      {"b, a, B ,c", "b, a, c"},
      {"  spaced name.txt  ", "spaced name.txt"},
      {"\xC3\x84rger.TXT, \xC3\xA4RGER.txt", "\xC3\xA4rger.txt"},  // Ärger.TXT: every letter is lowered
      {"\tTab.txt\t", "\ttab.txt\t"},                                 // only blanks are trimmed
  };
  for (const auto& c : cases) {
    CIgnoreList list;
    list.Add("stale");
    list.FromString(c.text);
    EXPECT_EQ(list.ToString(), c.expected) << c.text;
  }
}

TEST(IgnoreList, FindMatchesWholeNamesOnly) {
  CIgnoreList list;
  list.FromString("thumbs.db, desktop.ini");
  const struct {
    const char* name;
    bool found;
  } cases[] = {{"THUMBS.DB ", true}, {"thumbs", false}, {"desktop.ini", true}, {"*.db", false}, {"", false}};
  for (const auto& c : cases) EXPECT_EQ(list.Find(c.name), c.found) << c.name;
}

TEST(IgnoreList, AddRefusesEmptyAndRepeatedNames) {
  CIgnoreList list;
  EXPECT_TRUE(list.Add(" Report.TXT"));
  EXPECT_FALSE(list.Add("report.txt"));
  EXPECT_FALSE(list.Add("   "));
  EXPECT_EQ(list.ToString(), "report.txt");
}

TEST(IgnoreList, DefaultsWithoutStoredSettings) {
  qorvane::testing::ScopedRegistryKeys sandbox(kStore);
  CIgnoreList list;
  list.Load();
  EXPECT_EQ(list.ToString(), "thumbs.db");
  EXPECT_TRUE(list.IgnoreSysHiden());
}

TEST(IgnoreList, SavesAndLoadsBack) {
  qorvane::testing::ScopedRegistryKeys sandbox(kStore);
  const struct {
    const char* text;
    bool hidden;
    const char* storedFlag;
  } cases[] = {{"a.txt, b.txt", false, "0"}, {"", true, "1"}, {"x", true, "1"}};
  for (const auto& c : cases) {
    CIgnoreList list;
    list.FromString(c.text);
    list.IgnoreSysHiden(c.hidden);
    list.Save();
    using namespace qorvane::settings;
    EXPECT_EQ(GetSetting(kAppName, kSettingsSection, kIgnoreSysHiden), c.storedFlag);
    CIgnoreList loaded;
    loaded.Load();
    EXPECT_EQ(loaded.ToString(), list.ToString());
    EXPECT_EQ(loaded.IgnoreSysHiden(), c.hidden);
  }
}

// A list too long for a 256-character read buffer must come back whole at
// the next start, or nothing (thumbs.db included) would be ignored any more.
TEST(IgnoreList, ALongListLoadsBackWhole) {
  qorvane::testing::ScopedRegistryKeys sandbox(kStore);
  std::string text = "thumbs.db";
  for (int i = 0; text.size() < 400; ++i) text += ", picture" + std::to_string(i) + ".jpg";
  CIgnoreList list;
  list.FromString(text);
  list.Save();
  CIgnoreList loaded;
  loaded.Load();
  EXPECT_EQ(loaded.ToString(), text);
  EXPECT_TRUE(loaded.Find("Thumbs.db"));
}

TEST(IgnoreList, AnyFlagTextButOneMeansKeepHiddenFiles) {
  qorvane::testing::ScopedRegistryKeys sandbox(kStore);
  using namespace qorvane::settings;
  SaveSetting(kAppName, kSettingsSection, kIgnoreSysHiden, "yes");
  CIgnoreList list;
  list.Load();
  EXPECT_FALSE(list.IgnoreSysHiden());
}

}  // namespace
