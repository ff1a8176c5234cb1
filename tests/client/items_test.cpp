// Conformance: items' identity (EntryID), their order in a folder, and what
// Save, Copy, Move and Delete do to them and to the objects that name them.
#include <functional>

#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

template <class F>
class ItemsTest : public ClientTest<F> {};
TYPED_TEST_SUITE(ItemsTest, ClientFixtures);

TYPED_TEST(ItemsTest, NewItemHasNoEntryIdUntilSavedInItsFolder) {
  struct Case {
    long itemType;
    long itemClass;
    long homeFolder;
  };
  const Case cases[] = {{client::olMailItem, client::olMail, client::olFolderDrafts},
                        {client::olAppointmentItem, client::olAppointment, client::olFolderCalendar}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.itemType);
    const auto home = this->Folder(c.homeFolder);
    const long before = home->Items()->Count();
    const auto item = this->app->CreateItem(c.itemType);
    EXPECT_EQ(item->Class(), c.itemClass);
    EXPECT_EQ(item->EntryID(), "");
    EXPECT_EQ(home->Items()->Count(), before) << "not stored before Save";
    item->Subject("saved " + std::to_string(c.itemType));
    item->Save();
    const std::string id = item->EntryID();
    EXPECT_NE(id, "");
    item->Save();
    EXPECT_EQ(item->EntryID(), id) << "a second Save keeps the id";
    EXPECT_EQ(item->Parent()->EntryID(), home->EntryID());
    ASSERT_EQ(home->Items()->Count(), before + 1);
    EXPECT_EQ(home->Items()->Item(before + 1)->EntryID(), id);
  }
}

TYPED_TEST(ItemsTest, TypedViewsFollowTheClass) {
  const auto mail = this->app->CreateItem(client::olMailItem);
  const auto appointment = this->app->CreateItem(client::olAppointmentItem);
  EXPECT_TRUE(mail->AsMailItem());
  EXPECT_FALSE(mail->AsAppointmentItem());
  EXPECT_TRUE(appointment->AsAppointmentItem());
  EXPECT_FALSE(appointment->AsMailItem());
}

TYPED_TEST(ItemsTest, FolderListsItemsInInsertionOrder) {
  const auto inbox = this->Inbox();
  for (const char* subject : {"c", "a", "b"}) this->fixture.AddMail(inbox, subject, "x@example.com");
  const auto items = inbox->Items();
  EXPECT_EQ(this->Subjects(items), (std::vector<std::string>{"c", "a", "b"}));
  for (const long bad : {0L, 4L}) EXPECT_NE(ErrorOf([&] { items->Item(bad); }), 0) << bad;
}

TYPED_TEST(ItemsTest, ItemsOfAFolderFollowLaterChanges) {
  const auto inbox = this->Inbox();
  const auto items = inbox->Items();
  this->fixture.AddMail(inbox, "first", "x@example.com");
  EXPECT_EQ(items->Count(), 1);
  this->fixture.AddMail(inbox, "second", "x@example.com");
  EXPECT_EQ(this->Subjects(items), (std::vector<std::string>{"first", "second"}));
}

TYPED_TEST(ItemsTest, CopyIsASavedTwinInTheSameFolder) {
  const auto inbox = this->Inbox();
  const auto mail = this->fixture.AddMail(inbox, "original", "a@example.com; b@example.com");
  mail->Body("body text");
  mail->UserProperties()->Add("ScheduleTime", client::olDateTime)->Value(qorvane::DateValue{45719.5});
  mail->Save();

  const auto copy = mail->Copy()->AsMailItem();
  ASSERT_TRUE(copy);
  EXPECT_NE(copy->EntryID(), "");
  EXPECT_NE(copy->EntryID(), mail->EntryID());
  EXPECT_EQ(copy->Parent()->EntryID(), inbox->EntryID());
  EXPECT_EQ(copy->Subject(), "original");
  EXPECT_EQ(copy->Body(), "body text");
  EXPECT_EQ(copy->To(), "a@example.com; b@example.com");
  const auto property = copy->UserProperties()->Find("ScheduleTime");
  ASSERT_TRUE(property);
  EXPECT_EQ(property->Value().AsDate(), 45719.5);
  EXPECT_EQ(this->Subjects(inbox->Items()), (std::vector<std::string>{"original", "original"}));

  // The two are separate items from now on.
  copy->Subject("changed");
  property->Value(qorvane::DateValue{45720.0});
  EXPECT_EQ(mail->Subject(), "original");
  EXPECT_EQ(mail->UserProperties()->Find("ScheduleTime")->Value().AsDate(), 45719.5);
}

TYPED_TEST(ItemsTest, MoveReturnsTheItemInItsNewFolderAndRetiresTheOldObject) {
  const auto inbox = this->Inbox();
  const auto outbox = this->Folder(client::olFolderOutbox);
  const auto mail = this->fixture.AddMail(inbox, "moving", "a@example.com");
  this->fixture.AddMail(inbox, "staying", "a@example.com");

  const auto moved = mail->Move(outbox);
  ASSERT_TRUE(moved);
  EXPECT_EQ(moved->Subject(), "moving");
  EXPECT_NE(moved->EntryID(), "");
  EXPECT_EQ(moved->Parent()->EntryID(), outbox->EntryID());
  EXPECT_EQ(this->Subjects(inbox->Items()), (std::vector<std::string>{"staying"}));
  EXPECT_EQ(this->Subjects(outbox->Items()), (std::vector<std::string>{"moving"}));

  const std::pair<const char*, std::function<void()>> staleCalls[] = {
      {"Subject", [&] { mail->Subject(); }},
      {"Subject =", [&] { mail->Subject("x"); }},
      {"EntryID", [&] { mail->EntryID(); }},
      {"To", [&] { mail->To(); }},
      {"UserProperties", [&] { mail->UserProperties(); }},
      {"Attachments", [&] { mail->Attachments(); }},
      {"Save", [&] { mail->Save(); }},
      {"Copy", [&] { mail->Copy(); }},
      {"Move", [&] { mail->Move(inbox); }},
      {"Delete", [&] { mail->Delete(); }},
  };
  for (const auto& [name, call] : staleCalls) EXPECT_EQ(ErrorOf(call), kMovedOrDeleted) << name;
  EXPECT_EQ(outbox->Items()->Count(), 1) << "nothing the stale object tried took effect";
}

TYPED_TEST(ItemsTest, PropertiesTakenBeforeAMoveRetireWithTheItem) {
  const auto mail = this->fixture.AddMail(this->Inbox(), "moving", "a@example.com");
  const auto properties = mail->UserProperties();
  const auto property = properties->Add("MoveToQorvane", client::olText);
  const auto moved = mail->Move(this->Folder(client::olFolderDrafts));
  EXPECT_EQ(ErrorOf([&] { properties->Count(); }), kMovedOrDeleted);
  EXPECT_EQ(ErrorOf([&] { property->Value(); }), kMovedOrDeleted);
  EXPECT_TRUE(moved->UserProperties()->Find("MoveToQorvane")) << "the moved item keeps its properties";
}

TYPED_TEST(ItemsTest, DeleteRemovesTheItem) {
  const auto inbox = this->Inbox();
  const auto doomed = this->fixture.AddMail(inbox, "doomed", "a@example.com");
  this->fixture.AddMail(inbox, "kept", "a@example.com");
  doomed->Delete();
  EXPECT_EQ(this->Subjects(inbox->Items()), (std::vector<std::string>{"kept"}));
  EXPECT_EQ(ErrorOf([&] { doomed->Subject(); }), kMovedOrDeleted);
}

}  // namespace
}  // namespace client_conformance
