// The road of a scheduled mail through the sending pipeline, on the
// simulated client: what is sent, when, how often, and what stays behind.
#include <gtest/gtest.h>

#include "base/ole_date.h"
#include "platform/message_box.h"
#include "store/item_props.h"
#include "store/sending.h"
#include "tests/schedule/schedule_test_util.h"
#include "tests/store/store_fixture.h"

namespace qorvane {
namespace {

using testing::At;
using testing::Text;

CMailProps OneTime(const char* when) {
  CMailProps props;
  props.m_ScheduleTime = At(when);
  return props;
}

CMailProps Weekly(const char* first, std::int32_t occurrences, bool noEnd) {
  CMailProps props = testing::Record({.type = 1, .interval = 1, .mask = 2 /* Monday */, .start = first});
  props.m_NoEndDate = noEnd;
  props.m_Occurrences = occurrences;
  props.SetFirstOccurrence();
  return props;
}

std::vector<std::string> SentSubjects(const sim::SimClient& sim) {
  std::vector<std::string> subjects;
  for (const auto& sent : sim.SendLog()) subjects.push_back(sent.subject);
  return subjects;
}

class SendingTest : public testing::StoreTest {};

TEST_F(SendingTest, AOneTimeItemDueNowIsSentOnceAndLeavesTheFolder) {
  sim_.SetNow(At("2025-03-03 09:30"));
  auto mail = Schedule("once", OneTime("2025-03-03 09:30"));
  Main::SendMessage(mail, sim_.Now());
  ASSERT_EQ(sim_.SendLog().size(), 1u);
  EXPECT_EQ(sim_.SendLog()[0].subject, "once");
  EXPECT_TRUE(sim_.SendLog()[0].userProperties.empty()) << "the sent mail carries no schedule";
  EXPECT_EQ(Deferred()->Items()->Count(), 0);
  EXPECT_EQ(CountIn(client::olFolderOutbox), 0);
  EXPECT_TRUE(log_.LogText().empty());
}

TEST_F(SendingTest, ThreeOverdueWeeksSendThreeCopiesAndKeepTheNextTime) {
  auto mail = Schedule("weekly", Weekly("2025-03-03", 0, true));
  sim_.SetNow(At("2025-03-17 12:00"));  // Mondays 3, 10 and 17 March are due
  Main::SendMessage(mail, sim_.Now());
  EXPECT_EQ(SentSubjects(sim_), (std::vector<std::string>{"weekly", "weekly", "weekly"}));
  ASSERT_EQ(Deferred()->Items()->Count(), 1);
  CMailProps kept;
  kept.ReadProps(Deferred()->Items()->Item(1));
  EXPECT_EQ(Text(kept.m_ScheduleTime), "2025-03-24 09:30");
  EXPECT_EQ(kept.m_PatternStartDate, At("2025-03-24"));

  EXPECT_GT(kept.m_ScheduleTime, sim_.Now()) << "the next pass finds nothing due";
}

TEST_F(SendingTest, TheLastOccurrenceSendsTheOriginalItself) {
  auto mail = Schedule("last two", Weekly("2025-03-03", 2, false));
  sim_.SetNow(At("2025-03-03 09:30"));
  Main::SendMessage(mail, sim_.Now());
  ASSERT_EQ(Deferred()->Items()->Count(), 1);
  CMailProps kept;
  kept.ReadProps(Deferred()->Items()->Item(1));
  EXPECT_EQ(kept.m_Occurrences, 1);
  sim_.SetNow(At("2025-03-10 09:30"));
  Main::SendMessage(Deferred()->Items()->Item(1)->AsMailItem(), sim_.Now());
  EXPECT_EQ(sim_.SendLog().size(), 2u);
  EXPECT_EQ(Deferred()->Items()->Count(), 0) << "nothing is left in the folder";
}

TEST_F(SendingTest, ASeriesEndingWhileOverdueSendsCopiesThenTheOriginal) {
  auto mail = Schedule("ends", Weekly("2025-03-03", 3, false));
  sim_.SetNow(At("2025-04-30 09:30"));
  Main::SendMessage(mail, sim_.Now());
  EXPECT_EQ(sim_.SendLog().size(), 3u);
  EXPECT_EQ(Deferred()->Items()->Count(), 0);
}

TEST_F(SendingTest, AnItemOpenInAWindowIsLeftAlone) {
  sim_.SetNow(At("2025-03-03 09:30"));
  auto mail = Schedule("open", OneTime("2025-03-03 09:00"));
  auto inspector = sim_.OpenInspector(mail);
  Main::SendMessage(mail, sim_.Now());
  EXPECT_TRUE(sim_.SendLog().empty());
  double kept = 0;
  EXPECT_TRUE(Main::GetUserProp(mail, kept));
  EXPECT_EQ(kept, At("2025-03-03 09:00"));
  sim_.CloseInspector(inspector);
  Main::SendMessage(mail, sim_.Now());
  EXPECT_EQ(sim_.SendLog().size(), 1u);
}

TEST_F(SendingTest, WithoutTheSafeMailLibraryTheItemWaitsInTheOutbox) {
  sim_.SetSafeMailInstalled(false);
  sim_.SetNow(At("2025-03-03 09:30"));
  auto mail = Schedule("stuck", OneTime("2025-03-03 09:30"));
  Main::SendMessage(mail, sim_.Now());
  EXPECT_TRUE(sim_.SendLog().empty());
  EXPECT_EQ(CountIn(client::olFolderOutbox), 1);
  EXPECT_TRUE(log_.LogContains("Error(429) : Main.MoveAndSendMessage")) << log_.LogText();
}

TEST_F(SendingTest, AttachmentsResolveToTheNewestFileWhenSent) {
  const std::string fixed = MakeFile("fixed.txt", 3);
  MakeFile("drop/old.txt", 2);
  CMailProps props = OneTime("2025-03-03 09:30");
  props.m_collAttachments = {fixed, FilesFolder("drop") + "\\"};
  auto mail = Schedule("files", props);
  // A newer file arrives after the mail was scheduled.
  const std::string arrived = MakeFile("drop/new.txt", 0);
  sim_.SetNow(At("2025-03-03 09:30"));
  Main::SendMessage(mail, sim_.Now());
  ASSERT_EQ(sim_.SendLog().size(), 1u);
  EXPECT_EQ(sim_.SendLog()[0].attachmentSources, (std::vector<std::string>{fixed, arrived}));
  EXPECT_EQ(sim_.SendLog()[0].attachmentNames, (std::vector<std::string>{"fixed.txt", "new.txt"}));
}

TEST_F(SendingTest, RecipientsAreCheckedBeforeScheduling) {
  const struct {
    const char* to;
    bool ok;
    const char* message;
  } cases[] = {
      {"someone@example.com", true, nullptr},
      {"", false, Main::kNoRecipientsMessage},
      {"someone@example.com; nobody", false, Main::kUnresolvedRecipientsMessage},
  };
  for (const auto& c : cases) {
    const std::size_t boxes = sim_.MessageBoxes().size();
    auto mail = sim_.AddMail(sim_.DefaultFolder(client::olFolderDrafts), "check", c.to);
    EXPECT_EQ(Main::CheckRecipients(mail), c.ok) << c.to;
    if (c.message) {
      ASSERT_EQ(sim_.MessageBoxes().size(), boxes + 1);
      EXPECT_EQ(sim_.MessageBoxes().back().prompt, c.message);
      EXPECT_EQ(sim_.MessageBoxes().back().buttons & 7, vbOKOnly);
    } else {
      EXPECT_EQ(sim_.MessageBoxes().size(), boxes);
    }
  }
}

}  // namespace
}  // namespace qorvane
