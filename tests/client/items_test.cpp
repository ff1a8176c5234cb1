// Conformance: items' EntryIDs and order; what Copy, Move and Delete do to
// them and to the objects naming them; typed user properties; attachments;
// Restrict and Find with the DASL and Jet filters the add-in writes; sending
// through the safe-mail library.
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <tuple>

#include "base/ole_date.h"
#include "platform/time_zone.h"
#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

namespace fs = std::filesystem;
using qorvane::DateValue;
using qorvane::Variant;
using Kind = Variant::Kind;

template <class F>
class ItemsTest : public ClientTest<F> {
 protected:
  void TearDown() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  Ref<client::MailItem> Mail(const std::string& subject) {
    return this->fixture.AddMail(this->Inbox(), subject, "a@example.com");
  }
  // Inbox: a (marked, 09:00), b (10:00), c (marked, 09:30), d, e (marked, 10:00) on 2025-03-03.
  void AddScheduledMails() {
    const std::tuple<const char*, bool, std::optional<double>> mails[] = {
        {"a", true, 9.0}, {"b", false, 10.0}, {"c", true, 9.5}, {"d", false, {}}, {"e", true, 10.0}};
    for (const auto& [subject, marked, hour] : mails) {
      const auto item = this->Mail(subject);
      if (marked) item->UserProperties()->Add("MoveToQorvane", client::olText)->Value("1");
      if (hour) item->UserProperties()->Add("ScheduleTime", client::olDateTime)->Value(DateValue{45719.0 + *hour / 24});
      item->Save();
    }
  }
  Ref<client::SafeMailItem> SafeItemFor(const Ref<client::MailItem>& mail) {
    auto safe = client::CurrentSafeMailFactory().CreateSafeMailItem();
    safe->Item(mail);
    return safe;
  }
  // A file in the test's own temporary folder.
  std::string File(const std::string& name) {
    fs::create_directories(folder_);
    std::ofstream(folder_ / name) << "content of " << name;
    return (folder_ / name).string();
  }

  const fs::path folder_ = fs::temp_directory_path() / ("qorvane-attach-" + std::to_string(std::random_device()()));
};
TYPED_TEST_SUITE(ItemsTest, ClientFixtures, FixtureNames);

TYPED_TEST(ItemsTest, NewItemHasNoEntryIdUntilSavedInItsFolder) {
  for (const auto& [itemType, itemClass, home] :
       {std::tuple{client::olMailItem, client::olMail, this->Folder(client::olFolderDrafts)},
        std::tuple{client::olAppointmentItem, client::olAppointment, this->Folder(client::olFolderCalendar)}}) {
    SCOPED_TRACE(itemType);
    const auto item = this->app->CreateItem(itemType);
    EXPECT_EQ(item->Class(), itemClass);
    EXPECT_EQ(item->EntryID(), "");
    EXPECT_EQ(home->Items()->Count(), 0) << "not stored before Save";
    item->Save();
    const std::string id = item->EntryID();
    EXPECT_NE(id, "");
    item->Save();
    EXPECT_EQ(item->EntryID(), id) << "a second Save keeps the id";
    ASSERT_EQ(home->Items()->Count(), 1);
    EXPECT_EQ(home->Items()->Item(1)->EntryID(), id);
  }
}

TYPED_TEST(ItemsTest, FolderListsItemsInInsertionOrderAndFollowsChanges) {
  const auto items = this->Inbox()->Items();
  for (const char* subject : {"c", "a", "b"}) this->Mail(subject);
  EXPECT_EQ(this->Subjects(items), (std::vector<std::string>{"c", "a", "b"})) << "taken before the adds";
  for (const long bad : {0L, 4L}) EXPECT_NE(ErrorOf([&] { items->Item(bad); }), 0) << bad;
}

