// The schedule on the mail item, the ScheduleTime property and attachment
// resolution.
#include <gtest/gtest.h>

#include "base/ole_date.h"
#include "platform/file_system.h"
#include "store/item_props.h"
#include "store/sending.h"
#include "tests/schedule/schedule_test_util.h"
#include "tests/store/store_fixture.h"

namespace qorvane {
namespace {

using testing::At;

class MailPropsItemTest : public testing::StoreTest {};

TEST_F(MailPropsItemTest, AnItemWithoutPropertiesReadsAsOneTimeAtTheNextHalfHour) {
  sim_.SetNow(At("2025-03-03 10:44") + TimeSerial(0, 0, 10));
  auto mail = sim_.AddMail(sim_.DefaultFolder(client::olFolderDrafts), "plain");
  CMailProps props;
  props.m_collAttachments = {"stale"};
  props.m_IsRecurring = true;
  props.ReadProps(mail);
  EXPECT_EQ(props.m_ScheduleTime, At("2025-03-03 11:00"));
  EXPECT_FALSE(props.m_IsRecurring);
  EXPECT_TRUE(props.m_collAttachments.empty());
}

TEST_F(MailPropsItemTest, ScheduleTimeAloneKeepsTheRecordsPattern) {
  auto mail = sim_.AddMail(sim_.DefaultFolder(client::olFolderDrafts), "time only");
  Main::SetUserProp(mail, At("2025-04-01 08:15"));
  CMailProps props;
  props.m_RecurrenceType = 3;
  props.m_IsRecurring = true;
  props.ReadProps(mail);
  EXPECT_EQ(props.m_ScheduleTime, At("2025-04-01 08:15"));
  EXPECT_FALSE(props.m_IsRecurring);
  EXPECT_EQ(props.m_RecurrenceType, 3) << "the pattern fields are not reset";
}

TEST_F(MailPropsItemTest, WriteThenReadGivesTheSameScheduleAndOnePropertyEach) {
  CMailProps written = testing::Record({.type = 1, .interval = 2, .mask = 34});
  written.m_ScheduleTime = At("2025-03-07 09:30");
  written.m_Occurrences = 4;
  written.m_NoEndDate = false;
  written.m_collAttachments = {"C:\\a.txt", "C:\\Folder\\"};
  auto mail = sim_.AddMail(sim_.DefaultFolder(client::olFolderDrafts), "round trip");
  written.WriteProps(mail);
  written.m_Occurrences = 3;
  written.WriteProps(mail);
  EXPECT_EQ(mail->UserProperties()->Count(), 2) << "writing twice updates, never adds";
  CMailProps read;
  read.ReadProps(mail);
  EXPECT_TRUE(read.Equal(written));
  EXPECT_EQ(read.m_collAttachments, written.m_collAttachments);
  EXPECT_EQ(mail->UserProperties()->Find("ScheduleTime")->Type(), client::olDateTime);
  EXPECT_EQ(mail->UserProperties()->Find("QorvaneRecurrence")->Type(), client::olText);

  written.ClearProps(mail);
  EXPECT_EQ(mail->UserProperties()->Count(), 0);
  written.ClearProps(mail);
  EXPECT_TRUE(log_.LogText().empty()) << "clearing an item without properties reports nothing";
}

TEST_F(MailPropsItemTest, ScheduleTimeOfTheWrongTypeIsReplaced) {
  auto mail = sim_.AddMail(sim_.DefaultFolder(client::olFolderDrafts), "typed");
  mail->UserProperties()->Add("ScheduleTime", client::olText)->Value("not a date");
  double value = 7.0;
  EXPECT_FALSE(Main::GetUserProp(mail, value));
  EXPECT_EQ(value, 7.0);
  Main::SetUserProp(mail, At("2025-05-05 05:05"));
  EXPECT_EQ(mail->UserProperties()->Find("ScheduleTime")->Type(), client::olDateTime);
  EXPECT_TRUE(Main::GetUserProp(mail, value));
  EXPECT_EQ(value, At("2025-05-05 05:05"));
  Main::DelUserProp(mail);
  EXPECT_FALSE(Main::GetUserProp(mail, value));
}

TEST_F(MailPropsItemTest, FailuresAreLoggedUnderTheirLabels) {
  auto mail = sim_.AddMail(sim_.DefaultFolder(client::olFolderDrafts), "faulty");
  const struct {
    const char* operation;
    void (*run)(CMailProps&, const client::Ref<client::Item>&);
    const char* label;
  } cases[] = {
      {"UserProperties.Find", [](CMailProps& p, const client::Ref<client::Item>& m) { p.ReadProps(m); },
       "Main.SetUserProp\t"},
      {"UserProperties.Add", [](CMailProps& p, const client::Ref<client::Item>& m) { p.WriteProps(m); },
       "Main.SetUserProp()\t"},
      {"UserProperty.Value", [](CMailProps& p, const client::Ref<client::Item>& m) { p.WriteProps(m); },
       "Main.SetUserProp()\t"},
      {"UserProperties.Find", [](CMailProps& p, const client::Ref<client::Item>& m) { p.ClearProps(m); },
       "Main.DelUserProp\t"},
  };
  for (const auto& c : cases) {
    testing::ScopedLogFolder log;
    sim_.FailCall(c.operation, 1);
    CMailProps props;
    c.run(props, mail);
    sim_.ClearFaults();
    EXPECT_TRUE(log.LogContains(c.label)) << c.operation << ": " << log.LogText();
  }
}

TEST_F(MailPropsItemTest, FileNamesAndFoldersResolveAtSendTime) {
  const std::string existing = MakeFile("a.txt");
  MakeFile("reports/report1.txt", 1);
  const std::string newest = MakeFile("reports/report2.txt", 0);
  std::filesystem::create_directories(FilesFolder("reports/sub"));
  std::filesystem::create_directories(FilesFolder("empty"));
  const std::string sep = PathSeparator();

  CMailProps props;
  props.m_collAttachments = {FilesFolder("missing.txt"), existing, FilesFolder("empty") + "\\",
                             FilesFolder("reports") + "\\"};
  EXPECT_EQ(props.GetResolvedAttachments(), (AttachmentList{existing, newest}));
  const auto lines = log_.LogLines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_NE(lines[0].find("FilePath: \"" + FilesFolder("missing.txt") + "\" not exists"), std::string::npos);
  EXPECT_NE(lines[1].find("FilePath: \"" + FilesFolder("empty") + "\\\" not exists or has no files"), std::string::npos);

  g_IgnoreList.FromString("Report2.TXT");
  props.m_collAttachments = {FilesFolder("reports") + "\\"};
  EXPECT_EQ(props.GetResolvedAttachments(), (AttachmentList{FilesFolder("reports") + sep + "report1.txt"}));
}

TEST_F(MailPropsItemTest, AHiddenFileIsStillACandidate) {
  MakeFile("hidden/visible.txt", 2);
  const std::string hidden = MakeFile("hidden/.recent.txt", 0);
  CMailProps props;
  props.m_collAttachments = {FilesFolder("hidden") + "\\"};
  // Skipped only when hidden and system at once, which a POSIX file never is.
  EXPECT_EQ(props.GetResolvedAttachments(), (AttachmentList{hidden}));
}

TEST(FileNameOfPath, TakesTheLastPart) {
  const struct {
    const char* path;
    const char* name;
  } cases[] = {{"C:/a/b.txt", "b.txt"}, {"C:\\Reports\\summary.pdf", "summary.pdf"}, {"plain.txt", "plain.txt"},
               {"/home/u/r.txt", "r.txt"}, {"C:\\dir\\", ""}};
  for (const auto& c : cases) EXPECT_EQ(Main::FileNameOfPath(c.path), c.name) << c.path;
}

}  // namespace
}  // namespace qorvane
