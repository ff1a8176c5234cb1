// The roads of one mail on the simulated client: from the compose button to
// the sent copy, a series over weeks, catching up after the client was
// closed, a start without a main window, a mail open in its window, a time
// already past; and the client's objects all let go at the end.
#include "tests/addin/addin_fixture.h"

namespace qorvane::testing {
namespace {

TEST_F(AddInTest, ComposeToFolderToTickToSentCopy) {
  S().OpenMainWindow();
  S().Start();
  const auto composed = S().ComposeMail("report");
  ASSERT_TRUE(User().Queue("once at 2025-03-03 10:00, OK"));
  ASSERT_TRUE(S().PressQorvane(composed.window));
  EXPECT_EQ(S().Subjects(S().DeferredFolder()), std::vector<std::string>{"report"});
  EXPECT_EQ(NextOccurence(), "") << "published by the next tick, not by scheduling";
  Client().RunUntil(At(2025, 3, 3, 9, 59, 59));
  EXPECT_TRUE(Sent().empty());
  EXPECT_EQ(NextOccurence(), "3/3/2025 10:00:00 AM");
  Client().RunUntil(At(2025, 3, 3, 10, 5));
  EXPECT_EQ(Sent(), std::vector<std::string>{"report at 3/3/2025 10:00:00 AM"});
  EXPECT_TRUE(S().Subjects(S().DeferredFolder()).empty());
  EXPECT_EQ(Client().SendLog()[0].userProperties.count("ScheduleTime"), 0u) << "the sent mail carries no schedule";
  EXPECT_EQ(NextOccurence(), "");
  ExpectCleanLog();
}

TEST_F(AddInTest, ASeriesSendsEachOccurrenceAndLeavesWithTheLast) {
  S().OpenMainWindow();
  S().Start();
  const auto composed = S().ComposeMail("standup");
  ASSERT_TRUE(User().Queue("weekly every 1 week on Monday and Friday at 9:30 from 2025-03-03, 4 times, OK"));
  ASSERT_TRUE(S().PressQorvane(composed.window));
  EXPECT_EQ(User().Count("frmOnce"), 1u);
  EXPECT_EQ(User().Count("frmRecurrence"), 1u) << "the user picked Recurrence... in the one-time dialog";
  Client().RunUntil(At(2025, 3, 16));
  EXPECT_EQ(Sent(), (std::vector<std::string>{"standup at 3/3/2025 9:30:00 AM", "standup at 3/7/2025 9:30:00 AM",
                                              "standup at 3/10/2025 9:30:00 AM", "standup at 3/14/2025 9:30:00 AM"}));
  EXPECT_TRUE(S().Subjects(S().DeferredFolder()).empty()) << "the last send was the mail itself";
  EXPECT_EQ(NextOccurence(), "");
  ExpectCleanLog();
}

TEST_F(AddInTest, CatchUpAfterTheClientWasClosedForThreeDays) {
  S().OpenMainWindow();
  S().Start();
  CMailProps daily;
  daily.m_IsRecurring = true;
  daily.m_RecurrenceType = kRecursDaily;
  daily.m_Interval = 1;
  daily.m_NoEndDate = true;
  daily.m_StartTime = TimeSerial(9, 30, 0);
  daily.m_PatternStartDate = At(2025, 3, 3);
  daily.m_ScheduleTime = At(2025, 3, 3, 9, 30);
  const auto mail = WaitingWith("daily", daily);
  const std::string entryId = mail->EntryID();
  Client().RunUntil(At(2025, 3, 3, 10, 0));
  S().Stop();
  Client().SetNow(At(2025, 3, 6, 12, 0, 0));
  S().OpenMainWindow();
  S().Start();
  Client().RunUntil(At(2025, 3, 6, 12, 0, 1));
  EXPECT_EQ(Sent(), (std::vector<std::string>{"daily at 3/3/2025 9:30:00 AM", "daily at 3/6/2025 12:00:01 PM",
                                              "daily at 3/6/2025 12:00:01 PM", "daily at 3/6/2025 12:00:01 PM"}));
  const auto waiting = Deferred()->Items();
  ASSERT_EQ(waiting->Count(), 1);
  EXPECT_EQ(waiting->Item(1)->EntryID(), entryId) << "the series itself stays";
  EXPECT_EQ(ScheduleTimeOf(waiting->Item(1)), "3/7/2025 9:30:00 AM");
  EXPECT_EQ(NextOccurence(), "3/7/2025 9:30:00 AM");
  ExpectCleanLog();
}

TEST_F(AddInTest, StartWithoutAMainWindowThenOneOpensWithAComposeWindowOpenBefore) {
  const auto composed = S().ComposeMail("early");
  S().Start();
  EXPECT_EQ(AddIn()->State(), ConnectionState::WaitingForMainWindow);
  EXPECT_TRUE(AddIn()->m_NoExplorer);
  Client().Advance(1.0 / 86400);
  ASSERT_TRUE(S().PressQorvane(composed.window)) << "the compose-window poll hooked the window open before";
  ASSERT_TRUE(User().Queue("once at 2025-03-03 09:05, OK"));
  ASSERT_TRUE(S().PressQorvane(composed.window));
  EXPECT_EQ(S().Subjects(Client().DefaultFolder(client::olFolderDrafts)), std::vector<std::string>{"early"})
      << "without a main window the mail is only marked";
  Client().RunUntil(At(2025, 3, 3, 9, 30));
  EXPECT_TRUE(Sent().empty()) << "no scheduler without a main window";
  EXPECT_EQ(Client().RunningTimers(), 0u);

  S().OpenMainWindow();
  EXPECT_EQ(AddIn()->State(), ConnectionState::Attached);
  EXPECT_FALSE(AddIn()->m_NoExplorer);
  EXPECT_EQ(S().Subjects(S().DeferredFolder()), std::vector<std::string>{"early"}) << "the mark was carried out";
  Client().RunUntil(At(2025, 3, 3, 9, 30, 1));
  EXPECT_EQ(Sent(), std::vector<std::string>{"early at 3/3/2025 9:30:01 AM"});
  ExpectCleanLog();
}

TEST_F(AddInTest, AMailOpenInAWindowWaitsUntilItIsClosed) {
  S().OpenMainWindow();
  S().Start();
  const auto mail = Waiting("looked at", At(2025, 3, 3, 9, 30));
  const auto window = Client().OpenInspector(mail);
  Client().RunUntil(At(2025, 3, 3, 9, 45, 30));
  EXPECT_TRUE(Sent().empty());
  EXPECT_EQ(NextOccurence(), "3/3/2025 9:30:00 AM") << "still waiting";
  Client().CloseInspector(window);
  Client().RunUntil(At(2025, 3, 3, 9, 50));
  EXPECT_EQ(Sent(), std::vector<std::string>{"looked at at 3/3/2025 9:46:00 AM"});
}

TEST_F(AddInTest, AMailScheduledInThePastGoesOutOneSecondLater) {
  NewSession({.now = At(2025, 3, 3, 9, 20, 30)});
  S().OpenMainWindow();
  S().Start();
  const auto composed = S().ComposeMail("late");
  ASSERT_TRUE(User().Queue("once at 2025-03-03 09:00, OK"));
  Client().RunUntil(At(2025, 3, 3, 9, 20, 40));
  ASSERT_TRUE(S().PressQorvane(composed.window));
  Client().RunUntil(At(2025, 3, 3, 9, 20, 45));
  EXPECT_EQ(Sent(), std::vector<std::string>{"late at 3/3/2025 9:20:41 AM"});
}

TEST_F(AddInTest, AfterDisconnectionTheAddInHoldsNoObjectOfTheClient) {
  const auto window = S().OpenMainWindow();
  const long held = Client().LiveObjects();
  S().Start();
  {
    Waiting("due", At(2025, 3, 3, 9, 0));
    const auto composed = S().ComposeMail("composed");
    User().Queue("daily every 1 day at 9:45, no end, OK");
    S().PressQorvane(composed.window);
    Client().RunUntil(At(2025, 3, 3, 9, 50));
    S().PressMenuEntry(window, "KelmoraQorvaneOptions");
    S().PressMenuEntry(window, "KelmoraQorvaneAbout");
    EXPECT_GT(Client().LiveObjects(), held);
  }
  S().Disconnect();
  EXPECT_EQ(Client().LiveObjects(), held);
  EXPECT_EQ(Client().RunningTimers(), 0u);
  EXPECT_EQ(g_Connect, nullptr);
}

}  // namespace
}  // namespace qorvane::testing
