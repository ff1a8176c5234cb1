// qorvane.dll as the client meets it, under wine: registered per user with
// regsvr32, loaded by the host program the way the client loads add-ins,
// started, run on a real message loop with its real timers, driven through
// its command bars and ribbon, and stopped; then everything it was handed is
// given back and the DLL may unload.
#include <chrono>
#include <cmath>
#include <string>
#include <tuple>

#include "base/runtime_error.h"
#include "infra/settings.h"
#include "schedule/mail_props.h"
#include "tests/host/addin_dll_fixture.h"
#include "tests/win/dialog_driver.h"
#include "win/addin/office_interfaces.h"
#include "win/addin/registration.h"
#include "win/com/apartment.h"
#include "win/com/dispatch.h"
#include "win/com/wide_text.h"

namespace host_testing {
namespace {

namespace com = qorvane::com;
namespace reg = addin_registration;

constexpr wchar_t kProgId[] = L"Qorvane.Connect";
constexpr long kSendId = 2617;
constexpr double kMinute = 1.0 / 1440;

class AddInDll : public AddInDllTest {
 protected:
  com::ComApartment apartment_;
};

std::vector<std::string> Subjects(const client::Ref<client::MAPIFolder>& folder) {
  std::vector<std::string> subjects;
  if (!folder) return subjects;
  const auto items = folder->Items();
  for (long i = 1, count = items->Count(); i <= count; ++i) subjects.push_back(items->Item(i)->Subject());
  return subjects;
}

// A member of an automation object by name, as another program calls it.
com::ScopedVariant GetByName(IDispatch* object, const char* name) {
  com::DispatchType type("(by name)", false);
  return com::Dispatch(com::ComPtr<IDispatch>(object), type).Get(name);
}

TEST_F(AddInDll, RegistersPerUserOnlyAndUnregistersEveryKeyItWrote) {
  // Key, value (null: the default), what it holds.
  const std::wstring server = std::wstring(reg::kClassKey) + L"\\InprocServer32";
  const std::tuple<std::wstring, const wchar_t*, std::wstring> texts[] = {
      {server, nullptr, InstalledDll()},
      {server, L"ThreadingModel", L"Apartment"},
      {std::wstring(reg::kClassKey) + L"\\ProgID", nullptr, kProgId},
      {std::wstring(reg::kProgIdKey) + L"\\CLSID", nullptr, reg::kClsidText},
      {std::wstring(reg::kAddInKey), L"FriendlyName", L"Qorvane"},
      {std::wstring(reg::kAddInKey), L"Description", reg::kDescription},
  };
  for (const auto& [key, name, value] : texts) {
    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, key, name).value_or(L"(missing)"), value)
        << qorvane::Utf8FromWide(key.c_str()) << " " << (name ? qorvane::Utf8FromWide(name) : "(default)");
  }
  EXPECT_EQ(RegistryNumber(HKEY_CURRENT_USER, std::wstring(reg::kAddInKey), L"LoadBehavior"), 3u);
  EXPECT_EQ(RegistryNumber(HKEY_CURRENT_USER, std::wstring(reg::kAddInKey), L"CommandLineSafe"), 0u);
  EXPECT_FALSE(RegistryKeyExists(HKEY_LOCAL_MACHINE, std::wstring(reg::kClassKey))) << "nothing for the machine";
  const auto entries = host::RegisteredAddIns();
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].progId, kProgId);

  ASSERT_EQ(RunRegsvr32(InstalledDll(), true), 0u);
  for (const std::wstring& key : {std::wstring(reg::kClassKey), std::wstring(reg::kProgIdKey), std::wstring(reg::kAddInKey)})
    EXPECT_FALSE(RegistryKeyExists(HKEY_CURRENT_USER, key)) << qorvane::Utf8FromWide(key.c_str());
  EXPECT_TRUE(RegistryKeyExists(HKEY_CURRENT_USER, reg::kClientAddInsKey)) << "the client's list itself stays";
  EXPECT_EQ(RunRegsvr32(InstalledDll(), true), 0u) << "unregistering twice is no failure";
  ASSERT_EQ(RunRegsvr32(InstalledDll(), false), 0u);
}

