// Conformance: the windows' command bars, FindControl, added buttons and
// their Click events.
#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

constexpr long kHelpMenu = 30010;

template <class F>
class CommandBarsTest : public ClientTest<F> {
 protected:
  Ref<client::CommandBars> ExplorerBars() { return this->fixture.OpenExplorer(this->Inbox())->CommandBars(); }
  // A temporary button at the end of the Help menu, tagged.
  Ref<client::CommandBarControl> AddHelpButton(const Ref<client::CommandBars>& bars, const std::string& tag) {
    const auto help = bars->Item("Menu Bar")->FindControl(client::msoControlPopup, kHelpMenu, "");
    const auto button = help->CommandBar()->Controls()->Add(client::msoControlButton, 0, true);
    button->Tag(tag);
    button->Caption(tag);
    return button;
  }
};
TYPED_TEST_SUITE(CommandBarsTest, ClientFixtures);

struct ClickLog : client::CommandBarButtonEvents {
  void Click(const Ref<client::CommandBarControl>& control, bool& cancelDefault) override {
    tags.push_back(control->Tag());
    cancelDefault = cancel;
  }
  std::vector<std::string> tags;
  bool cancel = false;
};

TYPED_TEST(CommandBarsTest, HelpMenuIsAPopupOnTheMenuBar) {
  const auto bars = this->ExplorerBars();
  const auto menuBar = bars->Item("Menu Bar");
  ASSERT_TRUE(menuBar);
  EXPECT_EQ(bars->Item("No Such Bar"), nullptr);
  for (const auto& found : {bars->FindControl(client::msoControlPopup, kHelpMenu, ""),
                            bars->FindControl(0, kHelpMenu, ""), menuBar->FindControl(0, kHelpMenu, "")}) {
    ASSERT_TRUE(found);
    EXPECT_EQ(found->Type(), client::msoControlPopup);
    EXPECT_EQ(found->Id(), kHelpMenu);
    ASSERT_TRUE(found->CommandBar());
    EXPECT_GT(found->CommandBar()->Controls()->Count(), 0);
  }
  EXPECT_EQ(bars->FindControl(client::msoControlButton, kHelpMenu, ""), nullptr) << "the type must match too";
}

TYPED_TEST(CommandBarsTest, AddedButtonsStandWhereTheyWereAdded) {
  const auto bars = this->ExplorerBars();
  const auto controls = bars->FindControl(0, kHelpMenu, "")->CommandBar()->Controls();
  const long before = controls->Count();
  const auto last = controls->Add(client::msoControlButton, 0, true);
  const auto first = controls->Add(client::msoControlButton, 1, true);
  ASSERT_EQ(controls->Count(), before + 2);
  last->Tag("last");
  first->Tag("first");
  EXPECT_EQ(controls->Item(1)->Tag(), "first");
  EXPECT_EQ(controls->Item(before + 2)->Tag(), "last");
  EXPECT_EQ(last->Type(), client::msoControlButton);
}

TYPED_TEST(CommandBarsTest, ButtonPropertiesReadBack) {
  const auto button = this->AddHelpButton(this->ExplorerBars(), "QorvaneOptions");
  button->Caption("Qorvane");
  button->Style(client::msoButtonIconAndCaption);
  button->BeginGroup(true);
  button->Visible(false);
  EXPECT_EQ(button->Caption(), "Qorvane");
  EXPECT_EQ(button->Tag(), "QorvaneOptions");
  EXPECT_EQ(button->Style(), client::msoButtonIconAndCaption);
  EXPECT_TRUE(button->BeginGroup());
  EXPECT_FALSE(button->Visible());
}

TYPED_TEST(CommandBarsTest, FindControlLooksInsidePopups) {
  const auto bars = this->ExplorerBars();
  this->AddHelpButton(bars, "QorvaneAbout");
  struct Case {
    long type;
    const char* tag;
    bool found;
  };
  const Case cases[] = {{client::msoControlButton, "QorvaneAbout", true},
                        {0, "QorvaneAbout", true},
                        {client::msoControlPopup, "QorvaneAbout", false},
                        {client::msoControlButton, "NoSuchTag", false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.type) + " " + c.tag);
    for (const auto& control :
         {bars->FindControl(c.type, 0, c.tag), bars->Item("Menu Bar")->FindControl(c.type, 0, c.tag)}) {
      EXPECT_EQ(control != nullptr, c.found);
      if (control) {
        EXPECT_EQ(control->Tag(), c.tag);
      }
    }
  }
}

TYPED_TEST(CommandBarsTest, ClickReachesTheButtonsSinks) {
  const auto button = this->AddHelpButton(this->ExplorerBars(), "clicked");
  ClickLog log;
  auto subscription = button->Advise(&log);
  this->fixture.Click(button);
  button->Execute();
  EXPECT_EQ(log.tags, (std::vector<std::string>{"clicked", "clicked"}));
  subscription.reset();
  this->fixture.Click(button);
  EXPECT_EQ(log.tags.size(), 2u) << "a released subscription hears nothing";
}

TYPED_TEST(CommandBarsTest, DeletedButtonIsGone) {
  const auto bars = this->ExplorerBars();
  const auto button = this->AddHelpButton(bars, "temporary");
  const auto controls = bars->FindControl(0, kHelpMenu, "")->CommandBar()->Controls();
  const long count = controls->Count();
  button->Delete();
  EXPECT_EQ(controls->Count(), count - 1);
  EXPECT_EQ(bars->FindControl(0, 0, "temporary"), nullptr);
}

TYPED_TEST(CommandBarsTest, WindowsHaveTheirOwnBars) {
  const auto inspectorBars = this->fixture.OpenInspector(this->fixture.AddMail(this->Inbox(), "m", "x@example.com"))
                                 ->CommandBars();
  EXPECT_TRUE(inspectorBars->Item("Standard"));
  const auto explorerBars = this->ExplorerBars();
  this->AddHelpButton(explorerBars, "explorer only");
  EXPECT_EQ(inspectorBars->FindControl(0, 0, "explorer only"), nullptr);
  const long count = explorerBars->Count();
  const auto added = explorerBars->Add("Qorvane", client::msoBarTop, true);
  EXPECT_EQ(added->Name(), "Qorvane");
  EXPECT_EQ(explorerBars->Count(), count + 1);
  EXPECT_EQ(explorerBars->Item("Qorvane")->Name(), "Qorvane");
}

}  // namespace
}  // namespace client_conformance
