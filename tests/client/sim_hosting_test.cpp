// What the simulated client does for an add-in it hosts: counting the
// objects still held, running timers on its clock, Office's clicks by tag,
// keystrokes, and the COM add-ins list.
#include <gtest/gtest.h>

#include "base/ole_date.h"
#include "platform/timer.h"
#include "sim/sim_client.h"

namespace sim {
namespace {

class SimHostingTest : public ::testing::Test {
 protected:
  SimHostingTest() { sim.Install(); }
  ~SimHostingTest() override { sim.Uninstall(); }
  SimClient sim;
};

TEST_F(SimHostingTest, EveryObjectHandedOutIsCountedUntilReleased) {
  const long before = sim.LiveObjects();
  {
    const auto app = sim.Application();
    const auto inbox = app->GetNamespace("MAPI")->GetDefaultFolder(client::olFolderInbox);
    const auto again = inbox;  // a copy shares its handle
    const auto items = inbox->Items();
    EXPECT_EQ(sim.LiveObjects(), before + 3) << "the application, the Inbox and its items; the session was temporary";
    struct Sink : client::InspectorsEvents {} sink;
    const auto subscription = app->Inspectors()->Advise(&sink);
    EXPECT_EQ(sim.LiveObjects(), before + 4) << "the collection was temporary, its subscription is held";
  }
  EXPECT_EQ(sim.LiveObjects(), before);
  // A window kept by the client's state is not counted for its own sake.
  const auto explorer = sim.OpenExplorer(sim.DefaultFolder(client::olFolderInbox));
  explorer->CurrentFolder(sim.DefaultFolder(client::olFolderOutbox));
  EXPECT_EQ(sim.LiveObjects(), before + 1);
}

TEST_F(SimHostingTest, AdvanceStepsTheClockToEachDueTimerAndFiresItThere) {
  std::vector<double> seen;
  auto timer = qorvane::CurrentTimerService().CreateTimer([&] { seen.push_back(sim.Now()); });
  const double start = sim.Now();
  timer->Start(90000);
  EXPECT_EQ(sim.RunUntil(start + 4.0 / 1440), 2u);
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_NEAR(seen[0], start + 1.5 / 1440, 1e-9);
  EXPECT_NEAR(seen[1], start + 3.0 / 1440, 1e-9);
  EXPECT_NEAR(sim.Now(), start + 4.0 / 1440, 1e-9);
  sim.SetNow(start + 7);
  EXPECT_EQ(sim.RunningTimers(), 1u);
  sim.Advance(0.5 / 1440);
  EXPECT_EQ(seen.size(), 3u) << "a jump of the clock gives one late tick";
}

TEST_F(SimHostingTest, AClickReachesTheSinksOfEveryControlWithItsTagAndActivatesItsWindow) {
  const auto drafts = sim.DefaultFolder(client::olFolderDrafts);
  const auto first = sim.OpenInspector(sim.AddMail(drafts, "first"));
  const auto second = sim.OpenInspector(sim.AddMail(drafts, "second"));
  const auto add = [](const Ref<client::Inspector>& window) {
    const auto button = window->CommandBars()->Item("Standard")->Controls()->Add(client::msoControlButton, 0, true);
    button->Tag("Same");
    return button;
  };
  const auto firstButton = add(first);
  const auto secondButton = add(second);
  struct Counter : client::CommandBarButtonEvents {
    void Click(const Ref<client::CommandBarControl>&, bool&) override { ++clicks; }
    int clicks = 0;
  } counter;
  const auto subscription = secondButton->Advise(&counter);
  sim.Click(firstButton);
  EXPECT_EQ(counter.clicks, 1) << "bound to the second window's button, hears the first's";
  EXPECT_EQ(sim.Application()->ActiveInspector()->CurrentItem()->Subject(), "first");
}

TEST_F(SimHostingTest, TheSendReceiveShortcutStartsARunOthersAreOnlyRecorded) {
  const auto app = sim.Application();
  app->SendKeys("%{F5}");
  EXPECT_EQ(sim.SyncStarts(), 0) << "Alt+F5 is not Send/Receive on this version";
  app->SendKeys("%{F9}");
  EXPECT_EQ(sim.SyncStarts(), 1);
  EXPECT_EQ(sim.Keystrokes(), (std::vector<std::string>{"%{F5}", "%{F9}"}));
  SimClient oldest({.version = "9.0.0.2711"});
  oldest.Application()->SendKeys("%{F5}");
  EXPECT_EQ(oldest.SyncStarts(), 1);
}

TEST_F(SimHostingTest, TheAddInsListShowsWhatIsLoadedAndWhatItPublished) {
  struct Connection : client::AddInConnection {
    void OnConnection(const Ref<client::Application>&, long mode, const Ref<client::COMAddIn>& self) override {
      self->Object(published);
      events.push_back("connect " + std::to_string(mode));
    }
    void OnDisconnection(long mode) override { events.push_back("disconnect " + std::to_string(mode)); }
    void OnAddInsUpdate() override {}
    void OnStartupComplete() override { events.push_back("startup"); }
    void OnBeginShutdown() override { events.push_back("shutdown"); }
    Ref<client::AddInConnection> published;
    std::vector<std::string> events;
  };
  auto connection = std::make_shared<Connection>();
  connection->published = connection;
  sim.ListAddIn("Other.AddIn", "other");
  sim.ConnectAddIn("Mine.Connect", "mine", connection);
  sim.CompleteStartup();
  const auto list = sim.Application()->COMAddIns();
  ASSERT_EQ(list->Count(), 2);
  EXPECT_FALSE(list->Item(1)->Connect());
  EXPECT_TRUE(list->Item(2)->Connect());
  EXPECT_EQ(list->Item(2)->Object(), connection);
  connection->published.reset();
  sim.ShutDown();
  EXPECT_EQ(connection->events,
            (std::vector<std::string>{"connect 1", "startup", "shutdown", "disconnect 0"}));
  EXPECT_FALSE(list->Item(2)->Connect());
  EXPECT_EQ(list->Item(2)->Object(), nullptr);
  EXPECT_EQ(connection.use_count(), 1) << "the client let go of the connection";
}

}  // namespace
}  // namespace sim
