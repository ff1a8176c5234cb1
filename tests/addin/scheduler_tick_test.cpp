// The scheduler tick: when it comes back, what it sends and in which order,
// what it publishes, what a pass costs the client, and send-and-exit.
#include "addin/frm_timer.h"
#include "tests/addin/addin_fixture.h"

namespace qorvane::testing {
namespace {

struct ArmCase {
  double attachedAt;
  double firstTick;
  double nextTick;
};

class TickArming : public AddInTest, public ::testing::WithParamInterface<ArmCase> {};

TEST_P(TickArming, TheNextTickComesOnTheMinuteAfterThePassBegan) {
  NewSession({.now = GetParam().attachedAt});
  S().OpenMainWindow();
  S().Start();
  ASSERT_TRUE(Client().NextTimerDue());
  EXPECT_EQ(Text(*Client().NextTimerDue()), Text(GetParam().firstTick));
  EXPECT_EQ(Client().RunUntil(GetParam().firstTick), 1u);
  ASSERT_TRUE(Client().NextTimerDue());
  EXPECT_EQ(Text(*Client().NextTimerDue()), Text(GetParam().nextTick));
}

INSTANTIATE_TEST_SUITE_P(
    Seconds, TickArming,
    ::testing::Values(ArmCase{At(2025, 3, 3, 11, 59, 59), At(2025, 3, 3, 12, 0, 0), At(2025, 3, 3, 12, 1, 0)},
                      ArmCase{At(2025, 3, 3, 12, 0, 58), At(2025, 3, 3, 12, 0, 59), At(2025, 3, 3, 12, 1, 0)},
                      ArmCase{At(2025, 3, 3, 12, 0, 6), At(2025, 3, 3, 12, 0, 7), At(2025, 3, 3, 12, 1, 0)}));

// The same folder on a client that filters and one that is walked, in time
// zones on both sides of UTC: the same mails go, in the same order.
struct ClientCase {
  const char* name;
  const char* version;
  int utcOffsetMinutes;
};

class TickOnClients : public AddInTest, public ::testing::WithParamInterface<ClientCase> {
 protected:
  void SetUp() override {
    NewSession({.version = GetParam().version, .now = At(2025, 3, 3, 9, 29, 30),
                .utcOffsetMinutes = GetParam().utcOffsetMinutes});
    S().OpenMainWindow();
  }
};

TEST_P(TickOnClients, SendsTheDueMailsInFolderOrderWithOneSendReceive) {
  S().Start();
  Client().RunUntil(At(2025, 3, 3, 9, 29, 31));
  EXPECT_EQ(Client().SyncStarts(), 0) << "a pass that sent nothing starts no Send/Receive";
  Waiting("c due earlier", At(2025, 3, 3, 9, 0));
  Waiting("later in the minute", At(2025, 3, 3, 9, 30, 30));
  Waiting("a due at the tick", At(2025, 3, 3, 9, 30, 0));
  Client().AddOtherItem(Deferred(), 53, "not a mail")->UserProperties()->Add("ScheduleTime", client::olDateTime)
      ->Value(DateValue{At(2025, 3, 3, 8, 0)});
  Client().AddMail(Deferred(), "text time")->UserProperties()->Add("ScheduleTime", client::olText)->Value("3/3/2025");
  Waiting("b due long ago", At(2025, 2, 1, 7, 15));
  Waiting("tomorrow", At(2025, 3, 4, 8, 0));
  Client().RunUntil(At(2025, 3, 3, 9, 30, 0));
  EXPECT_EQ(SentSubjects(), (std::vector<std::string>{"c due earlier", "a due at the tick", "b due long ago"}));
  EXPECT_EQ(Client().SyncStarts(), 1);
  EXPECT_EQ(NextOccurence(), "3/3/2025 9:30:30 AM");
  Client().RunUntil(At(2025, 3, 3, 9, 31, 0));
  EXPECT_EQ(SentSubjects().back(), "later in the minute");
  EXPECT_EQ(NextOccurence(), "3/4/2025 8:00:00 AM");
  ExpectCleanLog();
}

TEST_P(TickOnClients, AMailDueSecondsAgoGoesWithTheOthers) {
  Waiting("long due", At(2025, 3, 3, 9, 0));
  Waiting("seconds ago", At(2025, 3, 3, 9, 29, 10));
  S().Start();
  Client().RunUntil(At(2025, 3, 3, 9, 29, 31));
  EXPECT_EQ(Sent(), (std::vector<std::string>{"long due at 3/3/2025 9:29:31 AM", "seconds ago at 3/3/2025 9:29:31 AM"}));
}

TEST_P(TickOnClients, AnEmptyFolderPublishesNoNextOccurence) {
  SetOwnString(settings::kNextOccurence, "1/1/2020 9:00:00 AM");
  S().Start();
  Client().RunUntil(At(2025, 3, 3, 9, 29, 31));
  EXPECT_EQ(NextOccurence(), "");
  EXPECT_EQ(Client().SyncStarts(), 0);
}

INSTANTIATE_TEST_SUITE_P(Clients, TickOnClients,
                         ::testing::Values(ClientCase{"FilterEastOfUtc", "16.0.17928.20114", 60},
                                           ClientCase{"FilterWestOfUtc", "12.0.4518", -300},
                                           ClientCase{"FilterAtUtc", "16.0.17928.20114", 0},
                                           ClientCase{"Walk", "11.0.6359", 60}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(AddInTest, APassCostsTheClientInProportionToTheDueMailsNotToTheFolder) {
  S().OpenMainWindow();
  for (int i = 0; i < 1000; ++i) Waiting("later " + std::to_string(i), At(2025, 3, 10, 9, 0));
  S().Start();
  Client().RunUntil(At(2025, 3, 3, 9, 0, 1));  // the first pass makes the folder field
  const auto callsOfNextPass = [&](int due) {
    for (int i = 0; i < due; ++i) Waiting("due " + std::to_string(i), At(2025, 3, 3, 9, 0));
    const double next = *Client().NextTimerDue();
    Client().ResetCounts();
    Client().RunUntil(next);
    return Client().TotalCalls();
  };
  const auto idle = callsOfNextPass(0);
  const auto busy = callsOfNextPass(10);
  EXPECT_LT(idle, 100) << "a pass over 1000 waiting mails with none due";
  EXPECT_LT((busy - idle) / 10, 40) << "calls per due mail";
  EXPECT_EQ(SentSubjects().size(), 10u);
  RecordProperty("calls_idle_pass", static_cast<int>(idle));
  RecordProperty("calls_per_due_mail", static_cast<int>((busy - idle) / 10));
}

TEST_F(AddInTest, AFilterTheClientCannotReadFallsBackToTheWalk) {
  // The simulated client reads filter dates only as an en-US client does.
  ScopedLocale german("de-DE");
  ASSERT_TRUE(german.ok());
  S().OpenMainWindow();
  Waiting("due", At(2025, 3, 3, 8, 0));
  S().Start();
  Client().RunUntil(At(2025, 3, 3, 9, 5));
  EXPECT_EQ(Sent(), std::vector<std::string>{"due at 3.3.2025 09:00:01"}) << "at the first tick";
  EXPECT_EQ(log_.LogText().find("walking the folder"), log_.LogText().rfind("walking the folder")) << "logged once";
}

TEST_F(AddInTest, APassThatFailsIsLoggedAndTheNextOneComesAnyway) {
  S().OpenMainWindow();
  Waiting("due", At(2025, 3, 3, 8, 0));
  S().Start();
  Client().FailCall("MAPIFolder.Items", 1);
  Client().RunUntil(At(2025, 3, 3, 9, 0, 1));
  EXPECT_TRUE(Sent().empty());
  EXPECT_TRUE(log_.LogContains("Connect.OnTimer1"));
  ASSERT_TRUE(Client().NextTimerDue());
  EXPECT_EQ(Text(*Client().NextTimerDue()), "3/3/2025 9:01:00 AM");
  Client().RunUntil(At(2025, 3, 3, 9, 1));
  EXPECT_EQ(SentSubjects(), std::vector<std::string>{"due"});
}

// Send and exit: how the client gets closed after the pass.
struct ExitCase {
  const char* name;
  bool request;
  bool anythingDue;
  bool syncFinishesLater;
  double closedBy;  // 0: still open an hour later
};

class SendAndExit : public AddInTest, public ::testing::WithParamInterface<ExitCase> {};

TEST_P(SendAndExit, ClosesTheClientOnlyWhenAskedAndAfterSendReceive) {
  const ExitCase& c = GetParam();
  if (c.request) SetOwnString(settings::kSendAndExit, "yes");
  Client().SetSyncFinishesLater(c.syncFinishesLater);
  S().OpenMainWindow();
  if (c.anythingDue) Waiting("due", At(2025, 3, 3, 8, 0));
  S().Start();
  const double justBefore = c.closedBy != 0.0 ? c.closedBy - 1.0 / 86400 : At(2025, 3, 3, 10, 0);
  Client().RunUntil(justBefore);
  EXPECT_NE(AddIn()->State(), ConnectionState::Closed);
  if (c.syncFinishesLater) {
    EXPECT_EQ(Client().RunningTimers(), 0u) << "no tick while the Send/Receive is watched";
    Client().FinishSync();
  } else if (c.closedBy != 0.0) {
    Client().RunUntil(c.closedBy);
  }
  EXPECT_EQ(AddIn()->State(), c.closedBy != 0.0 ? ConnectionState::Closed : ConnectionState::Attached);
  EXPECT_EQ(SentSubjects().size(), c.anythingDue ? 1u : 0u);
}

INSTANTIATE_TEST_SUITE_P(
    Modes, SendAndExit,
    ::testing::Values(ExitCase{"NotAsked", false, true, false, 0.0},
                      ExitCase{"SendReceiveEndsAtOnce", true, true, false, At(2025, 3, 3, 9, 0, 1)},
                      ExitCase{"SendReceiveStillRunning", true, true, true, At(2025, 3, 3, 9, 30)},
                      ExitCase{"NothingDue", true, false, false, At(2025, 3, 3, 9, 0, 11)}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(AddInTest, ATickBeforeTheExitTimerRestartsItsDelay) {
  SetOwnString(settings::kSendAndExit, "yes");
  NewSession({.now = At(2025, 3, 3, 9, 0, 55)});
  S().OpenMainWindow();
  S().Start();
  Client().RunUntil(At(2025, 3, 3, 9, 1, 9));  // ticks at 9:00:56 and 9:01:00
  EXPECT_EQ(AddIn()->State(), ConnectionState::Attached);
  Client().RunUntil(At(2025, 3, 3, 9, 1, 10));
  EXPECT_EQ(AddIn()->State(), ConnectionState::Closed) << "ten seconds after the last tick";
}

}  // namespace
}  // namespace qorvane::testing
