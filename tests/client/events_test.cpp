// Conformance: the events the add-in listens to beyond the windows' own:
// ItemSend with its Cancel, a Send/Receive run's events with their
// arguments, and the Send/Receive button whose default a click handler can
// cancel; also the window and control properties the add-in reads and sets.
#include <tuple>

#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

constexpr long kSendReceiveButton = 5577;

template <class F>
class EventsTest : public ClientTest<F> {};
TYPED_TEST_SUITE(EventsTest, ClientFixtures, FixtureNames);

struct SendLog : client::ApplicationEvents {
  void ItemSend(const Ref<client::Item>& item, bool& cancel) override {
    const std::string subject = item->Subject();
    heard.push_back(subject);
    cancel = subject.starts_with("keep");
  }
  std::vector<std::string> heard;
};

TYPED_TEST(EventsTest, ItemSendHearsEveryUserSendAndItsCancelKeepsTheMail) {
  SendLog log;
  auto subscription = this->app->Advise(&log);
  const auto outbox = this->Folder(client::olFolderOutbox);
  // The subject, and whether the mail goes out.
  const std::tuple<const char*, bool> cases[] = {{"keep this", false}, {"go now", true}, {"keep that", false}};
  for (const auto& [subject, sent] : cases) {
    const auto mail = this->fixture.AddMail(outbox, subject, "a@example.com");
    EXPECT_EQ(this->fixture.SendFromUser(mail), sent) << subject;
  }
  EXPECT_EQ(log.heard, (std::vector<std::string>{"keep this", "go now", "keep that"}));
  EXPECT_EQ(this->Subjects(outbox->Items()), (std::vector<std::string>{"keep this", "keep that"}));
  EXPECT_EQ(this->Subjects(this->Folder(olFolderSentMail)->Items()), std::vector<std::string>{"go now"});
  subscription.reset();
  EXPECT_TRUE(this->fixture.SendFromUser(this->fixture.AddMail(outbox, "keep unheard", "a@example.com")))
      << "a released subscription cancels nothing";
  EXPECT_EQ(log.heard.size(), 3u);
}

struct SyncLog : client::SyncObjectEvents, client::CommandBarButtonEvents {
  void SyncStart() override { events.push_back("start"); }
  void Progress(long state, const std::string& description, long value, long max) override {
    events.push_back("progress " + std::to_string(state) + " " + description + " " + std::to_string(value) + "/" +
                     std::to_string(max));
  }
  void OnError(long code, const std::string& description) override {
    events.push_back("error " + std::to_string(code) + " " + description);
  }
  void SyncEnd() override { events.push_back("end"); }
  void Click(const Ref<client::CommandBarControl>& control, bool& cancelDefault) override {
    events.push_back("click " + std::to_string(control->Id()));
    cancelDefault = cancelClicks;
  }
  std::vector<std::string> events;
  bool cancelClicks = false;
};

TYPED_TEST(EventsTest, SendReceiveRunsRaiseTheirEventsAndTheButtonsDefaultCanBeCancelled) {
  const auto syncObjects = this->session->SyncObjects();
  ASSERT_EQ(syncObjects->Count(), 1);
  const auto sync = syncObjects->Item(1);
  EXPECT_EQ(sync->Name(), "All Accounts");
  SyncLog log;
  const auto syncSubscription = sync->Advise(&log);
  const std::vector<std::string> run = {"start", "progress 1 Sending and receiving 0/1", "progress 0 Completed 1/1",
                                        "end"};
  sync->Start();
  EXPECT_EQ(log.events, run);
  this->fixture.RaiseSyncError(-2147219963, "The server is unavailable.");
  EXPECT_EQ(log.events.back(), "error -2147219963 The server is unavailable.");

  const auto button = this->fixture.OpenExplorer(this->Inbox())
                          ->CommandBars()
                          ->FindControl(client::msoControlButton, kSendReceiveButton, "");
  ASSERT_TRUE(button);
  const auto clickSubscription = button->Advise(&log);
  // Whether the click handler cancels, and what the click then does.
  const std::tuple<bool, std::vector<std::string>> clicks[] = {
      {true, {"click 5577"}}, {false, {"click 5577", "start", run[1], run[2], "end"}}};
  for (const auto& [cancel, expected] : clicks) {
    log.events.clear();
    log.cancelClicks = cancel;
    button->Execute();
    EXPECT_EQ(log.events, expected) << (cancel ? "cancelled" : "not cancelled");
  }
}

TYPED_TEST(EventsTest, WindowsAndControlsKeepWhatTheAddInSets) {
  const auto explorer = this->fixture.OpenExplorer(this->Inbox());
  explorer->CurrentFolder(this->Folder(client::olFolderDrafts));
  EXPECT_EQ(explorer->CurrentFolder()->FolderPath(), "\\\\Mailbox\\Drafts");
  const auto rect = explorer->Rect();
  EXPECT_GT(rect.Width, 0);
  EXPECT_GT(rect.Height, 0);
  const auto inspector = this->fixture.OpenInspector(this->fixture.AddMail(this->Inbox(), "m", "x@example.com"));
  EXPECT_EQ(inspector->EditorType(), client::olEditorWord);
  EXPECT_FALSE(inspector->IsWordMail());
  EXPECT_GT(inspector->Rect().Width, 0);

  const auto bars = inspector->CommandBars();
  const long barCount = bars->Count();
  const auto bar = bars->Add("Qorvane", client::msoBarTop, true);
  EXPECT_EQ(bars->Count(), barCount + 1);
  EXPECT_EQ(bars->Item("Qorvane")->Name(), "Qorvane");
  EXPECT_EQ(bars->Item("No such bar"), nullptr);
  bar->Visible(false);
  EXPECT_FALSE(bar->Visible());
  const auto button = bar->Controls()->Add(client::msoControlButton, 0, true);
  button->Caption("&Qorvane");
  button->Tag("KelmoraQorvane");
  button->Style(client::msoButtonIconAndCaption);
  button->BeginGroup(true);
  button->Visible(false);
  const auto found = bars->FindControl(client::msoControlButton, 0, "KelmoraQorvane");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->Caption() + " " + found->Tag(), "&Qorvane KelmoraQorvane");
  EXPECT_EQ(found->Style(), client::msoButtonIconAndCaption);
  EXPECT_TRUE(found->BeginGroup());
  EXPECT_FALSE(found->Visible());
  EXPECT_EQ(found->CommandBar(), nullptr) << "a button has no bar of its own";
}

TYPED_TEST(EventsTest, SortOrdersAFolderAndRestrictKeepsTheSortedOrder) {
  for (const char* subject : {"b", "D", "a", "c"}) this->fixture.AddMail(this->Inbox(), subject, "x@example.com");
  // The sort and the subjects in its order.
  const std::tuple<const char*, bool, std::vector<std::string>> cases[] = {
      {"[Subject]", false, {"a", "b", "c", "D"}}, {"[Subject]", true, {"D", "c", "b", "a"}}};
  for (const auto& [property, descending, subjects] : cases) {
    const auto items = this->Inbox()->Items();
    items->Sort(property, descending);
    EXPECT_EQ(this->Subjects(items), subjects) << descending;
    auto expected = subjects;
    std::erase(expected, "c");
    EXPECT_EQ(this->Subjects(items->Restrict("[Subject] <> 'c'")), expected) << descending;
  }
  EXPECT_EQ(ErrorOf([&] { this->Inbox()->Items()->Sort("[NoSuchField]", false); }), kDispatchException);
}

}  // namespace
}  // namespace client_conformance
