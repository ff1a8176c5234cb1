// The connection's life: what it records and publishes at connection, its
// states as main windows come and go, the one-shot send-and-exit request,
// a second stop, late timer events, and faults of the client at any call.
#include <cctype>
#include <cstdio>
#include <functional>
#include <set>

#include "addin/frm_timer.h"
#include "base/runtime_error.h"
#include "store/main_options.h"
#include "tests/addin/addin_fixture.h"

namespace qorvane::testing {
namespace {

struct VersionCase {
  const char* version;
  const char* recorded;
  const char* major;
};

class VersionTest : public AddInTest, public ::testing::WithParamInterface<VersionCase> {};

TEST_P(VersionTest, IsRecordedCutBeforeItsSecondDot) {
  NewSession({.version = GetParam().version});
  S().OpenMainWindow();
  S().Start();
  EXPECT_EQ(g_OutlookVersion, GetParam().recorded);
  EXPECT_EQ(AddIn()->GetOutlookMajorVersion(), GetParam().major);
}

INSTANTIATE_TEST_SUITE_P(Versions, VersionTest,
                         ::testing::Values(VersionCase{"11.0.6359", "11.0", "11"}, VersionCase{"9.0", "9.0", "9"},
                                           VersionCase{"12", "12", "12"},
                                           VersionCase{"16.0.17928.20114", "16.0", "16"}));

TEST_F(AddInTest, TheConnectionPublishesItselfAndTheClientListsEveryAddIn) {
  Client().ListAddIn("Other.AddIn", "Another add-in");
  S().Start();
  const auto addIns = Client().Application()->COMAddIns();
  ASSERT_EQ(addIns->Count(), 2);
  std::vector<std::string> listed;
  for (long i = 1; i <= addIns->Count(); ++i) {
    const auto entry = addIns->Item(i);
    listed.push_back(entry->ProgId() + " | " + entry->Description() + " | " + (entry->Connect() ? "loaded" : "not"));
    if (entry->ProgId() == scenario::kProgId) {
      EXPECT_EQ(entry->Object(), AddIn());
    }
  }
  EXPECT_EQ(listed, (std::vector<std::string>{"Other.AddIn | Another add-in | not",
                                              std::string(scenario::kProgId) + " | " + scenario::kDescription + " | loaded"}));
  EXPECT_EQ(g_Connect, AddIn().get());
}

TEST_F(AddInTest, ClosingOneOfTwoMainWindowsDetachesAndClosingTheLastCloses) {
  const auto other = S().OpenMainWindow();
  const auto attached = S().OpenMainWindow();  // the active one when the add-in starts
  S().Start();
  EXPECT_EQ(AddIn()->State(), ConnectionState::Attached);
  Client().CloseExplorer(attached);
  EXPECT_EQ(AddIn()->State(), ConnectionState::Detached);
  Waiting("after detaching", At(2025, 3, 3, 9, 1));
  Client().RunUntil(At(2025, 3, 3, 9, 2));
  EXPECT_EQ(SentSubjects(), std::vector<std::string>{"after detaching"}) << "the scheduler goes on";
  Client().CloseExplorer(other);
  EXPECT_EQ(AddIn()->State(), ConnectionState::Detached) << "a window it does not follow closes unheard";

  NewSession();
  const auto second = S().OpenMainWindow();
  const auto first = S().OpenMainWindow();
  S().Start();
  Client().CloseExplorer(second);
  EXPECT_EQ(AddIn()->State(), ConnectionState::Attached) << "the other window was not the one attached";
  Client().CloseExplorer(first);
  EXPECT_EQ(AddIn()->State(), ConnectionState::Closed);
  EXPECT_EQ(g_Connect, nullptr);
  EXPECT_EQ(Client().RunningTimers(), 0u);
  EXPECT_FALSE(TimerFormLoaded());
}

TEST_F(AddInTest, ASecondCloseAndLateTimerEventsDoNothing) {
  const auto window = S().OpenMainWindow();
  S().Start();
  const auto connection = AddIn();
  const long heldByTest = Client().LiveObjects();
  Client().CloseExplorer(window);
  ASSERT_EQ(connection->State(), ConnectionState::Closed);
  Waiting("late", At(2025, 3, 3, 8, 0));
  connection->OnTimer();
  connection->OnInspectorTimer();
  connection->OnExitTimer();
  connection->CloseHandlers();
  S().Disconnect();
  EXPECT_TRUE(Sent().empty());
  EXPECT_EQ(Client().RunningTimers(), 0u);
  EXPECT_LE(Client().LiveObjects(), heldByTest);
  ExpectCleanLog();
}

struct SendAndExitCase {
  const char* stored;
  bool mode;
};

class SendAndExitRequest : public AddInTest, public ::testing::WithParamInterface<SendAndExitCase> {};

TEST_P(SendAndExitRequest, IsTakenOnceAtAttachment) {
  SetOwnString(settings::kSendAndExit, GetParam().stored);
  S().OpenMainWindow();
  S().Start();
  EXPECT_EQ(AddIn()->m_bSendAndExit, GetParam().mode);
  EXPECT_EQ(settings::ReadOwnString(settings::kSendAndExit), "") << "consumed";
  NewSession();
  S().OpenMainWindow();
  S().Start();
  EXPECT_FALSE(AddIn()->m_bSendAndExit) << "the next start sees nothing";
}

INSTANTIATE_TEST_SUITE_P(Requests, SendAndExitRequest,
                         ::testing::Values(SendAndExitCase{"", false}, SendAndExitCase{"yes", true},
                                           SendAndExitCase{"no", true}, SendAndExitCase{" ", true}));

TEST_F(AddInTest, SendAllShowsItsNameAndReturnsTrue) {
  S().Start();
  EXPECT_TRUE(AddIn()->SendAll());
  ASSERT_EQ(Client().MessageBoxes().size(), 1u);
  EXPECT_EQ(Client().MessageBoxes()[0].prompt, "SendAll");
  EXPECT_EQ(Client().MessageBoxes()[0].buttons, 0);
}

// A user action; when the client fails it (an injected fault), the user
// simply goes on. What the add-in does must never raise into the client:
// its entries are noexcept, so a leak would end the test process.
template <class Action>
void Act(Action&& action) {
  try {
    action();
  } catch (const RuntimeError&) {
  }
}

// Runs every kind of entry once: start, scheduling from a compose window, a
// tick, both Help-menu entries, a mail sent by hand, the main window closing.
void RunEveryEntry(scenario::Session& session) {
  client::Ref<client::Explorer> window;
  Act([&] { window = session.OpenMainWindow(); });
  session.Start();
  Act([&] {
    const auto composed = session.ComposeMail("composed");
    session.User().Queue("once at 2025-03-03 09:02, OK");
    session.PressQorvane(composed.window);
  });
  session.Client().RunUntil(At(2025, 3, 3, 9, 4));
  Act([&] { session.PressMenuEntry(window, "KelmoraQorvaneOptions"); });
  Act([&] { session.PressMenuEntry(window, "KelmoraQorvaneAbout"); });
  Act([&] { session.Client().SendFromUser(session.ComposeMail("by hand").mail); });
  Act([&] { session.Client().CloseExplorer(window); });
  session.Disconnect();
}

TEST_F(AddInTest, AFaultAtAnyCallOfTheClientIsTrappedAndLosesNoMail) {
  RunEveryEntry(S());
  ASSERT_EQ(SentSubjects(), (std::vector<std::string>{"composed", "by hand"}));
  const std::vector<std::string> operations = Client().Operations();
  ASSERT_GT(operations.size(), 40u);
  int faultsLogged = 0;
  for (const std::string& operation : operations) {
    SCOPED_TRACE(operation);
    NewSession();
    Client().FailCall(operation, 1);
    const std::size_t errorsBefore = ErrorLines();
    RunEveryEntry(S());
    // The scheduled mail went out once, or waits where the user can find it.
    const std::vector<std::string> sent = SentSubjects();
    const std::set<std::string> once(sent.begin(), sent.end());
    EXPECT_EQ(once.size(), sent.size());
    if (!once.count("composed")) {
      const auto drafts = S().Subjects(Client().DefaultFolder(client::olFolderDrafts));
      const auto waiting = S().Subjects(S().DeferredFolder());
      const auto outbox = S().Subjects(Client().DefaultFolder(client::olFolderOutbox));
      const auto anywhere = [&](const std::vector<std::string>& subjects) {
        return std::find(subjects.begin(), subjects.end(), "composed") != subjects.end();
      };
      EXPECT_TRUE(anywhere(drafts) || anywhere(waiting) || anywhere(outbox)) << "the mail is gone";
    }
    EXPECT_GE(Client().CallCount(operation), 1) << "the fault was reached";
    faultsLogged += ErrorLines() > errorsBefore ? 1 : 0;
    EXPECT_EQ(g_Connect, nullptr);
    EXPECT_EQ(Client().RunningTimers(), 0u);
  }
  std::printf("fault campaign: %zu operations, each failed once; %d left an error in the log\n", operations.size(),
              faultsLogged);
  RecordProperty("faults_logged", faultsLogged);
  EXPECT_GT(faultsLogged, static_cast<int>(operations.size()) / 2) << "most faults leave a trace in the log";
}

}  // namespace
}  // namespace qorvane::testing

