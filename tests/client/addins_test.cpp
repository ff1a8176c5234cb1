// Conformance: what the client offers an add-in beyond its mail and windows:
// the COM add-ins list with the object each add-in published, keystrokes to
// the client's window, and the folder fields that filters and views use.
#include <tuple>

#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

template <class F>
class AddInsTest : public ClientTest<F> {};
TYPED_TEST_SUITE(AddInsTest, ClientFixtures, FixtureNames);

// An add-in of the client's own world that publishes itself and records
// what reaches it.
struct RecordingAddIn : client::AddInConnection, std::enable_shared_from_this<RecordingAddIn> {
  void OnConnection(const Ref<client::Application>&, long mode, const Ref<client::COMAddIn>& self) override {
    self->Object(shared_from_this());
    heard.push_back("connect " + std::to_string(mode));
  }
  void OnDisconnection(long mode) override { heard.push_back("disconnect " + std::to_string(mode)); }
  void OnAddInsUpdate() override { heard.push_back("update"); }
  void OnStartupComplete() override { heard.push_back("startup"); }
  void OnBeginShutdown() override { heard.push_back("shutdown"); }
  std::vector<std::string> heard;
};

TYPED_TEST(AddInsTest, TheListShowsEveryAddInAndWhatEachPublishedAnswersItsCalls) {
  this->fixture.ListAddIn("Other.AddIn", "Another add-in");
  const auto loaded = std::make_shared<RecordingAddIn>();
  this->fixture.ConnectAddIn("Mine.Connect", "Mine", loaded);
  const auto list = this->app->COMAddIns();
  ASSERT_EQ(list->Count(), 2);
  // ProgId, Description, loaded, published something.
  const std::tuple<const char*, const char*, bool, bool> entries[] = {{"Other.AddIn", "Another add-in", false, false},
                                                                      {"Mine.Connect", "Mine", true, true}};
  for (long i = 1; i <= 2; ++i) {
    const auto& [progId, description, connected, published] = entries[i - 1];
    const auto entry = list->Item(i);
    EXPECT_EQ(entry->ProgId(), progId);
    EXPECT_EQ(entry->Description(), description) << progId;
    EXPECT_EQ(entry->Connect(), connected) << progId;
    EXPECT_EQ(entry->Object() != nullptr, published) << progId;
  }
  list->Item(2)->Object()->OnStartupComplete();
  // What one entry published can be handed to another and still answers.
  const auto other = list->Item(1);
  other->Object(list->Item(2)->Object());
  other->Object()->OnBeginShutdown();
  other->Object(nullptr);
  EXPECT_EQ(other->Object(), nullptr);
  EXPECT_EQ(loaded->heard, (std::vector<std::string>{"connect 1", "startup", "shutdown"}));
  EXPECT_EQ(ErrorOf([&] { list->Item(3); }) != 0, true) << "past the end of the list";
}

struct SyncEvents : client::SyncObjectEvents {
  void SyncStart() override { heard.push_back("start"); }
  void SyncEnd() override { heard.push_back("end"); }
  std::vector<std::string> heard;
};

TYPED_TEST(AddInsTest, KeystrokesReachTheClientsWindowAndItsShortcutsWork) {
  const auto sync = this->session->SyncObjects()->Item(1);
  SyncEvents events;
  const auto subscription = sync->Advise(&events);
  // The keys, and whether they start Send/Receive (Alt+F9 on this version).
  const std::tuple<const char*, bool> cases[] = {{"%{F5}", false}, {"{F9}", false}, {"%{F9}", true}, {"ab~", false}};
  for (const auto& [keys, starts] : cases) {
    events.heard.clear();
    this->app->SendKeys(keys);
    this->fixture.Idle();
    EXPECT_EQ(events.heard, starts ? (std::vector<std::string>{"start", "end"}) : std::vector<std::string>{}) << keys;
  }
}

TYPED_TEST(AddInsTest, FolderFieldsAreAddedOnceFoundWithoutCaseAndDeleted) {
  const auto fields = this->Inbox()->UserDefinedProperties();
  const long before = fields->Count();
  const auto added = fields->Add("ScheduleTime", client::olDateTime);
  EXPECT_EQ(added->Name() + " " + std::to_string(added->Type()), "ScheduleTime 5");
  EXPECT_EQ(fields->Count(), before + 1);
  const auto found = fields->Find("scheduletime");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->Name(), "ScheduleTime");
  EXPECT_EQ(fields->Item(before + 1)->Name(), "ScheduleTime");
  EXPECT_EQ(ErrorOf([&] { fields->Add("SCHEDULETIME", client::olText); }), kDispatchException) << "taken";
  EXPECT_EQ(this->Folder(client::olFolderDrafts)->UserDefinedProperties()->Find("ScheduleTime"), nullptr)
      << "fields belong to their folder";
  found->Delete();
  EXPECT_EQ(fields->Count(), before);
  EXPECT_EQ(fields->Find("ScheduleTime"), nullptr);
}

TYPED_TEST(AddInsTest, ButtonsKnowTheirPlaceOnTheBarAndTakeAFace) {
  const auto window = this->fixture.OpenInspector(this->fixture.AddMail(this->Inbox(), "m", "x@example.com"));
  const auto standard = window->CommandBars()->Item("Standard");
  ASSERT_TRUE(standard);
  const auto send = standard->FindControl(0, 2617, "");
  ASSERT_TRUE(send);
  const long sendAt = send->Index();
  EXPECT_EQ(standard->Controls()->Item(sendAt)->Id(), 2617);
  const auto added = standard->Controls()->Add(client::msoControlButton, sendAt + 1, true);
  EXPECT_EQ(added->Index(), sendAt + 1) << "right after Send";
  EXPECT_EQ(send->Index(), sendAt) << "Send stays where it was";
  added->FaceId(2617);
  EXPECT_EQ(added->FaceId(), 2617);
}

}  // namespace
}  // namespace client_conformance