TYPED_TEST(ItemsTest, CopyIsASeparateTwinAndMoveReturnsTheItemAndRetiresTheOldObjects) {
  const auto outbox = this->Folder(client::olFolderOutbox);
  const auto mail = this->fixture.AddMail(this->Inbox(), "original", "a@example.com; b@example.com");
  mail->Body("body text");
  const auto properties = mail->UserProperties();
  const auto property = properties->Add("ScheduleTime", client::olDateTime);
  property->Value(DateValue{45719.5});
  mail->Attachments()->Add(this->File("a.txt"), "a.txt");
  mail->Save();

  const auto copy = mail->Copy()->AsMailItem();
  ASSERT_TRUE(copy);
  EXPECT_NE(copy->EntryID(), "");
  EXPECT_NE(copy->EntryID(), mail->EntryID());
  EXPECT_EQ(copy->Parent()->EntryID(), this->Inbox()->EntryID());
  EXPECT_EQ(copy->Subject() + "|" + copy->Body() + "|" + copy->To(), "original|body text|a@example.com; b@example.com");
  EXPECT_EQ(copy->Attachments()->Count(), 1);
  const auto copied = copy->UserProperties()->Find("ScheduleTime");
  ASSERT_TRUE(copied);
  EXPECT_EQ(copied->Value().AsDate(), 45719.5);
  copy->Subject("copy");
  copied->Value(DateValue{45720.0});
  EXPECT_EQ(mail->Subject(), "original") << "the two are separate";
  EXPECT_EQ(property->Value().AsDate(), 45719.5);

  const auto moved = mail->Move(outbox);
  ASSERT_TRUE(moved);
  EXPECT_EQ(moved->Subject(), "original");
  EXPECT_NE(moved->EntryID(), "");
  EXPECT_EQ(moved->Parent()->EntryID(), outbox->EntryID());
  EXPECT_TRUE(moved->UserProperties()->Find("ScheduleTime"));
  EXPECT_EQ(moved->AsMailItem()->Attachments()->Count(), 1);
  EXPECT_EQ(this->Subjects(this->Inbox()->Items()), (std::vector<std::string>{"copy"}));
  EXPECT_EQ(this->Subjects(outbox->Items()), (std::vector<std::string>{"original"}));
  const std::pair<const char*, std::function<void()>> staleCalls[] = {
      {"Subject", [&] { mail->Subject(); }},         {"Subject =", [&] { mail->Subject("x"); }},
      {"EntryID", [&] { mail->EntryID(); }},         {"To", [&] { mail->To(); }},
      {"Attachments", [&] { mail->Attachments(); }}, {"UserProperties", [&] { mail->UserProperties(); }},
      {"Save", [&] { mail->Save(); }},               {"Copy", [&] { mail->Copy(); }},
      {"Move", [&] { mail->Move(outbox); }},         {"Delete", [&] { mail->Delete(); }},
      {"properties taken before", [&] { properties->Count(); }}, {"a property", [&] { property->Value(); }}};
  for (const auto& [name, call] : staleCalls) EXPECT_EQ(ErrorOf(call), kMovedOrDeleted) << name;
  EXPECT_EQ(outbox->Items()->Count(), 1) << "nothing the stale object tried took effect";
  moved->Delete();
  EXPECT_EQ(outbox->Items()->Count(), 0);
  EXPECT_EQ(ErrorOf([&] { moved->Subject(); }), kMovedOrDeleted) << "Delete retires the object too";
}

// Same kind and value; no case gives or expects a Long.
bool SameValue(const Variant& a, const Variant& b) {
  if (a.GetKind() != b.GetKind()) return false;
  switch (a.GetKind()) {
    case Kind::Bool: return a.AsBool() == b.AsBool();
    case Kind::Double: return a.AsDouble() == b.AsDouble();
    case Kind::Date: return std::abs(a.AsDate() - b.AsDate()) < 1e-9;
    case Kind::String: return a.AsString() == b.AsString();
    default: return a.GetKind() == Kind::Empty;
  }
}

const std::map<long, Variant> kEmpty = {{client::olText, ""}, {client::olNumber, 0.0}, {client::olYesNo, false}};