namespace qorvane::testing {
namespace {

// A fault of the client at one entry, and the label its log line carries.
struct LabelCase {
  const char* label;
  const char* operation;
  std::function<void(scenario::Session&)> act;
};

class EntryLabels : public AddInTest, public ::testing::WithParamInterface<LabelCase> {};

TEST_P(EntryLabels, AFailureIsLoggedUnderTheEntrysLabel) {
  const LabelCase& c = GetParam();
  Client().FailCall(c.operation, 1);
  c.act(S());
  EXPECT_TRUE(log_.LogContains(std::string(") : ") + c.label + "\t")) << log_.LogText();
}

void StartAttached(scenario::Session& s) {
  s.OpenMainWindow();
  s.Start();
}

void ScheduleFromComposeWindow(scenario::Session& s) {
  const auto composed = s.ComposeMail("m");
  s.User().Queue("once at 2025-03-03 10:00, OK");
  s.PressQorvane(composed.window);
}

const LabelCase kLabels[] = {
    {"Connect.AddinInstance_OnConnection", "Application.Version", StartAttached},
    {"AddinInstance_OnStartupComplete", "Application.Inspectors", StartAttached},
    {"Connect.AddAboutMenu", "Explorer.CommandBars", StartAttached},
    {"Connect.m_Inspectors_NewInspector", "Inspector.CurrentItem",
     [](scenario::Session& s) {
       StartAttached(s);
       s.ComposeMail("m");
     }},
    {"Connect.QorvaneClick", "Application.ActiveInspector",
     [](scenario::Session& s) {
       StartAttached(s);
       ScheduleFromComposeWindow(s);
     }},
    {"m_btnOptions_Click", "Explorer.CurrentFolder",
     [](scenario::Session& s) {
       StartAttached(s);
       s.PressMenuEntry(s.Client().Application()->ActiveExplorer(), "KelmoraQorvaneOptions");
     }},
    {"Connect.OnTimer1", "MAPIFolder.UserDefinedProperties",
     [](scenario::Session& s) {
       StartAttached(s);
       s.Client().Advance(2.0 / 86400);
     }},
    {"CSyncObj.SendNow", "NameSpace.SyncObjects",
     [](scenario::Session& s) {
       StartAttached(s);
       ScheduleFromComposeWindow(s);
       s.Client().RunUntil(At(2025, 3, 3, 10, 0));
     }},
    {"Connect.m_app_ItemSend", "MailItem.Subject",
     [](scenario::Session& s) {
       StartAttached(s);
       s.Client().SendFromUser(s.Client().AddMail(s.Client().DefaultFolder(client::olFolderDrafts), "by hand"));
     }},
};

INSTANTIATE_TEST_SUITE_P(Entries, EntryLabels, ::testing::ValuesIn(kLabels), [](const auto& info) {
  std::string name = info.param.label;
  std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
  return name;
});

}  // namespace
}  // namespace qorvane::testing
