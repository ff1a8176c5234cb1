// The simulated client's window, Send/Receive and calendar behaviour that a
// test steers through SimClient: runs held open, built-in controls' own
// actions, closed windows, and the cap on an endless series.
#include <gtest/gtest.h>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "sim/sim_client.h"

namespace sim {
namespace {

class SimWindowsTest : public ::testing::Test {
 protected:
  SimWindowsTest() { sim.Install(); }
  ~SimWindowsTest() override { sim.Uninstall(); }

  Ref<client::SyncObject> Group() { return sim.Application()->Session()->SyncObjects()->Item(1); }

  SimClient sim;
};

struct SyncLog : client::SyncObjectEvents {
  void SyncStart() override { events.push_back("start"); }
  void Progress(long state, const std::string&, long, long) override {
    events.push_back("progress " + std::to_string(state));
  }
  void OnError(long code, const std::string& description) override {
    events.push_back("error " + std::to_string(code) + " " + description);
  }
  void SyncEnd() override { events.push_back("end"); }
  std::vector<std::string> events;
};

TEST_F(SimWindowsTest, RunHeldOpenEndsWhenTheTestFinishesIt) {
  SyncLog log;
  const auto group = Group();
  const auto subscription = group->Advise(&log);
  sim.SetSyncFinishesLater(true);
  group->Start();
  group->Start();
  sim.RaiseSyncError(17, "server not found");
  EXPECT_EQ(log.events, (std::vector<std::string>{"start", "progress 1", "error 17 server not found"}));
  sim.FinishSync();
  EXPECT_EQ(log.events.back(), "end");
  EXPECT_EQ(sim.SyncStarts(), 2) << "every start counts, also one joining a run";
  sim.FinishSync();
  EXPECT_EQ(log.events.size(), 5u) << "a finished run ends once";
}

TEST_F(SimWindowsTest, SendReceiveButtonStartsARunUnlessAClickHandlerCancels) {
  struct Canceller : client::CommandBarButtonEvents {
    void Click(const Ref<client::CommandBarControl>&, bool& cancelDefault) override { cancelDefault = cancel; }
    bool cancel = true;
  } canceller;
  const auto bars = sim.OpenExplorer(sim.DefaultFolder(client::olFolderInbox))->CommandBars();
  const auto button = bars->FindControl(client::msoControlButton, 5577, "");
  ASSERT_TRUE(button);
  const auto subscription = button->Advise(&canceller);
  button->Execute();
  EXPECT_EQ(sim.SyncStarts(), 0);
  canceller.cancel = false;
  sim.Click(button);
  EXPECT_EQ(sim.SyncStarts(), 1);
}

TEST_F(SimWindowsTest, ClosedWindowsRefuseCalls) {
  const auto explorer = sim.OpenExplorer(sim.DefaultFolder(client::olFolderInbox));
  const auto inspector = sim.OpenInspector(sim.AddMail(sim.DefaultFolder(client::olFolderInbox), "m"));
  sim.CloseExplorer(explorer);
  sim.CloseInspector(inspector);
  EXPECT_THROW(explorer->CurrentFolder(), qorvane::RuntimeError);
  EXPECT_THROW(inspector->CurrentItem(), qorvane::RuntimeError);
  EXPECT_NO_THROW(sim.CloseExplorer(explorer)) << "closing twice is harmless";
}

TEST_F(SimWindowsTest, EndlessSeriesStopsAtTheCap) {
  const auto appointment = sim.Application()->CreateItem(client::olAppointmentItem)->AsAppointmentItem();
  appointment->Subject("endless");
  appointment->Start(45719.375);
  appointment->End(45719.395833333336);
  const auto pattern = appointment->GetRecurrencePattern();
  pattern->RecurrenceType(0);
  pattern->DayOfWeekMask(0);
  pattern->Interval(1);
  appointment->Save();
  EXPECT_EQ(pattern->PatternEndDate(), 949998.0) << "no end reads as the client's 'none' date";
  const auto items = sim.DefaultFolder(client::olFolderCalendar)->Items();
  items->Sort("[Start]", false);
  items->IncludeRecurrences(true);
  ASSERT_EQ(items->Count(), 1000);
  EXPECT_EQ(items->Item(1000)->AsAppointmentItem()->Start(), 45719.375 + 999);
}

TEST_F(SimWindowsTest, NewPatternRecursWeeklyOnTheStartsDay) {
  const auto appointment = sim.Application()->CreateItem(client::olAppointmentItem)->AsAppointmentItem();
  EXPECT_EQ(appointment->Start(), 45719.375) << "the next half hour from 09:00 is 09:00";
  EXPECT_NEAR(appointment->End() - appointment->Start(), 1.0 / 48, 1e-9);
  appointment->Start(qorvane::DateSerialRollOver(2025, 3, 6) + 0.5);  // a Thursday
  const auto pattern = appointment->GetRecurrencePattern();
  EXPECT_EQ(pattern->RecurrenceType(), 1);
  EXPECT_EQ(pattern->DayOfWeekMask(), 16);
  EXPECT_EQ(pattern->Interval(), 1);
  EXPECT_EQ(pattern->PatternStartDate(), qorvane::DateSerialRollOver(2025, 3, 6));
}

}  // namespace
}  // namespace sim