// The client calls the add-in connection through its vtable; the same
// members by DISPID (arguments in reverse order) must do the same.
TEST_F(AddInDll, StartsAsTheClientLoadsItAndSetsUpTheMainWindowByVtableAndByDispId) {
  for (const bool byDispatch : {false, true}) {
    SCOPED_TRACE(byDispatch ? "by DISPID" : "by vtable");
    host::HostOptions options;
    options.connectByDispatch = byDispatch;
    host::HostOutlook outlook(options);
    outlook.Start();
    EXPECT_EQ(outlook.LoadedAddIns(), std::vector<std::wstring>{kProgId});
    const auto deferred = DeferredFolder(outlook);
    ASSERT_TRUE(deferred) << "the deferred folder was made";
    EXPECT_EQ(deferred->Views()->Item("Qorvane View")->Name(), "Qorvane View");
    const auto explorer = outlook.Client().Application()->ActiveExplorer();
    const auto groups = explorer->Panes()->Item("OutlookBar")->Groups();
    bool shortcut = false;
    for (long g = 1; g <= groups->Count(); ++g) {
      const auto shortcuts = groups->Item(g)->Shortcuts();
      for (long s = 1; s <= shortcuts->Count(); ++s) shortcut = shortcut || shortcuts->Item(s)->Name() == "Qorvane";
    }
    EXPECT_TRUE(shortcut) << "the folder is on the navigation bar";
    const auto bars = explorer->CommandBars();
    for (const char* tag : {"KelmoraQorvaneAbout", "KelmoraQorvaneOptions"}) EXPECT_TRUE(bars->FindControl(0, 0, tag)) << tag;

    // What the add-in published is its own object, answering by name.
    const auto entry = outlook.Client().Application()->COMAddIns()->Item(1);
    EXPECT_EQ(entry->ProgId(), "Qorvane.Connect");
    EXPECT_TRUE(entry->Connect());
    IDispatch* connection = outlook.AddInObject(kProgId);
    EXPECT_FALSE(GetByName(connection, "m_NoExplorer").ToBool());
    EXPECT_TRUE(GetByName(connection, "m_app").ToObject()) << "the client's application it holds";
    for (const std::string& line : NewLogLines()) ADD_FAILURE() << line;

    outlook.Stop();
    EXPECT_EQ(outlook.ObjectsStillHeld(), 0) << "every object the host handed out was released";
    EXPECT_TRUE(outlook.AllModulesUnloadable());
  }
}

TEST_F(AddInDll, AComposeWindowGetsItsButtonAfterSendWhosePressOpensTheScheduleDialog) {
  host::HostOutlook outlook;
  outlook.Start();
  const auto composed = outlook.ComposeMail("Weekly report");
  const auto standard = composed.window->CommandBars()->Item("Standard");
  const auto button = standard->FindControl(0, 0, "KelmoraQorvane");
  ASSERT_TRUE(button);
  EXPECT_EQ(button->Caption(), "Qorvane");
  EXPECT_EQ(button->FaceId(), kSendId);
  EXPECT_EQ(button->Index(), standard->FindControl(0, kSendId, "")->Index() + 1) << "right after Send";

  // Cancelled: the one-time dialog came, drawn with the common controls of
  // the DLL's own manifest, and the mail stays where it was.
  outlook.Client().Click(button);
  ASSERT_EQ(dialogs_.Seen().size(), 1u) << "the schedule dialog";
  EXPECT_EQ(dialogs_.Seen()[0].title, "Qorvane");
  EXPECT_TRUE(dialogs_.Seen()[0].commonControls6);
  EXPECT_EQ(Subjects(outlook.Client().DefaultFolder(client::olFolderDrafts)), std::vector<std::string>{"Weekly report"});
  EXPECT_TRUE(Subjects(DeferredFolder(outlook)).empty());

  // Confirmed with its proposed time: the mail waits in the deferred folder.
  answer_ = IDOK;
  outlook.Client().Click(button);
  ASSERT_EQ(dialogs_.Seen().size(), 2u);
  EXPECT_EQ(Subjects(DeferredFolder(outlook)), std::vector<std::string>{"Weekly report"});
  for (const std::string& line : NewLogLines()) ADD_FAILURE() << line;
  outlook.Stop();
  EXPECT_EQ(outlook.ObjectsStillHeld(), 0);
  EXPECT_TRUE(outlook.AllModulesUnloadable());
}