// A value given to a property of a type, and what it reads back as (nothing:
// the conversion raises 13 and the old value stays).
const std::tuple<const char*, long, Variant, std::optional<Variant>> kValueCases[] = {
    {"text from a number", client::olText, 12, Variant("12")},
    {"text from a Boolean", client::olText, true, Variant("True")},
    {"number from numeric text", client::olNumber, " 3.5 ", Variant(3.5)},
    {"number from True", client::olNumber, true, Variant(-1.0)},
    {"number from words", client::olNumber, "twelve", std::nullopt},
    {"date from a date", client::olDateTime, DateValue{45719.5}, Variant(DateValue{45719.5})},
    {"date from ISO text", client::olDateTime, "2025-03-03 09:30", Variant(DateValue{45719.0 + 9.5 / 24})},
    {"date from a serial number", client::olDateTime, 45719.25, Variant(DateValue{45719.25})},
    {"date from words", client::olDateTime, "soon", std::nullopt},
    {"date from a Boolean", client::olDateTime, true, std::nullopt},
    {"yes/no from text", client::olYesNo, "False", Variant(false)},
    {"yes/no from a number", client::olYesNo, 2, Variant(true)},
    {"yes/no from zero", client::olYesNo, 0, Variant(false)},
    {"yes/no from words", client::olYesNo, "maybe", std::nullopt},
};

TYPED_TEST(ItemsTest, PropertyValuesStartEmptyAndConvertToThePropertyType) {
  for (const auto& [name, type, given, expected] : kValueCases) {
    SCOPED_TRACE(name);
    const auto property = this->Mail("props")->UserProperties()->Add("Value", type);
    EXPECT_EQ(property->Type(), type);
    const Variant before = property->Value();
    EXPECT_TRUE(type == client::olDateTime ? before.GetKind() == Kind::Date : SameValue(before, kEmpty.at(type)))
        << "a new property holds its type's empty value";
    EXPECT_EQ(ErrorOf([&, &value = given] { property->Value(value); }), expected ? 0 : qorvane::err::kTypeMismatch);
    EXPECT_TRUE(SameValue(property->Value(), expected.value_or(before))) << "a failed conversion changes nothing";
  }
}

TYPED_TEST(ItemsTest, PropertyNamesAreFoundWithoutCaseAndTakenOnce) {
  const auto properties = this->Mail("props")->UserProperties();
  for (const char* name : {"ScheduleTime", "MoveToQorvane", "Other"}) properties->Add(name, client::olText);
  const std::pair<const char*, const char*> finds[] = {
      {"scheduletime", "ScheduleTime"}, {"MOVETOQORVANE", "MoveToQorvane"}, {"Schedule", nullptr}, {"", nullptr}};
  for (const auto& [asked, found] : finds) {
    const auto property = properties->Find(asked);
    EXPECT_EQ(property ? property->Name() : "(none)", found ? found : "(none)") << asked;
  }
  EXPECT_NE(ErrorOf([&] { properties->Add("scheduleTIME", client::olDateTime); }), 0);
  ASSERT_EQ(properties->Count(), 3);
  const auto middle = properties->Item(2);
  EXPECT_EQ(middle->Name(), "MoveToQorvane") << "in the order added";
  middle->Delete();
  EXPECT_EQ(properties->Item(2)->Name(), "Other");
  EXPECT_NE(ErrorOf([&] { properties->Item(3); }), 0);
  properties->Add("MoveToQorvane", client::olNumber);
  EXPECT_EQ(properties->Find("movetoqorvane")->Type(), client::olNumber) << "a deleted name is free again";
}

TYPED_TEST(ItemsTest, AttachmentsKeepOrderAndNamesAndMissingFilesRaise) {
  const auto attachments = this->Mail("files")->Attachments();
  attachments->Add(this->File("data.csv"), "Figures");
  attachments->Add(this->File("plain.bin"), "");
  for (const std::string& missing : {(this->folder_ / "gone.txt").string(), this->folder_.string(), std::string()}) {
    EXPECT_EQ(ErrorOf([&] { attachments->Add(missing, "gone.txt"); }), kFileNotFound) << missing;
  }
  ASSERT_EQ(attachments->Count(), 2) << "a missing file attaches nothing";
  EXPECT_EQ(attachments->Item(1)->FileName() + " as " + attachments->Item(1)->DisplayName(), "data.csv as Figures");
  EXPECT_EQ(attachments->Item(2)->DisplayName(), "plain.bin") << "without a display name, the file's name";
}

