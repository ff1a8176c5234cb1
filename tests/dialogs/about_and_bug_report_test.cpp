// The about box (caption, links, buttons) and the bug-report mail it starts:
// its address, subject and body lines, the log attached only when there is
// one, and the facts that may be missing on a user's machine.
#include <fstream>

#include "infra/cdebug.h"
#include "platform/os_version.h"
#include "sim/sim_client.h"
#include "store/main_options.h"
#include "store/version.h"
#include "support/bug_report.h"
#include "support/frm_about.h"
#include "tests/dialogs/dialog_fixture.h"

namespace qorvane::testing {
namespace {

class PinnedOsVersion final : public OsVersionService {
 public:
  explicit PinnedOsVersion(OsVersion version) : version_(std::move(version)) {}
  OsVersion Get() override { return version_; }

 private:
  OsVersion version_;
};

class SupportTest : public ::testing::Test {
 protected:
  SupportTest() {
    sim_.Install();
    SetShell(&shell_);
    SetScreenMetrics(&screen_);
    SetOsVersion(&os_);
  }
  ~SupportTest() override {
    SetOsVersion(nullptr);
    SetScreenMetrics(nullptr);
    SetShell(nullptr);
    sim_.Uninstall();
  }

  // The mail the report displayed, or null.
  client::Ref<client::MailItem> Displayed() {
    const auto inspector = sim_.Application()->ActiveInspector();
    return inspector ? inspector->CurrentItem()->AsMailItem() : nullptr;
  }

  static std::vector<std::string> Lines(const std::string& body) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = body.find("\r\n", start)) != std::string::npos; start = end + 2)
      lines.push_back(body.substr(start, end - start));
    lines.push_back(body.substr(start));
    return lines;
  }

  ScopedLogFolder log_;
  sim::SimClient sim_;
  RecordingShell shell_;
  ScreenMetrics screen_{15.0, 15.0, 28800.0, 16200.0};
  PinnedOsVersion os_{OsVersion{kPlatformWin32NT, "", 10, 0, "19045"}};
};

TEST_F(SupportTest, AboutNamesTheProductAndVersionInTheMiddleOfTheScreen) {
  frmAbout form;
  form.Load();
  const std::string version = Main::GetAppVersion();
  EXPECT_EQ(form.caption, "About Qorvane (ver." + version + ")");
  EXPECT_EQ(scenario::Picture(form), "[frmAbout] About Qorvane (ver." + version + ")\n  Qorvane Version " + version +
                                         " " + kWebPage + " " + kSupportAddress + " <OK> <Help> <Bug Report>");
  EXPECT_EQ(form.rect.left, (28800 - form.rect.width) / 2);
  EXPECT_EQ(form.rect.top, (16200 - form.rect.height) / 2);
}

struct AboutActionCase {
  const char* name;
  const char* step;
  std::string opened;  // "" when nothing is opened
  bool unloaded;
};

class AboutActions : public SupportTest, public ::testing::WithParamInterface<AboutActionCase> {};

TEST_P(AboutActions, OpenWhatTheirCaptionSays) {
  frmAbout form;
  form.Load();
  scenario::ScriptedUser user;
  EXPECT_TRUE(user.Act(form, GetParam().step)) << user.Problems().size();
  const std::string opened = GetParam().opened == "HELP"
                                 ? "help " + (log_.Folder() / "Help.chm").string() + "::/dialog_about.html"
                                 : GetParam().opened;
  EXPECT_EQ(shell_.opened, opened.empty() ? std::vector<std::string>{} : std::vector<std::string>{opened});
  EXPECT_EQ(form.unloaded, GetParam().unloaded);
  EXPECT_EQ(Displayed(), nullptr) << "no bug report from this";
}