// The whole road as a user takes it: the compose window's button, the real
// one-time and recurrence dialogs driven through their controls (weekly on
// today and the day after tomorrow, 3 sends, a start time already past), the
// mail waiting in "Qorvane", sent by a tick through the safe-mail library
// with its attachment, the next send time published.
TEST_F(AddInDll, AMailScheduledInTheRealDialogsIsSentByTheTickWithItsAttachment) {
  const double timeOfDay = std::fmod(Now(), 1.0) - 2 * kMinute;
  if (timeOfDay < 0) GTEST_SKIP() << "too close to midnight for a send time earlier today";
  const double today = std::floor(Now());
  const int weekday = static_cast<int>(std::fmod(today - 1, 7.0));  // 0 Sunday, as the day boxes count
  host::HostOutlook outlook;
  outlook.Start();
  const auto composed = outlook.ComposeMail("Weekly report");
  composed.mail->Attachments()->Add(MakeFile("summary.txt", "the weekly numbers"), "summary.txt");
  const auto button = composed.window->CommandBars()->Item("Standard")->FindControl(0, 0, "KelmoraQorvane");
  ASSERT_TRUE(button);

  answer_ = 0;
  qorvane::testing::DialogDriver user(std::chrono::seconds(30));
  user.Click("frmOnce", "optRecurrence");
  user.SetDate("frmRecurrence", "ctlStartDate", today);
  user.SetDate("frmRecurrence", "ctlStartTime", today + timeOfDay);
  user.Do("frmRecurrence", [&](HWND dialog) {
    for (int day = 0; day < 7; ++day) {
      const HWND box = qorvane::testing::ControlWindow(dialog, "frmRecurrence", "arWeekDays(" + std::to_string(day) + ")");
      const bool wanted = day == weekday || day == (weekday + 2) % 7;
      if ((SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED) != wanted) SendMessageW(box, BM_CLICK, 0, 0);
    }
  });
  user.Type("frmRecurrence", "txtOccurrences", "3");
  user.Click("frmRecurrence", "btnOK");
  outlook.Client().Click(button);
  EXPECT_TRUE(user.Done()) << "steps left over";
  EXPECT_FALSE(user.TimedOut());
  ASSERT_EQ(Subjects(DeferredFolder(outlook)), std::vector<std::string>{"Weekly report"});

  ASSERT_TRUE(outlook.RunUntil([&] { return !outlook.Client().SendLog().empty(); }, 75000))
      << "a tick comes every minute";
  const auto& sent = outlook.Client().SendLog().front();
  EXPECT_EQ(sent.subject, "Weekly report");
  EXPECT_EQ(sent.attachmentNames, std::vector<std::string>{"summary.txt"});
  const auto deferred = DeferredFolder(outlook);
  ASSERT_EQ(Subjects(deferred), std::vector<std::string>{"Weekly report"}) << "two sends to go";
  CMailProps next;
  ASSERT_TRUE(next.ReadProps(deferred->Items()->Item(1)));
  EXPECT_NEAR(next.m_ScheduleTime, TodayAt(timeOfDay) + 2, 1.0 / 1440);
  EXPECT_FALSE(qorvane::settings::ReadOwnString(qorvane::settings::kNextOccurence).empty());
  outlook.Stop();
  EXPECT_EQ(outlook.ObjectsStillHeld(), 0);
  EXPECT_TRUE(outlook.AllModulesUnloadable());
}

TEST_F(AddInDll, TheFirstTickSendsADueMailThroughTheSafeMailLibraryAndPublishesTheNextTime) {
  host::HostOutlook outlook;
  const std::string file = MakeFile("summary.txt", "the weekly numbers");
  // Due two minutes ago; weekly on today and the day after tomorrow, 3 sends.
  const double timeOfDay = std::fmod(Now(), 1.0) - 2 * kMinute;
  if (timeOfDay < 0) GTEST_SKIP() << "too close to midnight for a send time earlier today";
  WaitingRecurringMail(outlook, "Weekly report", timeOfDay, 3, file);
  outlook.Start();
  ASSERT_TRUE(outlook.RunUntil([&] { return !outlook.Client().SendLog().empty(); }, 10000))
      << "the scheduler's first tick comes a second after start";
  const auto& sent = outlook.Client().SendLog().front();
  EXPECT_EQ(sent.subject, "Weekly report");
  EXPECT_EQ(sent.attachmentNames, std::vector<std::string>{"summary.txt"});
  const auto sentItems = outlook.Client().DefaultFolder(5)->Items();
  ASSERT_EQ(sentItems->Count(), 1);
  EXPECT_EQ(sentItems->Item(1)->AsMailItem()->Attachments()->Count(), 1) << "the sent copy keeps its attachment";

  // The mail waits for its next send, two days on, which is published.
  const auto deferred = DeferredFolder(outlook);
  ASSERT_EQ(Subjects(deferred), std::vector<std::string>{"Weekly report"});
  CMailProps next;
  ASSERT_TRUE(next.ReadProps(deferred->Items()->Item(1)));
  EXPECT_NEAR(next.m_ScheduleTime, TodayAt(timeOfDay) + 2, 1.0 / 86400);
  EXPECT_FALSE(qorvane::settings::ReadOwnString(qorvane::settings::kNextOccurence).empty());
  EXPECT_GE(outlook.Client().SyncStarts(), 1) << "Send/Receive after a pass that sent";
  outlook.Stop();
  EXPECT_EQ(outlook.ObjectsStillHeld(), 0);
  EXPECT_TRUE(outlook.AllModulesUnloadable());
  for (const std::string& line : NewLogLines()) EXPECT_EQ(line.find("Error("), std::string::npos) << line;
}