const std::string kProps = "http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-C000-000000000046}/";

// A filter and the subjects it finds, in the folder's order. DASL compares
// date-times in UTC: "<local TIME>" stands for that local time's UTC text in
// the client's time zone. A Jet filter names a user property that is a field
// of the folder and compares in local time.
const std::pair<std::string, std::vector<std::string>> kFilters[] = {
    {"@SQL=\"" + kProps + "MoveToQorvane\" IS NOT NULL", {"a", "c", "e"}},
    {"@SQL=\"" + kProps + "ScheduleTime\" IS NOT NULL", {"a", "b", "c", "e"}},
    {"@SQL=\"" + kProps + "Unknown\" IS NOT NULL", {}},
    {"@SQL=\"" + kProps + "ScheduleTime\" <= '<local 2025-03-03 09:30>'", {"a", "c"}},
    {"@SQL=\"" + kProps + "ScheduleTime\" < '<local 2025-03-03 09:30>'", {"a"}},
    {"@SQL=\"" + kProps + "ScheduleTime\" > '<local 2025-03-03 09:30>'", {"b", "e"}},
    {"@SQL=\"" + kProps + "ScheduleTime\" = '<local 2025-03-03 09:30:00>'", {"c"}},
    {"@SQL=\"" + kProps + "MoveToQorvane\" IS NOT NULL AND \"" + kProps + "ScheduleTime\" >= '<local 2025-03-03 09:30>'",
     {"c", "e"}},
    {"[ScheduleTime] <= '3/3/2025 9:30 AM'", {"a", "c"}},
    {"[scheduletime] > '2025-03-03 09:30'", {"b", "e"}},
    {"[Subject] = \"c\"", {"c"}},
    {"[Subject] = 'none'", {}},
};

// "<local YYYY-MM-DD HH:MM[:SS]>" replaced by the same instant in UTC.
std::string InUtc(std::string filter) {
  static const std::string kMarker = "<local ";
  for (std::size_t open; (open = filter.find(kMarker)) != std::string::npos;) {
    const std::size_t close = filter.find('>', open);
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, sec = 0;
    const int read = std::sscanf(filter.substr(open + kMarker.size(), close - open - kMarker.size()).c_str(), "%d-%d-%d %d:%d:%d", &y, &mo, &d,
                                 &h, &mi, &sec);
    const double local = qorvane::DateSerialRollOver(y, mo, d) + qorvane::TimeSerial(h, mi, sec);
    qorvane::CivilDate day;
    qorvane::TimeOfDay time;
    qorvane::SplitRounded(qorvane::CurrentTimeZone().LocalToUtc(local), day, time);
    char text[32];
    if (read == 6) {
      std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", day.year, day.month, day.day, time.hour,
                    time.minute, time.second);
    } else {
      std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d", day.year, day.month, day.day, time.hour,
                    time.minute);
    }
    filter.replace(open, close - open + 1, text);
  }
  return filter;
}

TYPED_TEST(ItemsTest, RestrictAndFindGiveTheMatchesInFolderOrderAndRefuseBadFilters) {
  this->AddScheduledMails();
  const auto items = this->Inbox()->Items();
  for (const auto& [written, subjects] : kFilters) {
    const std::string filter = InUtc(written);
    SCOPED_TRACE(filter);
    EXPECT_EQ(this->Subjects(items->Restrict(filter)), subjects);
    std::vector<std::string> found;
    for (auto item = items->Find(filter); item; item = items->FindNext()) found.push_back(item->Subject());
    EXPECT_EQ(found, subjects);
  }
  const std::string mark = "@SQL=\"" + kProps + "MoveToQorvane\"";
  const std::string bad[] = {"", "[Subject] ==", "[Subject] = 'unterminated", "@SQL=nonsense",
                             mark + " IS SOMETIMES NULL", mark + " IS NOT NULL AND",
                             "[NotAField] = 'x'", "[ScheduleTime] <= 'soon'"};
  for (const std::string& filter : bad) {
    EXPECT_EQ(ErrorOf([&] { items->Restrict(filter); }), kDispatchException) << filter;
    EXPECT_EQ(ErrorOf([&] { items->Find(filter); }), kDispatchException) << filter;
  }
}

