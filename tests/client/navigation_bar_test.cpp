// Conformance: the navigation bar's pane, its "Shortcuts" group, and adding
// and removing shortcuts.
#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

template <class F>
class NavigationBarTest : public ClientTest<F> {
 protected:
  Ref<client::OutlookBarShortcuts> Shortcuts(const Ref<client::Explorer>& explorer) {
    const auto pane = explorer->Panes()->Item("OutlookBar");
    return pane->Groups()->Item("Shortcuts")->Shortcuts();
  }
  std::vector<std::string> Names(const Ref<client::OutlookBarShortcuts>& shortcuts) {
    std::vector<std::string> names;
    for (long i = 1; i <= shortcuts->Count(); ++i) names.push_back(shortcuts->Item(i)->Name());
    return names;
  }
};
TYPED_TEST_SUITE(NavigationBarTest, ClientFixtures);

TYPED_TEST(NavigationBarTest, PaneGroupAndShortcutsHaveTheirClasses) {
  const auto explorer = this->fixture.OpenExplorer(this->Inbox());
  const auto pane = explorer->Panes()->Item("OutlookBar");
  ASSERT_TRUE(pane);
  EXPECT_EQ(pane->Class(), client::olOutlookBarPane);
  EXPECT_EQ(explorer->Panes()->Item("NoSuchPane"), nullptr);
  const auto group = pane->Groups()->Item("Shortcuts");
  ASSERT_TRUE(group);
  EXPECT_EQ(group->Class(), client::olOutlookBarGroup);
  EXPECT_EQ(group->Name(), "Shortcuts");
  EXPECT_EQ(pane->Groups()->Item("No Such Group"), nullptr);
  const auto shortcuts = group->Shortcuts();
  ASSERT_GT(shortcuts->Count(), 0);
  for (long i = 1; i <= shortcuts->Count(); ++i) EXPECT_EQ(shortcuts->Item(i)->Class(), client::olOutlookBarShortcut);
}

TYPED_TEST(NavigationBarTest, AddAppendsAShortcutToTheFolder) {
  const auto folder = this->Root()->Folders()->Add("Qorvane", client::olFolderDrafts);
  const auto shortcuts = this->Shortcuts(this->fixture.OpenExplorer(this->Inbox()));
  const auto before = this->Names(shortcuts);
  const auto added = shortcuts->Add(folder, "Qorvane");
  EXPECT_EQ(added->Name(), "Qorvane");
  EXPECT_EQ(added->Target()->EntryID(), folder->EntryID());
  auto expected = before;
  expected.push_back("Qorvane");
  EXPECT_EQ(this->Names(shortcuts), expected);
  EXPECT_EQ(shortcuts->Item(shortcuts->Count())->Target()->FolderPath(), "\\\\Mailbox\\Qorvane");
}

TYPED_TEST(NavigationBarTest, RemoveTakesOutTheNthShortcut) {
  const auto shortcuts = this->Shortcuts(this->fixture.OpenExplorer(this->Inbox()));
  for (const char* name : {"one", "two", "three"}) shortcuts->Add(this->Inbox(), name);
  const long count = shortcuts->Count();
  struct Case {
    const char* name;
    long index;  // 0: the last
  };
  for (const auto& c : {Case{"last", 0}, Case{"first", 1}}) {
    SCOPED_TRACE(c.name);
    auto names = this->Names(shortcuts);
    const long index = c.index == 0 ? shortcuts->Count() : c.index;
    shortcuts->Remove(index);
    names.erase(names.begin() + (index - 1));
    EXPECT_EQ(this->Names(shortcuts), names);
  }
  EXPECT_EQ(shortcuts->Count(), count - 2);
  for (const long bad : {0L, count}) EXPECT_NE(ErrorOf([&] { shortcuts->Remove(bad); }), 0) << bad;
}

TYPED_TEST(NavigationBarTest, ShortcutsBelongToTheProfileNotTheWindow) {
  const auto first = this->Shortcuts(this->fixture.OpenExplorer(this->Inbox()));
  first->Add(this->Inbox(), "shared");
  const auto second = this->Shortcuts(this->fixture.OpenExplorer(this->Inbox()));
  EXPECT_EQ(this->Names(second), this->Names(first));
}

}  // namespace
}  // namespace client_conformance
