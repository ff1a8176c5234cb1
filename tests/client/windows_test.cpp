// Conformance: explorers and inspectors with their events and the active
// window; command bars, FindControl, added buttons and their Click events.
#include <tuple>

#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

constexpr long kHelpMenu = 30010;

// Windows are told apart by what they show: the binding hands out a new
// object for every call.
template <class F>
class WindowsTest : public ClientTest<F> {
 protected:
  static std::string ShownFolder(const Ref<client::Explorer>& explorer) {
    return explorer ? explorer->CurrentFolder()->Name() : "(none)";
  }
};
TYPED_TEST_SUITE(WindowsTest, ClientFixtures, FixtureNames);

struct WindowLog : client::ExplorersEvents, client::ExplorerEvents, client::InspectorsEvents,
                   client::CommandBarButtonEvents {
  void NewExplorer(const Ref<client::Explorer>& explorer) override {
    opened.push_back(explorer->CurrentFolder()->Name());
  }
  void Close() override { events.push_back("close"); }
  void NewInspector(const Ref<client::Inspector>& inspector) override {
    events.push_back("inspect " + inspector->CurrentItem()->Subject());
  }
  void Click(const Ref<client::CommandBarControl>& control, bool&) override { events.push_back(control->Tag()); }
  std::vector<std::string> events;
  std::vector<std::string> opened;  // the folders the new explorers show
};

TYPED_TEST(WindowsTest, ExplorersRaiseTheirEventsAndShowTheUsersSelection) {
  WindowLog log;
  const auto explorers = this->app->Explorers();
  auto subscription = explorers->Advise(&log);
  EXPECT_EQ(this->app->ActiveExplorer(), nullptr);
  const auto first = this->fixture.OpenExplorer(this->Inbox());
  const auto second = this->fixture.OpenExplorer(this->Folder(client::olFolderCalendar));
  EXPECT_EQ(log.opened, (std::vector<std::string>{"Inbox", "Calendar"}));
  EXPECT_EQ(this->ShownFolder(this->app->ActiveExplorer()), "Calendar") << "the last opened is active";
  EXPECT_EQ(second->CurrentFolder()->Name(), "Calendar");
  auto closeSubscription = second->Advise(&log);
  this->fixture.CloseExplorer(second);
  EXPECT_EQ(log.events, std::vector<std::string>{"close"});
  EXPECT_EQ(explorers->Count(), 1);
  EXPECT_EQ(this->ShownFolder(this->app->ActiveExplorer()), "Inbox");
  closeSubscription = first->Advise(&log);
  first->Close();
  EXPECT_EQ(log.events.size(), 2u);
  EXPECT_EQ(this->app->ActiveExplorer(), nullptr);

  const auto explorer = this->fixture.OpenExplorer(this->Inbox());
  const auto a = this->fixture.AddMail(this->Inbox(), "a", "x@example.com");
  const auto b = this->fixture.AddMail(this->Inbox(), "b", "x@example.com");
  EXPECT_EQ(explorer->Selection()->Count(), 0);
  this->fixture.Select(explorer, {b, a});
  EXPECT_EQ(this->Subjects(explorer->Selection()), (std::vector<std::string>{"b", "a"}));
}

