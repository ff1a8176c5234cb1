// The tool's registry and ignore-list commands, and the weekly listings that
// take their first day of the week from the mail client's stored option.
#include <gtest/gtest.h>

#include <sstream>

#include "infra/cwinreg.h"
#include "infra/settings.h"
#include "tests/support/registry_sandbox.h"
#include "tests/support/test_env.h"
#include "tests/tools/tool_invoke.h"
#include "tools/commands.h"

namespace qorvane::tool {
namespace {

using testing::Invoke;
using testing::Result;

class ToolSettingsTest : public ::testing::Test {
 protected:
  qorvane::testing::ScopedRegistryKeys registry_{{"Software\\QorvaneToolTest",
                                                  "Software\\VB and VBA Program Settings\\Qorvane",
                                                  "Software\\Microsoft\\Office\\16.0", "Software\\Microsoft\\Office\\77.0"}};
  qorvane::testing::ScopedLogFolder log_;
  qorvane::testing::ScopedLocale locale_{"en-US"};
};

TEST_F(ToolSettingsTest, RegistryValuesCanBeSetReadListedAndDeleted) {
  const std::string key = "Software\\QorvaneToolTest\\Sub";
  const struct {
    std::vector<std::string> args;
    int code;
    std::string out;
  } steps[] = {
      {{"registry", "get", key, "NextOccurence"}, 1, ""},
      {{"registry", "set", key, "NextOccurence", "3/3/2025 9:30:00 AM"}, 0, ""},
      {{"registry", "set-dword", key, "FirstDOW", "-1"}, 0, ""},
      {{"registry", "get", "HKCU\\" + key, "nextoccurence"}, 0, "3/3/2025 9:30:00 AM\n"},
      {{"registry", "get", key, "FirstDOW"}, 0, "-1\n"},
      {{"registry", "set", key + "\\Deeper", "x", ""}, 0, ""},
      {{"registry", "list", key}, 0, "FirstDOW=-1\nNextOccurence=3/3/2025 9:30:00 AM\nDeeper\\\n"},
      {{"registry", "delete", key, "FirstDOW"}, 0, ""},
      {{"registry", "delete", key, "FirstDOW"}, 1, ""},
      {{"registry", "delete-key", "HKEY_CURRENT_USER\\" + key}, 0, ""},
      {{"registry", "list", key}, 1, ""},
  };
  for (const auto& step : steps) {
    const Result r = Invoke(step.args);
    EXPECT_EQ(r.code, step.code) << step.args[1] << " " << r.err;
    EXPECT_EQ(r.out, step.out) << step.args[1];
  }
}

TEST_F(ToolSettingsTest, BadRegistryInputWritesNothing) {
  const std::vector<std::string> bad[] = {
      {"registry"},
      {"registry", "fetch", "Software\\QorvaneToolTest"},
      {"registry", "get", "HKLM\\Software\\QorvaneToolTest", "x"},
      {"registry", "set", "HKEY_LOCAL_MACHINE\\Software\\QorvaneToolTest", "x", "y"},
      {"registry", "set", "HKCU", "x", "y"},
      {"registry", "set", "Software\\QorvaneToolTest", "x"},
      {"registry", "set", "Software\\QorvaneToolTest", "x", std::string(256, 'v')},
      {"registry", "set-dword", "Software\\QorvaneToolTest", "x", "twelve"},
      {"registry", "set-dword", "Software\\QorvaneToolTest", "x", "4294967296"},
      {"registry", "set", "Software\\QorvaneToolTest", "", "y"},
  };
  for (const auto& args : bad) {
    const Result r = Invoke(args);
    EXPECT_EQ(r.code, 2) << args.size();
    EXPECT_NE(r.err, "");
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
  }
  CWinReg probe;
  EXPECT_FALSE(probe.InitForRead(CWinReg::HKEY_CURRENT_USER, "Software\\QorvaneToolTest"));
}

TEST_F(ToolSettingsTest, IgnoreListCommandsKeepTheSettings) {
  const struct {
    std::vector<std::string> args;
    int code;
    std::string out;
  } steps[] = {
      {{"ignore-list"}, 0, "ignore=thumbs.db\nhidden=yes\n"},
      {{"ignore-list", "set", "Thumbs.DB,  desktop.ini,thumbs.db"}, 0, "ignore=thumbs.db, desktop.ini\nhidden=yes\n"},
      {{"ignore-list", "add", " Notes.TXT "}, 0, "ignore=thumbs.db, desktop.ini, notes.txt\nhidden=yes\n"},
      {{"ignore-list", "add", "notes.txt"}, 0, "ignore=thumbs.db, desktop.ini, notes.txt\nhidden=yes\n"},
      {{"ignore-list", "hidden", "no"}, 0, "ignore=thumbs.db, desktop.ini, notes.txt\nhidden=no\n"},
      {{"ignore-list", "show"}, 0, "ignore=thumbs.db, desktop.ini, notes.txt\nhidden=no\n"},
      {{"ignore-list", "hidden", "maybe"}, 2, ""},
      {{"ignore-list", "add"}, 2, ""},
      {{"ignore-list", "drop", "x"}, 2, ""},
  };
  for (const auto& step : steps) {
    const Result r = Invoke(step.args);
    EXPECT_EQ(r.code, step.code) << r.err;
    EXPECT_EQ(r.out, step.out);
  }
  using namespace qorvane::settings;
  EXPECT_EQ(GetSetting(kAppName, kSettingsSection, kIgnoreList), "thumbs.db, desktop.ini, notes.txt");
  EXPECT_EQ(GetSetting(kAppName, kSettingsSection, kIgnoreSysHiden), "0");
}

TEST_F(ToolSettingsTest, WeeklyListingsCountWeeksFromTheClientOption) {
  // Every other week on Saturday and Sunday from Saturday 1 March 2025.
  const std::vector<std::string> listing = {"occurrences", "--type", "1", "--interval", "2", "--mask", "65",
                                            "--start", "2025-03-01", "--time", "10:00", "--count", "4"};
  const std::string sundayWeeks = "2025-03-01 10:00\n2025-03-09 10:00\n2025-03-15 10:00\n2025-03-23 10:00\n";
  const std::string mondayWeeks = "2025-03-01 10:00\n2025-03-02 10:00\n2025-03-15 10:00\n2025-03-16 10:00\n";
  EXPECT_EQ(Invoke(listing).out, sundayWeeks) << "en-US counts from Sunday";
  ASSERT_EQ(Invoke({"registry", "set-dword", settings::CalendarOptionsKey("16.0"), "FirstDOW", "1"}).code, 0);
  EXPECT_EQ(Invoke(listing).out, mondayWeeks) << "the client says Monday";
  auto withVersion = listing;
  withVersion.insert(withVersion.end(), {"--outlook-version", "77.0.1234"});
  EXPECT_EQ(Invoke(withVersion).out, sundayWeeks) << "another client version has no option stored";
  auto explicitSunday = listing;
  explicitSunday.insert(explicitSunday.end(), {"--first-dow", "1"});
  EXPECT_EQ(Invoke(explicitSunday).out, sundayWeeks) << "--first-dow wins";
}

}  // namespace
}  // namespace qorvane::tool