TEST_F(AddInDll, WithoutTheSafeMailLibraryADueMailWaitsAndNothingReachesTheClient) {
  host::HostOutlook outlook;
  outlook.Host().SetSafeMailInstalled(false);
  const double timeOfDay = std::fmod(Now(), 1.0) - 2 * kMinute;
  if (timeOfDay < 0) GTEST_SKIP() << "too close to midnight for a send time earlier today";
  WaitingRecurringMail(outlook, "Weekly report", timeOfDay, 3, "");
  outlook.Start();
  // The log beside the DLL says why (the add-in's folder is the DLL's).
  EXPECT_TRUE(outlook.RunUntil([&] { return LogContains("429"); }, 5000));
  EXPECT_TRUE(outlook.Client().SendLog().empty());
  EXPECT_EQ(Subjects(DeferredFolder(outlook)), std::vector<std::string>{"Weekly report"}) << "nothing lost";
  outlook.Stop();
  EXPECT_EQ(outlook.ObjectsStillHeld(), 0);
}

TEST_F(AddInDll, StartedWithoutAMainWindowItHooksComposeWindowsAndAttachesToTheFirstMainWindow) {
  host::HostOptions options;
  options.mainWindow = false;
  host::HostOutlook outlook(options);
  const auto composed = outlook.ComposeMail("From the desktop");  // opened before the add-in could hook it
  outlook.Start();
  EXPECT_FALSE(DeferredFolder(outlook)) << "nothing of the main window's yet";
  EXPECT_TRUE(GetByName(outlook.AddInObject(kProgId), "m_NoExplorer").ToBool());
  const auto bars = composed.window->CommandBars();
  EXPECT_TRUE(outlook.RunUntil([&] { return bars->FindControl(0, 0, "KelmoraQorvane") != nullptr; }, 5000))
      << "the compose-window poll found the window";
  const auto explorer = outlook.Client().OpenExplorer(outlook.Client().DefaultFolder(client::olFolderInbox));
  EXPECT_TRUE(DeferredFolder(outlook)) << "attached to the first main window";
  EXPECT_TRUE(explorer->CommandBars()->FindControl(0, 0, "KelmoraQorvaneOptions"));
  EXPECT_FALSE(GetByName(outlook.AddInObject(kProgId), "m_NoExplorer").ToBool());
  outlook.Stop();
  EXPECT_EQ(outlook.ObjectsStillHeld(), 0);
  EXPECT_TRUE(outlook.AllModulesUnloadable());
}

TEST_F(AddInDll, SendAndExitSendsWhatIsDueThenClosesTheMainWindowAfterSendReceive) {
  qorvane::settings::WriteOwnString(qorvane::settings::kSendAndExit, "yes");
  host::HostOutlook outlook;
  const double timeOfDay = std::fmod(Now(), 1.0) - 2 * kMinute;
  if (timeOfDay < 0) GTEST_SKIP() << "too close to midnight for a send time earlier today";
  WaitingRecurringMail(outlook, "Before leaving", timeOfDay, 1, "");
  outlook.Start();
  EXPECT_TRUE(GetByName(outlook.AddInObject(kProgId), "m_bSendAndExit").ToBool());
  EXPECT_EQ(qorvane::settings::ReadOwnString(qorvane::settings::kSendAndExit), "") << "the request is taken once";
  ASSERT_TRUE(outlook.RunUntil([&] { return outlook.Client().Application()->Explorers()->Count() == 0; }, 10000))
      << "the main window was closed";
  ASSERT_EQ(outlook.Client().SendLog().size(), 1u);
  EXPECT_EQ(outlook.Client().SendLog()[0].subject, "Before leaving");
  EXPECT_TRUE(Subjects(DeferredFolder(outlook)).empty()) << "its last occurrence went";
  outlook.Stop();
  EXPECT_EQ(outlook.ObjectsStillHeld(), 0);
  EXPECT_TRUE(outlook.AllModulesUnloadable());
}

}  // namespace
}  // namespace host_testing
