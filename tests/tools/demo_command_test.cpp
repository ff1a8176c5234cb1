// qorvane demo run in-process: the built-in week plays with every
// expectation holding, in full (the dialogs drawn as they open, with what the
// person did in them), quiet, cut to a day and in another locale;
// a story of one's own, good, failing or unreadable, gives the exit codes
// the help promises; and the user's registry and log folder are left alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "infra/settings.h"
#include "platform/addin_folder.h"
#include "tests/support/registry_sandbox.h"
#include "tests/support/test_env.h"
#include "tests/tools/tool_invoke.h"

namespace qorvane::tool {
namespace {

using testing::Invoke;
using testing::Result;
using Args = std::vector<std::string>;

class DemoTest : public ::testing::Test {
 protected:
  std::string Story(const char* name, const std::string& text) {
    const std::filesystem::path path = log_.Folder() / name;
    std::ofstream(path, std::ios::binary) << text;
    return path.string();
  }

  qorvane::testing::ScopedRegistryKeys registry_{{settings::kOwnKey}};
  qorvane::testing::ScopedLogFolder log_;
  qorvane::testing::ScopedLocale locale_{"en-US"};
};

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST_F(DemoTest, TheBuiltInWeekPlaysWithEveryExpectationHolding) {
  const struct {
    Args args;
    std::vector<std::string> shown;
    std::vector<std::string> notShown;
  } cases[] = {
      {{"demo"},
       {"The person presses \"Qorvane\".", "dialog [frmOnce] Qorvane",
        "dialog [frmRecurrence] Qorvane Recurrence", "the person: click optRecurrence",
        "the person: set ctlStartTime 16:00; click optMonthly; pick cboInstance3 last;",
        "sent \"Weekly figures\" to team@example.com, attached summary.txt, week-12.txt",
        "sent \"Weekly figures\" to team@example.com, attached summary.txt, week-13.txt",
        "message \"Microsoft Outlook can't recognize one or more recipients!\", answered OK",
        "the client has closed and unloaded the add-in", "20 expectations checked; all held."},
       {"FAILED"}},
      {{"demo", "--quiet"},
       {"7 copies sent", "(Importance, To, Subject, Received, Next Occurrence): 2 mails",
        "team@example.com   Weekly figures    4/4/2025 9:30:00 AM",
        "NextOccurence in the registry: \"4/4/2025 9:30:00 AM\"", "all held."},
       {"Tick."}},
      {{"demo", "--days", "1", "--quiet"},
       {"to Tue 2025-03-25 08:50:00 (1 d 0 h 0 min, the story cut there)", "2 copies sent", "all held."},
       {}},
      {{"--locale", "de-DE", "demo", "--quiet"}, {"Weekly figures    4.4.2025 09:30:00", "all held."}, {}},
  };
  for (const auto& c : cases) {
    const Result r = Invoke(c.args);
    const std::string name = ::testing::PrintToString(c.args);
    EXPECT_EQ(r.code, 0) << name << "\n" << r.out << r.err;
    EXPECT_EQ(r.err, "") << name;
    for (const std::string& part : c.shown) EXPECT_TRUE(Has(r.out, part)) << name << " lacks: " << part << "\n" << r.out;
    for (const std::string& part : c.notShown) EXPECT_FALSE(Has(r.out, part)) << name << " shows: " << part;
  }
}

TEST_F(DemoTest, StoriesOfOnesOwnGiveTheExitCodesOfTheHelp) {
  const std::string good = Story("good.story", "clock 2025-03-03 09:00\nstart\ncompose \"Hi\"\n"
                                               "dialog once at 2025-03-03 09:10, OK\npress Qorvane\n"
                                               "wait +15m\nexpect sent \"Hi\" at 2025-03-03 09:10\n");
  const std::string failing = Story("failing.story", "clock 2025-03-03 09:00\nstart\nexpect sent 1\n");
  const std::string unreadable = Story("bad.story", "clock 2025-03-03 09:00\nstart now\n");
  const std::string badDialog = Story("dialog.story", "start\ndialog every other day, OK\n");
  const struct {
    Args args;
    int code;
    std::string out;  // a part of stdout
    std::string err;  // a part of stderr, one line
  } cases[] = {
      {{"demo", "--script", good, "--quiet"}, 0, "1 expectations checked; all held.", ""},
      {{"demo", "--script", failing}, 1, "line 3: expected 1 sent in all, found 0", ""},
      {{"demo", "--script", unreadable}, 2, "", unreadable + ", line 2: unexpected \"now\" at the end of the line"},
      {{"demo", "--script", badDialog}, 2, "", badDialog + ", line 2: dialog: "},
      {{"demo", "--script", (log_.Folder() / "none.story").string()}, 2, "", "cannot read the script"},
      {{"demo", "--days", "0"}, 2, "", "--days: 0 is outside 1..3660"},
      {{"demo", "--days", "3661"}, 2, "", "--days: 3661 is outside 1..3660"},
      {{"demo", "--fast"}, 2, "", "--fast"},
      {{"demo", "--help"}, 0, "STORY SCRIPTS", ""},
  };
  for (const auto& c : cases) {
    const Result r = Invoke(c.args);
    const std::string name = ::testing::PrintToString(c.args);
    EXPECT_EQ(r.code, c.code) << name << "\n" << r.out << r.err;
    EXPECT_TRUE(Has(r.out, c.out)) << name << " lacks: " << c.out << "\n" << r.out;
    EXPECT_TRUE(Has(r.err, c.err)) << name << " lacks: " << c.err << "\n" << r.err;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), c.err.empty() ? 0 : 1) << name << ": " << r.err;
  }
}

TEST_F(DemoTest, LeavesTheUsersRegistryAndLogFolderAlone) {
  settings::WriteOwnString(settings::kNextOccurence, "the user's own");
  const std::string folder = AddinFolder();
  ASSERT_EQ(Invoke({"demo", "--quiet"}).code, 0);
  EXPECT_EQ(settings::ReadOwnString(settings::kNextOccurence), "the user's own");
  EXPECT_EQ(settings::ReadOwnString("SendAndExit"), "") << "the story's SendAndExit went to its own registry";
  EXPECT_EQ(AddinFolder(), folder);
}

}  // namespace
}  // namespace qorvane::tool