TYPED_TEST(WindowsTest, InspectorsRaiseNewInspectorAndTheLastOpenIsActive) {
  WindowLog log;
  const auto inspectors = this->app->Inspectors();
  const auto subscription = inspectors->Advise(&log);
  const auto mail = this->fixture.AddMail(this->Inbox(), "shown", "x@example.com");
  EXPECT_EQ(this->app->ActiveInspector(), nullptr);
  const auto first = this->fixture.OpenInspector(mail);
  const auto second = this->fixture.OpenInspector(this->fixture.AddMail(this->Inbox(), "also", "x@example.com"));
  EXPECT_EQ(log.events, (std::vector<std::string>{"inspect shown", "inspect also"}));
  EXPECT_EQ(this->app->ActiveInspector()->CurrentItem()->Subject(), "also");
  EXPECT_EQ(first->CurrentItem()->EntryID(), mail->EntryID());
  this->fixture.CloseInspector(second);
  EXPECT_EQ(this->app->ActiveInspector()->CurrentItem()->Subject(), "shown");
  this->fixture.CloseInspector(first);

  const auto composed = this->app->CreateItem(client::olMailItem)->AsMailItem();
  composed->Subject("composed");
  composed->Display();
  EXPECT_EQ(log.events.back(), "inspect composed") << "Display opens one";
  ASSERT_TRUE(this->app->ActiveInspector());
  this->app->ActiveInspector()->Close(client::olDiscard);
  EXPECT_EQ(composed->EntryID(), "") << "closed without saving";
  EXPECT_EQ(inspectors->Count(), 0);
  EXPECT_EQ(this->app->ActiveInspector(), nullptr);
}

TYPED_TEST(WindowsTest, FindControlLooksInsidePopupsAndAddedButtonsHearClicks) {
  const auto bars = this->fixture.OpenExplorer(this->Inbox())->CommandBars();
  const auto menuBar = bars->Item("Menu Bar");
  ASSERT_TRUE(menuBar);
  for (const auto& help : {bars->FindControl(client::msoControlPopup, kHelpMenu, ""),
                           bars->FindControl(0, kHelpMenu, ""), menuBar->FindControl(0, kHelpMenu, "")}) {
    ASSERT_TRUE(help);
    EXPECT_EQ(help->Type(), client::msoControlPopup);
    EXPECT_EQ(help->Id(), kHelpMenu);
  }
  EXPECT_EQ(bars->FindControl(client::msoControlButton, kHelpMenu, ""), nullptr) << "the type must match";
  const auto controls = menuBar->FindControl(client::msoControlPopup, kHelpMenu, "")->CommandBar()->Controls();
  const long count = controls->Count();
  const auto button = controls->Add(client::msoControlButton, 0, true);
  button->Tag("QorvaneAbout");
  controls->Add(client::msoControlButton, 1, true)->Tag("first");
  EXPECT_EQ(controls->Item(1)->Tag() + " " + controls->Item(count + 2)->Tag(), "first QorvaneAbout");
  // Type, tag, and whether the bars and the menu bar find it inside the Help menu.
  const std::tuple<long, const char*, bool> cases[] = {{client::msoControlButton, "QorvaneAbout", true},
                                                       {0, "QorvaneAbout", true},
                                                       {client::msoControlPopup, "QorvaneAbout", false},
                                                       {client::msoControlButton, "NoSuchTag", false}};
  for (const auto& [type, tag, found] : cases) {
    for (const auto& control : {bars->FindControl(type, 0, tag), menuBar->FindControl(type, 0, tag)}) {
      EXPECT_EQ(control ? control->Tag() : "(none)", found ? tag : "(none)") << type;
    }
  }
  const auto mail = this->fixture.AddMail(this->Inbox(), "m", "x@example.com");
  EXPECT_EQ(this->fixture.OpenInspector(mail)->CommandBars()->FindControl(0, 0, "QorvaneAbout"), nullptr)
      << "every window has its own bars";

  WindowLog log;
  auto subscription = button->Advise(&log);
  this->fixture.Click(button);
  button->Execute();
  EXPECT_EQ(log.events, (std::vector<std::string>{"QorvaneAbout", "QorvaneAbout"}));
  subscription.reset();
  this->fixture.Click(button);
  EXPECT_EQ(log.events.size(), 2u) << "a released subscription hears nothing";
  button->Delete();
  EXPECT_EQ(controls->Count(), count + 1);
  EXPECT_EQ(bars->FindControl(0, 0, "QorvaneAbout"), nullptr);
}

}  // namespace
}  // namespace client_conformance
