// Conformance: the default store's folders and paths, added folders, a
// folder's views and the navigation bar's shortcuts.
#include <tuple>

#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

template <class F>
class FoldersTest : public ClientTest<F> {
 protected:
  Ref<client::MAPIFolder> NewFolder() { return this->Root()->Folders()->Add("Qorvane", client::olFolderDrafts); }
  static std::vector<std::string> Names(const Ref<client::OutlookBarShortcuts>& shortcuts) {
    std::vector<std::string> names;
    for (long i = 1; i <= shortcuts->Count(); ++i) names.push_back(shortcuts->Item(i)->Name());
    return names;
  }
};
TYPED_TEST_SUITE(FoldersTest, ClientFixtures, FixtureNames);

TYPED_TEST(FoldersTest, DefaultAndAddedFoldersSitUnderTheStoreRoot) {
  const std::tuple<long, const char*, long> cases[] = {
      {client::olFolderInbox, "Inbox", client::olMailItem},   {client::olFolderOutbox, "Outbox", client::olMailItem},
      {client::olFolderDrafts, "Drafts", client::olMailItem}, {olFolderSentMail, "Sent Items", client::olMailItem},
      {client::olFolderCalendar, "Calendar", client::olAppointmentItem}};
  const auto root = this->Root();
  EXPECT_EQ(root->FolderPath(), "\\\\Mailbox");
  EXPECT_EQ(root->Parent(), nullptr);
  const auto folders = root->Folders();
  ASSERT_EQ(folders->Count(), 5);
  for (long i = 1; i <= 5; ++i) {
    const auto& [folderType, name, itemType] = cases[i - 1];
    SCOPED_TRACE(name);
    const auto folder = this->Folder(folderType);
    EXPECT_EQ(folder->Name(), name);
    EXPECT_EQ(folder->Class(), client::olFolder);
    EXPECT_EQ(folder->FolderPath(), std::string("\\\\Mailbox\\") + name);
    EXPECT_EQ(folder->DefaultItemType(), itemType);
    EXPECT_EQ(folder->Parent()->EntryID(), root->EntryID());
    EXPECT_EQ(folders->Item(i)->EntryID(), folder->EntryID()) << "the root lists them in this order";
  }
  EXPECT_NE(ErrorOf([&] { folders->Item(6); }), 0);
  EXPECT_NE(ErrorOf([&] { this->Folder(999); }), 0);

  // Added folders take their type folder's item type, come last, and take a name only once.
  const auto added = this->NewFolder();
  EXPECT_EQ(added->DefaultItemType(), client::olMailItem);
  EXPECT_EQ(folders->Add("Dates", client::olFolderCalendar)->DefaultItemType(), client::olAppointmentItem);
  EXPECT_EQ(folders->Item(6)->EntryID(), added->EntryID());
  const auto nested = this->Inbox()->Folders()->Add("Projects", client::olFolderInbox);
  EXPECT_EQ(nested->FolderPath(), "\\\\Mailbox\\Inbox\\Projects");
  for (const char* name : {"QORVANE", "calendar"}) {
    EXPECT_NE(ErrorOf([&] { folders->Add(name, client::olFolderDrafts); }), 0) << name;
  }
  EXPECT_EQ(folders->Count(), 7) << "a refused name adds nothing";
}

TYPED_TEST(FoldersTest, AddedTableViewHasTheTableXmlAndAUniqueName) {
  const auto views = this->NewFolder()->Views();
  const long before = views->Count();
  const auto view = views->Add("Qorvane View", client::olTableView, client::olViewSaveOptionThisFolderEveryone);
  const std::string xml = view->XML();
  for (const char* part : {"<view type=\"table\">", "<viewname>Qorvane View</viewname>",
                           "<prop>urn:schemas:httpmail:fromname</prop>", "<prop>urn:schemas:httpmail:subject</prop>"}) {
    EXPECT_NE(xml.find(part), std::string::npos) << part;
  }
  EXPECT_EQ(views->Item("Qorvane View")->Name(), "Qorvane View");
  EXPECT_NE(ErrorOf([&] { views->Add("Qorvane View", client::olTableView, 0); }), 0);
  EXPECT_EQ(views->Count(), before + 1);
  EXPECT_NE(ErrorOf([&] { views->Item("Qorvane"); }), 0) << "no view by that name";
  EXPECT_NE(ErrorOf([&] { this->Inbox()->Views()->Item("Qorvane View"); }), 0) << "every folder has its own views";

  const std::string text =
      "<?xml version=\"1.0\"?>\r\n<view type=\"table\"><viewname>Qorvane View</viewname>\r\n"
      "  <column><prop>urn:schemas:httpmail:displayto</prop><width>0</width></column></view>\n";
  view->XML(text);
  view->Save();
  view->Apply();
  EXPECT_EQ(this->Root()->Folders()->Item(6)->Views()->Item("Qorvane View")->XML(), text) << "read back as written";
}

TYPED_TEST(FoldersTest, ShortcutsAreAddedAtTheEndAndRemovedByPosition) {
  const auto pane = this->fixture.OpenExplorer(this->Inbox())->Panes()->Item("OutlookBar");
  ASSERT_TRUE(pane);
  EXPECT_EQ(pane->Class(), client::olOutlookBarPane);
  const auto group = pane->Groups()->Item("Shortcuts");
  ASSERT_TRUE(group);
  EXPECT_EQ(group->Class(), client::olOutlookBarGroup);
  const auto shortcuts = group->Shortcuts();
  auto names = this->Names(shortcuts);
  EXPECT_EQ(shortcuts->Add(this->NewFolder(), "Qorvane")->Class(), client::olOutlookBarShortcut);
  EXPECT_EQ(shortcuts->Item(shortcuts->Count())->Target()->FolderPath(), "\\\\Mailbox\\Qorvane");
  for (const char* name : {"one", "two"}) shortcuts->Add(this->Inbox(), name);
  names.insert(names.end(), {"Qorvane", "one", "two"});
  EXPECT_EQ(this->Names(shortcuts), names);
  for (const long index : {static_cast<long>(names.size()), 1L}) {
    shortcuts->Remove(index);
    names.erase(names.begin() + (index - 1));
    EXPECT_EQ(this->Names(shortcuts), names) << index;
  }
  const auto again =
      this->fixture.OpenExplorer(this->Inbox())->Panes()->Item("OutlookBar")->Groups()->Item("Shortcuts");
  EXPECT_EQ(this->Names(again->Shortcuts()), names) << "shortcuts belong to the profile, not the window";
  EXPECT_NE(ErrorOf([&] { shortcuts->Remove(0); }), 0);
}

}  // namespace
}  // namespace client_conformance
