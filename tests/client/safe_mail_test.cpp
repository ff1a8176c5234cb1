// Conformance: the safe-mail library: recipients, sending, and its absence.
#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

template <class F>
class SafeMailTest : public ClientTest<F> {
 protected:
  Ref<client::SafeMailItem> SafeItemFor(const Ref<client::MailItem>& mail) {
    auto safe = client::CurrentSafeMailFactory().CreateSafeMailItem();
    safe->Item(mail);
    return safe;
  }
};
TYPED_TEST_SUITE(SafeMailTest, ClientFixtures);

TYPED_TEST(SafeMailTest, RecipientsAreTheNamesOfTo) {
  struct Case {
    const char* to;
    long count;
    bool resolve;
  };
  const Case cases[] = {
      {"a@example.com", 1, true},
      {"a@example.com; b@example.org", 2, true},
      {"a@example.com;; ;b@example.org;", 2, true},
      {"", 0, true},
      {"Bob", 1, false},
      {"a@example.com; Bob", 2, false},
      {"gone@example.com", 1, false},
      {"a@example.com; GONE@example.com", 2, false},
  };
  this->fixture.MarkUnresolvable("gone@example.com");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.to);
    const auto recipients = this->SafeItemFor(this->fixture.AddMail(this->Inbox(), "r", c.to))->Recipients();
    EXPECT_EQ(recipients->Count(), c.count);
    EXPECT_EQ(recipients->ResolveAll(), c.resolve);
  }
}

TYPED_TEST(SafeMailTest, SendFilesTheMailInSentItems) {
  const auto outbox = this->Folder(client::olFolderOutbox);
  const auto sentItems = this->Folder(olFolderSentMail);
  const auto mail = this->fixture.AddMail(outbox, "going out", "a@example.com");
  this->fixture.AddMail(outbox, "waiting", "a@example.com");
  this->SafeItemFor(mail)->Send();
  EXPECT_EQ(this->Subjects(outbox->Items()), (std::vector<std::string>{"waiting"}));
  ASSERT_EQ(this->Subjects(sentItems->Items()), (std::vector<std::string>{"going out"}));
  EXPECT_TRUE(sentItems->Items()->Item(1)->AsMailItem()->Sent());
  EXPECT_FALSE(outbox->Items()->Item(1)->AsMailItem()->Sent());
  EXPECT_EQ(ErrorOf([&] { mail->Subject(); }), kMovedOrDeleted) << "the sent mail left its folder";
}

TYPED_TEST(SafeMailTest, ItemIsNeededBeforeRecipientsOrSend) {
  auto safe = client::CurrentSafeMailFactory().CreateSafeMailItem();
  EXPECT_EQ(ErrorOf([&] { safe->Send(); }), qorvane::err::kObjectNotSet);
  EXPECT_EQ(ErrorOf([&] { safe->Recipients(); }), qorvane::err::kObjectNotSet);
}

TYPED_TEST(SafeMailTest, MailWithoutRecipientsIsNotSent) {
  const auto outbox = this->Folder(client::olFolderOutbox);
  const auto mail = this->fixture.AddMail(outbox, "nobody", "");
  EXPECT_NE(ErrorOf([&] { this->SafeItemFor(mail)->Send(); }), 0);
  EXPECT_EQ(outbox->Items()->Count(), 1);
  EXPECT_FALSE(mail->Sent());
}

TYPED_TEST(SafeMailTest, LibraryThatIsNotInstalledCannotBeCreated) {
  this->fixture.SetSafeMailInstalled(false);
  EXPECT_EQ(ErrorOf([] { client::CurrentSafeMailFactory().CreateSafeMailItem(); }), qorvane::err::kCannotCreateObject);
  this->fixture.SetSafeMailInstalled(true);
  EXPECT_TRUE(client::CurrentSafeMailFactory().CreateSafeMailItem());
}

}  // namespace
}  // namespace client_conformance
