// The simulated client's own records, which no real client keeps: the send
// log, recorded message boxes, the virtual clock, view apply counts and what
// Install puts in place.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "platform/clock.h"
#include "platform/message_box.h"
#include "sim/sim_client.h"

namespace sim {
namespace {

namespace fs = std::filesystem;

class SimRecordsTest : public ::testing::Test {
 protected:
  SimRecordsTest() { sim.Install(); }
  ~SimRecordsTest() override { sim.Uninstall(); }

  void Send(const Ref<client::MailItem>& mail) {
    auto safe = client::CurrentSafeMailFactory().CreateSafeMailItem();
    safe->Item(mail);
    safe->Send();
  }

  SimClient sim;
};

TEST_F(SimRecordsTest, SendLogRecordsWhatWentOutAndWhen) {
  const fs::path file = fs::temp_directory_path() / "qorvane-sim-log.txt";
  std::ofstream(file) << "x";
  const auto mail = sim.AddMail(sim.DefaultFolder(client::olFolderOutbox), "Report", "a@example.com; b@example.com");
  mail->Attachments()->Add(file.string(), "Report.txt");
  const auto properties = mail->UserProperties();
  properties->Add("Note", client::olText)->Value("kept");
  properties->Add("Count", client::olNumber)->Value(2.5);
  properties->Add("When", client::olDateTime)->Value(qorvane::DateValue{45719.395833333336});
  properties->Add("Flag", client::olYesNo)->Value(true);
  sim.SetNow(45720.5);
  Send(mail);
  fs::remove(file);

  ASSERT_EQ(sim.SendLog().size(), 1u);
  const SentMail& sent = sim.SendLog()[0];
  EXPECT_EQ(sent.time, 45720.5);
  EXPECT_EQ(sent.subject, "Report");
  EXPECT_EQ(sent.to, "a@example.com; b@example.com");
  EXPECT_EQ(sent.attachmentNames, std::vector<std::string>{"Report.txt"});
  EXPECT_EQ(sent.attachmentSources, std::vector<std::string>{file.string()});
  const std::map<std::string, std::string> expected = {
      {"Note", "kept"}, {"Count", "2.5"}, {"When", "3/3/2025 9:30:00 AM"}, {"Flag", "True"}};
  EXPECT_EQ(sent.userProperties, expected);
}

TEST_F(SimRecordsTest, SendFromUserRaisesItemSendWhichMayCancel) {
  struct Sink : client::ApplicationEvents {
    void ItemSend(const Ref<client::Item>& item, bool& cancel) override {
      subjects.push_back(item->Subject());
      cancel = cancelNext;
    }
    std::vector<std::string> subjects;
    bool cancelNext = true;
  } sink;
  const auto subscription = sim.Application()->Advise(&sink);
  const auto drafts = sim.DefaultFolder(client::olFolderDrafts);
  EXPECT_FALSE(sim.SendFromUser(sim.AddMail(drafts, "held")));
  sink.cancelNext = false;
  EXPECT_TRUE(sim.SendFromUser(sim.AddMail(drafts, "sent")));
  EXPECT_EQ(sink.subjects, (std::vector<std::string>{"held", "sent"}));
  ASSERT_EQ(sim.SendLog().size(), 1u);
  EXPECT_EQ(sim.SendLog()[0].subject, "sent");
  EXPECT_EQ(drafts->Items()->Count(), 1);
}

TEST_F(SimRecordsTest, MessageBoxesAreRecordedAndAnswered) {
  struct Case {
    long buttons;
    long answer;  // 0: the first button
    long expected;
  };
  const Case cases[] = {{qorvane::vbOKOnly, 0, qorvane::vbOK},
                        {qorvane::vbYesNo | qorvane::vbQuestion, 0, qorvane::vbYes},
                        {qorvane::vbOKCancel, 0, qorvane::vbOK},
                        {qorvane::vbYesNo, qorvane::vbNo, qorvane::vbNo}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.buttons);
    sim.SetMessageBoxAnswer(c.answer);
    EXPECT_EQ(qorvane::MsgBox("Question?", c.buttons, "Title"), c.expected);
  }
  ASSERT_EQ(sim.MessageBoxes().size(), std::size(cases));
  EXPECT_EQ(sim.MessageBoxes()[1].prompt, "Question?");
  EXPECT_EQ(sim.MessageBoxes()[1].buttons, qorvane::vbYesNo | qorvane::vbQuestion);
  EXPECT_EQ(sim.MessageBoxes()[1].title, "Title");
}

TEST_F(SimRecordsTest, ClockMovesOnlyWhenTold) {
  EXPECT_EQ(qorvane::Now(), 45719.375) << "2025-03-03 09:00 by default";
  sim.Advance(1.0 / 24);
  EXPECT_DOUBLE_EQ(qorvane::Now(), 45719.375 + 1.0 / 24);
  EXPECT_FLOAT_EQ(qorvane::CurrentClock().SecondsSinceMidnight(), 10 * 3600.0f);
  sim.SetNow(45720.0 + 0.4 / 86400);
  EXPECT_EQ(sim.Now(), 45720.0) << "whole seconds";
}

TEST_F(SimRecordsTest, InstallConnectsAndUninstallLetsGo) {
  EXPECT_EQ(client::CurrentApplication(), sim.Application());
  EXPECT_EQ(&qorvane::CurrentClock(), &sim.Clock());
  sim.Uninstall();
  EXPECT_THROW(client::CurrentApplication(), qorvane::RuntimeError);
  EXPECT_EQ(&qorvane::CurrentClock(), &qorvane::SystemClock());
  EXPECT_THROW(client::CurrentSafeMailFactory().CreateSafeMailItem(), qorvane::RuntimeError);
  sim.Install();
}

TEST(SimOptionsTest, ApplicationReportsTheConfiguredVersion) {
  for (const char* version : {"9.0.0.2711", "11.0.8217", "16.0.17928.20114"}) {
    SimOptions options;
    options.version = version;
    SimClient sim(options);
    EXPECT_EQ(sim.Application()->Version(), version);
  }
}

TEST_F(SimRecordsTest, OnlyTheMapiNamespaceExists) {
  const auto app = sim.Application();
  EXPECT_TRUE(app->GetNamespace("MAPI"));
  EXPECT_TRUE(app->GetNamespace("mapi"));
  EXPECT_THROW(app->GetNamespace("LDAP"), qorvane::RuntimeError);
}

TEST_F(SimRecordsTest, ViewsCountTheirAppliesAndSaves) {
  const auto view = sim.Root()->Folders()->Add("Qorvane", client::olFolderDrafts)->Views()->Add("V", 0, 0);
  view->Apply();
  view->Apply();
  view->Save();
  EXPECT_EQ(sim.AppliedCount(view), 2);
  EXPECT_EQ(sim.SavedCount(view), 1);
}

TEST_F(SimRecordsTest, OtherItemsKeepTheirClass) {
  const auto item = sim.AddOtherItem(sim.DefaultFolder(client::olFolderInbox), 53, "Meeting request");
  EXPECT_EQ(item->Class(), 53);
  EXPECT_FALSE(item->AsMailItem());
  EXPECT_FALSE(item->AsAppointmentItem());
  EXPECT_NE(item->EntryID(), "");
}

}  // namespace
}  // namespace sim