INSTANTIATE_TEST_SUITE_P(
    Controls, AboutActions,
    ::testing::Values(AboutActionCase{"WebPage", "click lblWebPage", std::string("open ") + kWebPage, false},
                      AboutActionCase{"Support", "click lblSupport", std::string("open mailto:") + kSupportAddress,
                                      false},
                      AboutActionCase{"Help", "click btnHelp", "HELP", false},
                      AboutActionCase{"F1", "press f1", "HELP", false}, AboutActionCase{"Ok", "click btnOK", "", true},
                      AboutActionCase{"Enter", "press enter", "", true}, AboutActionCase{"Esc", "press esc", "", true},
                      AboutActionCase{"CloseBox", "close", "", true}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SupportTest, BugReportButtonClosesTheBoxAndShowsTheReport) {
  frmAbout form;
  form.Load();
  scenario::ScriptedUser user;
  EXPECT_TRUE(user.Act(form, "click btnBugReport"));
  EXPECT_TRUE(form.unloaded);
  const auto mail = Displayed();
  ASSERT_NE(mail, nullptr);
  EXPECT_EQ(mail->To(), kSupportAddress);
  EXPECT_EQ(mail->Subject(), "Qorvane Bug Report (Qorvane AddIn)");
  EXPECT_TRUE(sim_.SendLog().empty()) << "the user sends it";
}

struct BugReportCase {
  const char* name;
  bool libraryInFolder;
  bool libraryRegistered;
  const char* fileLine;
  const char* registeredLine;
};

class BugReportBody : public SupportTest, public ::testing::WithParamInterface<BugReportCase> {};

TEST_P(BugReportBody, DescribesTheInstallationBelowTheUsersWords) {
  if (GetParam().libraryInFolder) std::ofstream(log_.Folder() / "Redemption.dll") << "x";
  sim_.SetSafeMailInstalled(GetParam().libraryRegistered);
  sim_.ListAddIn("Other.Addin", "Someone else's");
  mBugReport::SendBugReport();
  const auto mail = Displayed();
  ASSERT_NE(mail, nullptr);
  const std::vector<std::string> expected = {"",
                                             "",
                                             "",
                                             "---- Please type bug description above this line.Thank you ----",
                                             "",
                                             "Qorvane version: " + Main::GetAppVersion(),
                                             "Qorvane path: " + log_.Folder().string(),
                                             "",
                                             "OS: Windows NT Win version:10.0 Build: 19045",
                                             "Outlook version: " + sim_.Application()->Version(),
                                             "",
                                             GetParam().fileLine,
                                             GetParam().registeredLine,
                                             "Uses COMAddIns :",
                                             "ProgID: Other.Addin; Description: Someone else's; Connect: False"};
  EXPECT_EQ(Lines(mail->Body()), expected);
}

INSTANTIATE_TEST_SUITE_P(
    SafeMailLibrary, BugReportBody,
    ::testing::Values(
        BugReportCase{"Present", true, true, "Redemption.dll ok", "Redemption registered"},
        BugReportCase{"Missing", false, false, "Redemption.dll not in product folder", "Redemption not registered"},
        BugReportCase{"OnlyRegistered", false, true, "Redemption.dll not in product folder", "Redemption registered"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SupportTest, TheLogIsAttachedOnlyWhenThereIsOne) {
  mBugReport::SendBugReport();
  ASSERT_NE(Displayed(), nullptr);
  EXPECT_EQ(Displayed()->Attachments()->Count(), 0);
  Displayed()->Close(client::olDiscard);

  g_debug.OutWarning("test", "something to report");
  mBugReport::SendBugReport();
  ASSERT_NE(Displayed(), nullptr);
  ASSERT_EQ(Displayed()->Attachments()->Count(), 1);
  EXPECT_EQ(Displayed()->Attachments()->Item(1)->FileName(), "Qorvane.Log");
}

// A client that fails half-way still gets the user a mail, as far as built.
TEST_F(SupportTest, AFailingClientLeavesTheReportAsFarAsItGot) {
  sim_.FailCall("Application.Version", 1);
  mBugReport::SendBugReport();
  const auto mail = Displayed();
  ASSERT_NE(mail, nullptr);
  const std::vector<std::string> lines = Lines(mail->Body());
  ASSERT_GE(lines.size(), 9u);
  EXPECT_EQ(lines[8], "OS: Windows NT Win version:10.0 Build: 19045");
  EXPECT_TRUE(log_.LogContains("mBugReport.SendBugReport")) << log_.LogText();
}

struct WinVersionCase {
  OsVersion version;
  const char* text;
};

class WinVersion : public SupportTest, public ::testing::WithParamInterface<WinVersionCase> {};

TEST_P(WinVersion, NamesThePlatformVersionAndBuild) {
  PinnedOsVersion os(GetParam().version);
  SetOsVersion(&os);
  EXPECT_EQ(mBugReport::GetWinVersion(), GetParam().text);
  SetOsVersion(&os_);
}

INSTANTIATE_TEST_SUITE_P(
    Platforms, WinVersion,
    ::testing::Values(WinVersionCase{{kPlatformWin32NT, "", 6, 1, "7601"}, "Windows NT Win version:6.1 Build: 7601"},
                      WinVersionCase{{kPlatformWin32Windows, "", 4, 10, "2222"},
                                     "Windows 95/98 Win version:4.10 Build: 2222"},
                      WinVersionCase{{kPlatformWin32s, "", 3, 11, "0"}, "Windows 32s Win version:3.11 Build: 0"},
                      WinVersionCase{{kPlatformOther, "Linux", 6, 1, "6.1.0-18-amd64"},
                                     "Linux Win version:6.1 Build: 6.1.0-18-amd64"}));

TEST_F(SupportTest, TheRealSystemHasAVersion) {
  SetOsVersion(nullptr);
  const std::string text = mBugReport::GetWinVersion();
  SetOsVersion(&os_);
#ifdef _WIN32
  EXPECT_EQ(text.rfind("Windows NT Win version:", 0), 0u) << text;
#else
  EXPECT_NE(text.find(" Win version:"), std::string::npos) << text;
#endif
  EXPECT_EQ(text.find("version:0.0"), std::string::npos) << text;
}

}  // namespace
}  // namespace qorvane::testing
