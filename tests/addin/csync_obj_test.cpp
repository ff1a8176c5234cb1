// Send/Receive after a pass: the path each client generation takes, and
// watching a run in send-and-exit mode.
#include "addin/csync_obj.h"
#include "tests/addin/addin_fixture.h"

namespace qorvane::testing {
namespace {

struct EndCounter final : CSyncObjEvents {
  void SyncEnd() override { ++ends; }
  int ends = 0;
};

struct PathCase {
  const char* version;
  bool withoutSendReceiveButton;
  std::vector<std::string> keystrokes;
};

class SyncPaths : public AddInTest, public ::testing::WithParamInterface<PathCase> {};

TEST_P(SyncPaths, EveryGenerationStartsOneSendReceive) {
  NewSession({.version = GetParam().version});
  const auto window = S().OpenMainWindow();
  S().Start();
  if (GetParam().withoutSendReceiveButton) window->CommandBars()->FindControl(client::msoControlButton, 5577, "")->Delete();
  const auto sync = std::make_shared<CSyncObj>();
  sync->SendNow(false);
  EXPECT_EQ(Client().SyncStarts(), 1);
  EXPECT_EQ(Client().Keystrokes(), GetParam().keystrokes);
  EXPECT_FALSE(sync->HasObject());
}

INSTANTIATE_TEST_SUITE_P(Generations, SyncPaths,
                         ::testing::Values(PathCase{"9.0.0.2711", false, {}}, PathCase{"9.0.0.2711", true, {"%{F5}"}},
                                           PathCase{"10.0.2627", false, {}}, PathCase{"11.0.6359", true, {}},
                                           PathCase{"16.0.17928.20114", false, {}}));

TEST_F(AddInTest, OnlyARunStartedToExitIsWatchedUntilItEnds) {
  S().OpenMainWindow();
  S().Start();
  Client().SetSyncFinishesLater(true);
  EndCounter listener;
  const auto sync = std::make_shared<CSyncObj>();
  sync->SetListener(&listener);

  sync->SendNow(false);
  EXPECT_FALSE(sync->HasObject());
  Client().FinishSync();
  EXPECT_EQ(listener.ends, 0) << "an unwatched run raises nothing";

  sync->SendNow(true);
  EXPECT_TRUE(sync->HasObject());
  sync->SendNow(true);
  EXPECT_TRUE(sync->HasObject()) << "a second start replaces the watched run";
  Client().RaiseSyncError(-5, "offline");
  EXPECT_TRUE(sync->HasObject()) << "errors do not end watching";
  EXPECT_TRUE(log_.LogContains("Error(custom) : CSyncObject.OnError\t-5, offline"));
  Client().FinishSync();
  EXPECT_FALSE(sync->HasObject());
  EXPECT_EQ(listener.ends, 1);

  NewSession({.version = "9.0.0.2711"});
  S().OpenMainWindow();
  S().Start();
  const auto oldest = std::make_shared<CSyncObj>();
  oldest->SendNow(true);
  EXPECT_FALSE(oldest->HasObject()) << "the oldest generation has no run to watch";
}

TEST_F(AddInTest, ReleasingAWatchingSyncObjRaisesNothing) {
  S().OpenMainWindow();
  S().Start();
  Client().SetSyncFinishesLater(true);
  EndCounter listener;
  auto sync = std::make_shared<CSyncObj>();
  sync->SetListener(&listener);
  sync->SendNow(true);
  sync.reset();
  Client().FinishSync();
  EXPECT_EQ(listener.ends, 0);
}

}  // namespace
}  // namespace qorvane::testing
