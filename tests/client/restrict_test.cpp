// Conformance: Restrict and Find with the DASL and Jet filters the add-in
// writes, the bad ones the client refuses, and Sort.
#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

using qorvane::DateValue;

const std::string kProps = "http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-C000-000000000046}/";

// 2025-03-03 at hh:mm.
DateValue At(int hour, int minute) { return DateValue{45719.0 + (hour * 60 + minute) / 1440.0}; }

template <class F>
class RestrictTest : public ClientTest<F> {
 protected:
  // Inbox: a (marked, 09:00), b (10:00), c (marked, 09:30), d (no
  // properties), e (marked, 10:00).
  void SetUp() override {
    struct Mail {
      const char* subject;
      bool marked;
      std::optional<DateValue> scheduled;
    };
    const Mail mails[] = {{"a", true, At(9, 0)},
                          {"b", false, At(10, 0)},
                          {"c", true, At(9, 30)},
                          {"d", false, std::nullopt},
                          {"e", true, At(10, 0)}};
    for (const auto& mail : mails) {
      const auto item = this->fixture.AddMail(this->Inbox(), mail.subject, "a@example.com");
      if (mail.marked) item->UserProperties()->Add("MoveToQorvane", client::olText)->Value("1");
      if (mail.scheduled) item->UserProperties()->Add("ScheduleTime", client::olDateTime)->Value(*mail.scheduled);
      item->Save();
    }
  }
};
TYPED_TEST_SUITE(RestrictTest, ClientFixtures);

struct FilterCase {
  std::string filter;
  std::vector<std::string> subjects;  // in the folder's order
};

const FilterCase kFilters[] = {
    {"@SQL=\"" + kProps + "MoveToQorvane\" IS NOT NULL", {"a", "c", "e"}},
    {"@SQL=\"" + kProps + "ScheduleTime\" IS NOT NULL", {"a", "b", "c", "e"}},
    {"@SQL=\"" + kProps + "Unknown\" IS NOT NULL", {}},
    {"@SQL=\"" + kProps + "ScheduleTime\" <= '2025-03-03 09:30'", {"a", "c"}},
    {"@SQL=\"" + kProps + "ScheduleTime\" < '2025-03-03 09:30'", {"a"}},
    {"@SQL=\"" + kProps + "ScheduleTime\" >= '2025-03-03 09:30'", {"b", "c", "e"}},
    {"@SQL=\"" + kProps + "ScheduleTime\" > '2025-03-03 09:30'", {"b", "e"}},
    {"@SQL=\"" + kProps + "ScheduleTime\" = '2025-03-03 09:30:00'", {"c"}},
    {"@SQL=\"" + kProps + "ScheduleTime\" <= '2025-03-02 23:59'", {}},
    {"@SQL=\"" + kProps + "MoveToQorvane\" IS NOT NULL AND \"" + kProps + "ScheduleTime\" >= '2025-03-03 09:30'",
     {"c", "e"}},
    {"[Subject] = \"c\"", {"c"}},
    {"[Subject] = 'd'", {"d"}},
    {"[Subject] = 'none'", {}},
};

TYPED_TEST(RestrictTest, FilterFindsTheMatchingItemsInFolderOrder) {
  const auto items = this->Inbox()->Items();
  for (const auto& c : kFilters) {
    SCOPED_TRACE(c.filter);
    EXPECT_EQ(this->Subjects(items->Restrict(c.filter)), c.subjects);
  }
}

TYPED_TEST(RestrictTest, FindWalksTheSameMatches) {
  const auto items = this->Inbox()->Items();
  for (const auto& c : kFilters) {
    SCOPED_TRACE(c.filter);
    std::vector<std::string> found;
    for (auto item = items->Find(c.filter); item; item = items->FindNext()) found.push_back(item->Subject());
    EXPECT_EQ(found, c.subjects);
  }
}

TYPED_TEST(RestrictTest, FilterTheClientCannotParseRaises) {
  const std::string bad[] = {
      "",
      "[Subject] ==",
      "[Subject] = 'unterminated",
      "@SQL=nonsense",
      "@SQL=\"" + kProps + "MoveToQorvane\" IS SOMETIMES NULL",
      "@SQL=\"" + kProps + "MoveToQorvane\" IS NOT NULL AND",
  };
  const auto items = this->Inbox()->Items();
  for (const auto& filter : bad) {
    SCOPED_TRACE(filter);
    EXPECT_EQ(ErrorOf([&] { items->Restrict(filter); }), kDispatchException);
    EXPECT_EQ(ErrorOf([&] { items->Find(filter); }), kDispatchException);
  }
}

TYPED_TEST(RestrictTest, RestrictionDoesNotFollowLaterMoves) {
  const auto inbox = this->Inbox();
  const auto marked = inbox->Items()->Restrict("@SQL=\"" + kProps + "MoveToQorvane\" IS NOT NULL");
  const auto drafts = this->Folder(client::olFolderDrafts);
  // Collect first, then move: the restriction keeps its three entries.
  std::vector<Ref<client::Item>> found;
  for (long i = 1; i <= marked->Count(); ++i) found.push_back(marked->Item(i));
  for (const auto& item : found) item->Move(drafts);
  EXPECT_EQ(marked->Count(), 3);
  EXPECT_EQ(this->Subjects(inbox->Items()), (std::vector<std::string>{"b", "d"}));
  EXPECT_EQ(this->Subjects(drafts->Items()), (std::vector<std::string>{"a", "c", "e"}));
}

TYPED_TEST(RestrictTest, SortOrdersTheCollection) {
  const auto inbox = this->Inbox();
  this->fixture.AddMail(inbox, "B", "a@example.com");
  struct Case {
    bool descending;
    std::vector<std::string> subjects;
  };
  const Case cases[] = {{false, {"a", "b", "B", "c", "d", "e"}}, {true, {"e", "d", "c", "b", "B", "a"}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.descending);
    const auto items = inbox->Items();
    items->Sort("[Subject]", c.descending);
    EXPECT_EQ(this->Subjects(items), c.subjects);
  }
  EXPECT_NE(ErrorOf([&] { inbox->Items()->Sort("[NoSuchProperty]", false); }), 0);
}

}  // namespace
}  // namespace client_conformance