TYPED_TEST(ItemsTest, SortOnAFolderFieldPutsItemsWithoutAValueFirst) {
  this->AddScheduledMails();
  const auto items = this->Inbox()->Items();
  items->Sort("[ScheduleTime]", false);
  EXPECT_EQ(this->Subjects(items), (std::vector<std::string>{"d", "a", "c", "b", "e"}));
  items->Sort("[ScheduleTime]", true);
  EXPECT_EQ(this->Subjects(items), (std::vector<std::string>{"b", "e", "c", "a", "d"})) << "ties keep folder order";
  const auto scheduled = items->Restrict("@SQL=\"" + kProps + "ScheduleTime\" IS NOT NULL");
  scheduled->Sort("[ScheduleTime]", false);
  EXPECT_EQ(scheduled->Item(1)->Subject(), "a");
  EXPECT_EQ(ErrorOf([&] { items->Sort("[NotAField]", false); }), kDispatchException);
  EXPECT_EQ(ErrorOf([&] { this->Folder(client::olFolderOutbox)->Items()->Sort("[ScheduleTime]", false); }),
            kDispatchException)
      << "a field of the Inbox is not one of the Outbox";
}

TYPED_TEST(ItemsTest, RecipientsAreTheNamesOfToAndResolveOnlyIfAllAreKnown) {
  // The To line, how many recipients it names, and whether they all resolve.
  const std::tuple<const char*, long, bool> cases[] = {
      {"a@example.com;; ;b@example.org;", 2, true}, {"", 0, true},           {"a@example.com; Bob", 2, false},
      {"gone@example.com", 1, false},               {"a@example.com; GONE@example.com", 2, false}};
  this->fixture.MarkUnresolvable("gone@example.com");
  for (const auto& [to, count, resolve] : cases) {
    const auto recipients = this->SafeItemFor(this->fixture.AddMail(this->Inbox(), "r", to))->Recipients();
    EXPECT_EQ(recipients->Count(), count) << to;
    EXPECT_EQ(recipients->ResolveAll(), resolve) << to;
  }
}

TYPED_TEST(ItemsTest, SendFilesTheMailInSentItemsNeedsRecipientsAndTheLibrary) {
  const auto outbox = this->Folder(client::olFolderOutbox);
  const auto sentItems = this->Folder(olFolderSentMail);
  const auto mail = this->fixture.AddMail(outbox, "going out", "a@example.com");
  const auto nobody = this->fixture.AddMail(outbox, "nobody", "");
  this->SafeItemFor(mail)->Send();
  EXPECT_NE(ErrorOf([&] { this->SafeItemFor(nobody)->Send(); }), 0);
  EXPECT_EQ(this->Subjects(outbox->Items()), (std::vector<std::string>{"nobody"}));
  ASSERT_EQ(this->Subjects(sentItems->Items()), (std::vector<std::string>{"going out"}));
  EXPECT_TRUE(sentItems->Items()->Item(1)->AsMailItem()->Sent());
  EXPECT_FALSE(nobody->Sent());
  EXPECT_EQ(ErrorOf([&] { mail->Subject(); }), kMovedOrDeleted) << "the sent mail left its folder";
  EXPECT_EQ(ErrorOf([] { client::CurrentSafeMailFactory().CreateSafeMailItem()->Send(); }),
            qorvane::err::kObjectNotSet);
  this->fixture.SetSafeMailInstalled(false);
  EXPECT_EQ(ErrorOf([] { client::CurrentSafeMailFactory().CreateSafeMailItem(); }), qorvane::err::kCannotCreateObject);
  this->fixture.SetSafeMailInstalled(true);
  EXPECT_TRUE(client::CurrentSafeMailFactory().CreateSafeMailItem());
}

}  // namespace
}  // namespace client_conformance
