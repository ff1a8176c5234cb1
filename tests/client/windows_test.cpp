// Conformance: explorers and inspectors, their collections, events and the
// active window.
#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

template <class F>
class WindowsTest : public ClientTest<F> {};
TYPED_TEST_SUITE(WindowsTest, ClientFixtures);

struct ExplorerLog : client::ExplorersEvents, client::ExplorerEvents {
  void NewExplorer(const Ref<client::Explorer>& explorer) override {
    events.push_back("new");
    opened.push_back(explorer);
  }
  void Close() override { events.push_back("close"); }
  std::vector<std::string> events;
  std::vector<Ref<client::Explorer>> opened;
};

struct InspectorLog : client::InspectorsEvents {
  void NewInspector(const Ref<client::Inspector>& inspector) override {
    subjects.push_back(inspector->CurrentItem()->Subject());
  }
  std::vector<std::string> subjects;
};

TYPED_TEST(WindowsTest, OpeningAndClosingExplorersRaisesTheirEvents) {
  ExplorerLog log;
  const auto explorers = this->app->Explorers();
  auto newSubscription = explorers->Advise(&log);
  EXPECT_EQ(explorers->Count(), 0);
  EXPECT_EQ(this->app->ActiveExplorer(), nullptr);

  const auto first = this->fixture.OpenExplorer(this->Inbox());
  const auto second = this->fixture.OpenExplorer(this->Folder(client::olFolderCalendar));
  EXPECT_EQ(log.events, (std::vector<std::string>{"new", "new"}));
  ASSERT_EQ(log.opened.size(), 2u);
  EXPECT_EQ(log.opened[0], first);
  EXPECT_EQ(explorers->Count(), 2);
  EXPECT_EQ(explorers->Item(1), first);
  EXPECT_EQ(this->app->ActiveExplorer(), second) << "the last opened is active";
  EXPECT_EQ(second->CurrentFolder()->Name(), "Calendar");

  auto closeSubscription = second->Advise(&log);
  this->fixture.CloseExplorer(second);
  EXPECT_EQ(log.events.back(), "close");
  EXPECT_EQ(explorers->Count(), 1);
  EXPECT_EQ(this->app->ActiveExplorer(), first);

  auto firstClose = first->Advise(&log);
  first->Close();
  EXPECT_EQ(log.events, (std::vector<std::string>{"new", "new", "close", "close"}));
  EXPECT_EQ(this->app->ActiveExplorer(), nullptr);

  newSubscription.reset();
  this->fixture.OpenExplorer(this->Inbox());
  EXPECT_EQ(log.events.size(), 4u) << "a released subscription hears nothing";
}

TYPED_TEST(WindowsTest, ExplorerShowsAFolderAndTheUsersSelection) {
  const auto inbox = this->Inbox();
  const auto a = this->fixture.AddMail(inbox, "a", "x@example.com");
  const auto b = this->fixture.AddMail(inbox, "b", "x@example.com");
  const auto explorer = this->fixture.OpenExplorer(inbox);
  EXPECT_EQ(explorer->Selection()->Count(), 0);
  this->fixture.Select(explorer, {b, a});
  const auto selection = explorer->Selection();
  ASSERT_EQ(selection->Count(), 2);
  EXPECT_EQ(selection->Item(1)->Subject(), "b");
  EXPECT_EQ(selection->Item(2)->Subject(), "a");

  const auto drafts = this->Folder(client::olFolderDrafts);
  explorer->CurrentFolder(drafts);
  EXPECT_EQ(explorer->CurrentFolder()->EntryID(), drafts->EntryID());
  const auto rect = explorer->Rect();
  EXPECT_GT(rect.Width, 0);
  EXPECT_GT(rect.Height, 0);
}

TYPED_TEST(WindowsTest, OpeningAnInspectorRaisesNewInspectorWithItsItem) {
  InspectorLog log;
  const auto inspectors = this->app->Inspectors();
  const auto subscription = inspectors->Advise(&log);
  const auto mail = this->fixture.AddMail(this->Inbox(), "shown", "x@example.com");
  const auto other = this->fixture.AddMail(this->Inbox(), "also shown", "x@example.com");
  EXPECT_EQ(this->app->ActiveInspector(), nullptr);

  const auto first = this->fixture.OpenInspector(mail);
  const auto second = this->fixture.OpenInspector(other);
  EXPECT_EQ(log.subjects, (std::vector<std::string>{"shown", "also shown"}));
  EXPECT_EQ(inspectors->Count(), 2);
  EXPECT_EQ(this->app->ActiveInspector(), second);
  EXPECT_EQ(first->CurrentItem()->EntryID(), mail->EntryID());
  EXPECT_EQ(first->EditorType(), client::olEditorWord);
  EXPECT_FALSE(first->IsWordMail());
  EXPECT_GT(first->Rect().Width, 0);

  this->fixture.CloseInspector(second);
  EXPECT_EQ(inspectors->Count(), 1);
  EXPECT_EQ(this->app->ActiveInspector(), first);
}

TYPED_TEST(WindowsTest, ClosingAnInspectorSavesOnlyWhenAsked) {
  struct Case {
    long saveMode;
    bool saved;
  };
  for (const auto& c : {Case{client::olSave, true}, Case{client::olDiscard, false}}) {
    SCOPED_TRACE(c.saveMode);
    const auto mail = this->app->CreateItem(client::olMailItem);
    mail->Subject("composed");
    const auto inspector = this->fixture.OpenInspector(mail);
    inspector->Close(c.saveMode);
    EXPECT_EQ(mail->EntryID().empty(), !c.saved);
    EXPECT_EQ(this->app->Inspectors()->Count(), 0);
    EXPECT_EQ(this->app->ActiveInspector(), nullptr);
  }
}

TYPED_TEST(WindowsTest, DisplayOpensAnInspectorAndCloseClosesIt) {
  InspectorLog log;
  const auto subscription = this->app->Inspectors()->Advise(&log);
  const auto mail = this->app->CreateItem(client::olMailItem)->AsMailItem();
  mail->Subject("displayed");
  mail->Display();
  EXPECT_EQ(log.subjects, std::vector<std::string>{"displayed"});
  mail->Close(client::olSave);
  EXPECT_EQ(this->app->Inspectors()->Count(), 0);
  EXPECT_NE(mail->EntryID(), "");
}

}  // namespace
}  // namespace client_conformance
