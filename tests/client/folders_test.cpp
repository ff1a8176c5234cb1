// Conformance: the default store's folders, their paths and parents, and
// creating sub-folders.
#include <algorithm>

#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

template <class F>
class FoldersTest : public ClientTest<F> {};
TYPED_TEST_SUITE(FoldersTest, ClientFixtures);

struct DefaultFolderCase {
  long folderType;
  const char* name;
  const char* path;
  long itemType;
};

constexpr DefaultFolderCase kDefaultFolders[] = {
    {client::olFolderInbox, "Inbox", "\\\\Mailbox\\Inbox", client::olMailItem},
    {client::olFolderOutbox, "Outbox", "\\\\Mailbox\\Outbox", client::olMailItem},
    {client::olFolderDrafts, "Drafts", "\\\\Mailbox\\Drafts", client::olMailItem},
    {olFolderSentMail, "Sent Items", "\\\\Mailbox\\Sent Items", client::olMailItem},
    {client::olFolderCalendar, "Calendar", "\\\\Mailbox\\Calendar", client::olAppointmentItem},
};

TYPED_TEST(FoldersTest, DefaultFoldersSitUnderTheStoreRoot) {
  std::vector<std::string> ids;
  for (const auto& c : kDefaultFolders) {
    SCOPED_TRACE(c.name);
    const auto folder = this->Folder(c.folderType);
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->Name(), c.name);
    EXPECT_EQ(folder->Class(), client::olFolder);
    EXPECT_EQ(folder->FolderPath(), c.path);
    EXPECT_EQ(folder->DefaultItemType(), c.itemType);
    EXPECT_EQ(folder->Parent()->Name(), "Mailbox");
    EXPECT_EQ(this->Folder(c.folderType)->EntryID(), folder->EntryID());
    ids.push_back(folder->EntryID());
  }
  std::sort(ids.begin(), ids.end());
  EXPECT_EQ(std::adjacent_find(ids.begin(), ids.end()), ids.end()) << "every folder has its own EntryID";
  EXPECT_EQ(ids.front().empty(), false);
}

TYPED_TEST(FoldersTest, StoreRootHasNoFolderAbove) {
  const auto root = this->Root();
  EXPECT_EQ(root->Name(), "Mailbox");
  EXPECT_EQ(root->Class(), client::olFolder);
  EXPECT_EQ(root->FolderPath(), "\\\\Mailbox");
  EXPECT_EQ(root->Parent(), nullptr);
}

TYPED_TEST(FoldersTest, RootListsTheDefaultFoldersInOrder) {
  const auto folders = this->Root()->Folders();
  ASSERT_EQ(folders->Count(), 5);
  for (long i = 1; i <= 5; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(folders->Item(i)->Name(), kDefaultFolders[i - 1].name);
  }
  for (const long bad : {0L, 6L, -1L}) EXPECT_NE(ErrorOf([&] { folders->Item(bad); }), 0) << bad;
}

TYPED_TEST(FoldersTest, UnknownDefaultFolderRaises) {
  EXPECT_NE(ErrorOf([&] { this->Folder(999); }), 0);
}

TYPED_TEST(FoldersTest, AddedFolderTakesTheItemTypeOfItsTypeFolder) {
  struct Case {
    const char* name;
    long type;
    long itemType;
  };
  const Case cases[] = {{"Qorvane", client::olFolderDrafts, client::olMailItem},
                        {"Mail Too", client::olFolderInbox, client::olMailItem},
                        {"Dates", client::olFolderCalendar, client::olAppointmentItem}};
  const auto folders = this->Root()->Folders();
  long count = folders->Count();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const auto added = folders->Add(c.name, c.type);
    EXPECT_EQ(folders->Count(), ++count);
    EXPECT_EQ(folders->Item(count)->EntryID(), added->EntryID()) << "appended in creation order";
    EXPECT_EQ(added->Name(), c.name);
    EXPECT_EQ(added->Class(), client::olFolder);
    EXPECT_EQ(added->DefaultItemType(), c.itemType);
    EXPECT_EQ(added->FolderPath(), std::string("\\\\Mailbox\\") + c.name);
    EXPECT_EQ(added->Parent()->EntryID(), this->Root()->EntryID());
    EXPECT_EQ(added->Items()->Count(), 0);
  }
}

TYPED_TEST(FoldersTest, NestedFolderPathNamesEveryLevel) {
  const auto sub = this->Inbox()->Folders()->Add("Projects", client::olFolderInbox);
  const auto subSub = sub->Folders()->Add("2025", client::olFolderInbox);
  EXPECT_EQ(subSub->FolderPath(), "\\\\Mailbox\\Inbox\\Projects\\2025");
  EXPECT_EQ(subSub->Parent()->Parent()->Name(), "Inbox");
}

TYPED_TEST(FoldersTest, DuplicateNameRaisesAndAddsNothing) {
  const auto folders = this->Root()->Folders();
  folders->Add("Qorvane", client::olFolderDrafts);
  const long count = folders->Count();
  for (const char* name : {"Qorvane", "QORVANE", "Inbox", "calendar"}) {
    SCOPED_TRACE(name);
    EXPECT_NE(ErrorOf([&] { folders->Add(name, client::olFolderDrafts); }), 0);
    EXPECT_EQ(folders->Count(), count);
  }
}

}  // namespace
}  // namespace client_conformance
