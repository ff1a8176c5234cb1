// Marked Inbox mails move into the deferred folder at start-up, and finding
// them costs no call per Inbox item.
#include <gtest/gtest.h>

#include "store/folder.h"
#include "store/marked_mails.h"
#include "tests/store/store_fixture.h"

namespace qorvane {
namespace {

class SpecialTest : public testing::StoreTest {
 protected:
  testing::ScopedFolderSession session_;
  client::Ref<client::MAPIFolder> Inbox() { return sim_.DefaultFolder(client::olFolderInbox); }
  client::Ref<client::MAPIFolder> FindDeferred() {
    auto folders = sim_.Root()->Folders();
    for (long i = 1; i <= folders->Count(); ++i)
      if (folders->Item(i)->Name() == "Qorvane") return folders->Item(i);
    return nullptr;
  }
};

TEST_F(SpecialTest, MarkingTwiceAddsOneProperty) {
  auto mail = sim_.AddMail(Inbox(), "m");
  mSpecial::SpecialAdd(mail);
  mSpecial::SpecialAdd(mail);
  EXPECT_EQ(mail->UserProperties()->Count(), 1);
  EXPECT_EQ(mail->UserProperties()->Item(1)->Type(), client::olText);
}

TEST_F(SpecialTest, NothingMarkedCreatesNoFolder) {
  sim_.AddMail(Inbox(), "plain");
  mSpecial::SpecialDo();
  EXPECT_EQ(FindDeferred(), nullptr);
  EXPECT_EQ(Inbox()->Items()->Count(), 1);
}

TEST_F(SpecialTest, AMailMarkedInDraftsMovesAfterTheInboxOnes) {
  // What a compose window scheduled without a main window leaves behind.
  auto drafted = sim_.AddMail(sim_.DefaultFolder(client::olFolderDrafts), "drafted");
  mSpecial::SpecialAdd(drafted);
  drafted->Save();
  auto received = sim_.AddMail(Inbox(), "received");
  mSpecial::SpecialAdd(received);
  received->Save();
  mSpecial::SpecialDo();
  const auto deferred = FindDeferred();
  ASSERT_NE(deferred, nullptr);
  const auto items = deferred->Items();
  ASSERT_EQ(items->Count(), 2);
  EXPECT_EQ(items->Item(1)->Subject() + ", " + items->Item(2)->Subject(), "received, drafted");
  EXPECT_EQ(items->Item(2)->UserProperties()->Find(mSpecial::kMarkProperty), nullptr);
}

// DASL-capable clients are asked through a restriction, older ones walked.
class SpecialByVersion : public ::testing::TestWithParam<const char*> {};

TEST_P(SpecialByVersion, MarkedMailsMoveInInboxOrderWithoutTheirMark) {
  testing::ScopedLocale locale("en-US");
  testing::ScopedLogFolder log;
  sim::SimClient client({.version = GetParam()});
  const qorvane::testing::ScopedFolderSession session;
  client.Install();
  auto inbox = client.DefaultFolder(client::olFolderInbox);
  std::vector<std::string> expected;
  for (int i = 0; i < 6; ++i) {
    const std::string subject = "mail " + std::to_string(i);
    auto mail = client.AddMail(inbox, subject);
    if (i % 2 == 0) {
      mSpecial::SpecialAdd(mail);
      mail->Save();
      expected.push_back(subject);
    }
  }
  auto meeting = client.AddOtherItem(inbox, 53, "marked meeting request");
  mSpecial::SpecialAdd(meeting);
  meeting->Save();
  mSpecial::SpecialDo();

  client::Ref<client::MAPIFolder> deferred;
  auto folders = client.Root()->Folders();
  for (long i = 1; i <= folders->Count(); ++i)
    if (folders->Item(i)->Name() == "Qorvane") deferred = folders->Item(i);
  ASSERT_NE(deferred, nullptr);
  std::vector<std::string> moved;
  for (long i = 1; i <= deferred->Items()->Count(); ++i) {
    moved.push_back(deferred->Items()->Item(i)->Subject());
    EXPECT_EQ(deferred->Items()->Item(i)->UserProperties()->Find("MoveToQorvane"), nullptr);
  }
  EXPECT_EQ(moved, expected);
  EXPECT_EQ(inbox->Items()->Count(), 4) << "unmarked mails and other items stay";
  EXPECT_TRUE(log.LogText().empty()) << log.LogText();
  client.Uninstall();
}

INSTANTIATE_TEST_SUITE_P(Clients, SpecialByVersion, ::testing::Values("16.0.17928.20114", "11.0.6359"),
                         [](const auto& info) { return std::string(info.param[0] == '1' && info.param[1] == '6' ? "Dasl" : "Walk"); });

TEST_F(SpecialTest, FindingMarkedMailsCostsNoCallPerInboxItem) {
  auto inbox = Inbox();
  for (int i = 0; i < 10000; ++i) {
    auto mail = sim_.AddMail(inbox, "bulk " + std::to_string(i));
    if (i % 1000 == 0) {
      mSpecial::SpecialAdd(mail);
      mail->Save();
    }
  }
  Deferred();
  sim_.ResetCounts();
  mSpecial::SpecialDo();
  EXPECT_EQ(Deferred()->Items()->Count(), 10);
  // Per marked mail a handful of calls; per unmarked mail none.
  EXPECT_LT(sim_.TotalCalls(), 200) << "calls for a 10,000-item Inbox with 10 marked mails";
  EXPECT_EQ(sim_.CallCount("Items.Restrict"), 2) << "one for the Inbox, one for Drafts";
  RecordProperty("object_model_calls", static_cast<int>(sim_.TotalCalls()));
}

}  // namespace
}  // namespace qorvane
