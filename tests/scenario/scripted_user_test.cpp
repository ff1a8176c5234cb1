// The scripted user in the schedule dialogs: what each decision does to the
// record in the hand-over slot, which dialogs it passes through, and the
// dialog's refusals and questions.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "base/ole_date.h"
#include "dialogs/hand_over.h"
#include "platform/file_picker.h"
#include "platform/message_box.h"
#include "scenario/scripted_user.h"
#include "schedule/first_dow.h"
#include "tests/support/test_env.h"

namespace scenario {
namespace {

using qorvane::DateSerialRollOver;
using qorvane::TimeSerial;

class RecordedBoxes final : public qorvane::MessageBoxService {
 public:
  long Show(const std::string& prompt, long buttons, const std::string&) override {
    prompts.push_back(prompt);
    return answer;
  }
  std::vector<std::string> prompts;
  long answer = qorvane::vbOK;
};

std::string DateText(double date) {
  const qorvane::CivilDate c = qorvane::ToCivil(date);
  const qorvane::TimeOfDay t = qorvane::ToTimeOfDay(date);
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", c.year, c.month, c.day, t.hour, t.minute, t.second);
  return text;
}

// The record as the fields the dialogs write.
std::string Fields(const CMailProps& r) {
  if (!r.m_IsRecurring) return "once " + DateText(r.m_ScheduleTime);
  return "type " + std::to_string(r.m_RecurrenceType) + " interval " + std::to_string(r.m_Interval) + " mask " +
         std::to_string(r.m_DayOfWeekMask) + " day " + std::to_string(r.m_DayOfMonth) + " instance " +
         std::to_string(r.m_Instance) + " month " + std::to_string(r.m_MonthOfYear) + " from " +
         DateText(r.m_PatternStartDate + r.m_StartTime) + " until " + DateText(r.m_PatternEndDate).substr(0, 10) +
         (r.m_NoEndDate ? " no end" : " count " + std::to_string(r.m_Occurrences));
}

class ScriptedUserTest : public ::testing::Test {
 protected:
  ScriptedUserTest() { qorvane::SetMessageBox(&boxes_); }
  ~ScriptedUserTest() override {
    qorvane::SetMessageBox(nullptr);
    g_HandOver = saved_;
  }

  // A one-time record on Wednesday 2025-03-05 at 14:05:30.
  static CMailProps OneTime() {
    CMailProps record;
    record.m_ScheduleTime = DateSerialRollOver(2025, 3, 5) + TimeSerial(14, 5, 30);
    return record;
  }

  // Opens the record's dialog with the answers queued; what the opener reads.
  bool Open(const CMailProps& record, const std::vector<std::string>& answers) {
    for (const std::string& line : answers) {
      std::string error;
      EXPECT_TRUE(user_.Queue(line, &error)) << error;
    }
    record_ = std::make_shared<CMailProps>(record);
    dialogs::BeginHandOver(record_, false, DialogRect{});
    const bool confirmed = dialogs::ShowScheduleDialog();
    dialogs::EndHandOver();
    return confirmed;
  }
  std::vector<std::string> Forms() const {
    std::vector<std::string> forms;
    for (const ShownDialog& shown : user_.Shown()) forms.push_back(shown.form);
    return forms;
  }

  qorvane::testing::ScopedLocale locale_{"en-US"};
  qorvane::testing::ScopedLogFolder log_;
  RecordedBoxes boxes_;
  ScriptedUser user_;
  ScopedFormView installed_{user_};
  DialogHandOver saved_ = g_HandOver;
  std::shared_ptr<CMailProps> record_;
};

struct EffectCase {
  const char* name;
  std::vector<std::string> answers;
  bool confirmed;
  std::vector<std::string> forms;
  const char* record;
};

class Effects : public ScriptedUserTest, public ::testing::WithParamInterface<EffectCase> {};

TEST_P(Effects, OnTheRecordAsTheDialogsWrite) {
  EXPECT_EQ(Open(OneTime(), GetParam().answers), GetParam().confirmed);
  EXPECT_EQ(Forms(), GetParam().forms);
  EXPECT_EQ(Fields(*record_), GetParam().record);
  EXPECT_EQ(user_.Pending(), 0u);
}

const std::vector<std::string> kOnce{"frmOnce"};
const std::vector<std::string> kOnceThenRecurrence{"frmOnce", "frmRecurrence"};

INSTANTIATE_TEST_SUITE_P(
    Decisions, Effects,
    ::testing::Values(
        EffectCase{"OnceOnAWholeMinute", {"once at 2025-03-07 09:45, OK"}, true, kOnce, "once 2025-03-07 09:45:00"},
        EffectCase{"Cancel", {"Cancel"}, false, kOnce, "once 2025-03-05 14:05:30"},
        EffectCase{"NoAnswerIsCancel", {}, false, kOnce, "once 2025-03-05 14:05:30"},
        EffectCase{"OncePickedThenCancelled", {"once at 2025-03-07 09:45, Cancel"}, false, kOnce,
                   "once 2025-03-05 14:05:30"},
        // Switching keeps the shown time (seconds dropped) as the start; the
        // recurrence dialog's defaults are on the record even when cancelled.
        EffectCase{"SwitchedThenCancelledKeepsTheDefaultsUnconfirmed",
                   {"weekly every 1 week on Wednesday, Cancel"},
                   false,
                   kOnceThenRecurrence,
                   "once 2025-03-05 14:05:00"},
        EffectCase{"WeeklyTenTimes",
                   {"weekly every 1 week on Monday and Friday at 9:30 from 2025-03-03, 10 times, OK"},
                   true,
                   kOnceThenRecurrence,
                   "type 1 interval 1 mask 34 day 0 instance 0 month 0 from 2025-03-03 09:30:00 until 2025-04-04 count 10"},
        EffectCase{"DefaultsKeepTheShownStart",
                   {"daily every weekday, no end, OK"},
                   true,
                   kOnceThenRecurrence,
                   "type 0 interval 0 mask 62 day 0 instance 0 month 0 from 2025-03-05 14:05:00 until 2025-03-18 no end"},
        EffectCase{"MonthlyLastFriday",
                   {"monthly on the last Friday at 16:00, no end, OK"},
                   true,
                   kOnceThenRecurrence,
                   "type 3 interval 1 mask 32 day 0 instance 5 month 0 from 2025-03-05 16:00:00 until 2025-12-26 no end"},
        EffectCase{"UntilADateCountsTheOccurrences",
                   {"daily every 2 days at 8:00 from 2025-03-01, until 2025-03-10, OK"},
                   true,
                   kOnceThenRecurrence,
                   "type 0 interval 2 mask 0 day 0 instance 0 month 0 from 2025-03-01 08:00:00 until 2025-03-10 count 5"},
        // The day-number option leaves the mask as the weekly defaults set it.
        EffectCase{"AnEndBeforeTheFirstOccurrenceIsThatOccurrence",
                   {"monthly on day 20 at 8:00 from 2025-03-01, until 2025-03-02, OK"},
                   true,
                   kOnceThenRecurrence,
                   "type 2 interval 1 mask 8 day 20 instance 0 month 0 from 2025-03-01 08:00:00 until 2025-03-20 count 1"},
        EffectCase{"ARefusedAnswerLeavesTheDialogOpenForTheNext",
                   {"weekly every 1 week on", "weekly every 1 week on Tuesday at 7:00, 2 times, OK"},
                   true,
                   kOnceThenRecurrence,
                   "type 1 interval 1 mask 4 day 0 instance 0 month 0 from 2025-03-05 07:00:00 until 2025-03-18 count 2"},
        EffectCase{"AYearlyDateTheStartYearLacksIsRefused",
                   {"yearly on February 29 from 2025-01-01, no end, OK"},
                   false,
                   kOnceThenRecurrence,
                   "once 2025-03-05 14:05:00"},
        // The second occurrence falls on the last day of February.
        EffectCase{"AYearlyDateOfALeapYear",
                   {"yearly on February 29 at 12:00 from 2028-01-01, 2 times, OK"},
                   true,
                   kOnceThenRecurrence,
                   "type 5 interval 1 mask 8 day 29 instance 0 month 2 from 2028-01-01 12:00:00 until 2029-02-28 count 2"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ScriptedUserTest, RemoveRecurrenceHandsOverToTheOneTimeDialog) {
  CMailProps weekly = OneTime();
  weekly.m_IsRecurring = true;
  weekly.m_RecurrenceType = qorvane::kRecursWeekly;
  weekly.m_Interval = 1;
  weekly.m_DayOfWeekMask = 8;
  weekly.m_NoEndDate = true;
  weekly.m_PatternStartDate = DateSerialRollOver(2025, 3, 5);
  weekly.m_StartTime = TimeSerial(14, 5, 0);
  EXPECT_TRUE(Open(weekly, {"once at 2025-04-01 08:00, OK"}));
  EXPECT_EQ(Forms(), (std::vector<std::string>{"frmRecurrence", "frmOnce"}));
  EXPECT_EQ(Fields(*record_), "once 2025-04-01 08:00:00");
}

TEST_F(ScriptedUserTest, ADayLateInTheMonthIsAskedAboutAndCancelKeepsTheDialogOpen) {
  boxes_.answer = qorvane::vbCancel;
  EXPECT_FALSE(Open(OneTime(), {"monthly on day 31, no end, OK"}));
  ASSERT_EQ(boxes_.prompts.size(), 1u);
  EXPECT_EQ(boxes_.prompts[0],
            "Some months have fewer than 31 days. For thease months, the occurrence will fall on the last day of the month.");
  boxes_.answer = qorvane::vbOK;
  boxes_.prompts.clear();
  EXPECT_TRUE(Open(OneTime(), {"monthly on day 28, no end, OK"}));
  EXPECT_TRUE(boxes_.prompts.empty()) << "28 asks nothing";
}

TEST_F(ScriptedUserTest, RefusalsShowTheDialogsMessages) {
  const std::pair<const char*, const char*> cases[] = {
      {"weekly every 1 week on", "Recurrence pattern is not valid"},
      {"daily every 0 days", "The number is not valid."},
      {"monthly on day 32", "Recurrence pattern is not valid"},
      {"daily every 1 day, 0 times", "The number is not valid."}};
  for (const auto& [line, message] : cases) {
    boxes_.prompts.clear();
    EXPECT_FALSE(Open(OneTime(), {line})) << line;
    EXPECT_EQ(boxes_.prompts, std::vector<std::string>{message}) << line;
  }
}

// Counts the pickers nobody's chosen path answered.
class UnansweredPicker final : public qorvane::FilePickerService {
 public:
  std::string OpenFile(const qorvane::OpenFileRequest&) override {
    ++asked;
    return {};
  }
  std::string OpenFolder(std::size_t) override {
    ++asked;
    return {};
  }
  int asked = 0;
};

// The pickers answer with the paths chosen, in order; "" cancels one, and a
// picker opened with none left goes to the pickers in place before.
TEST_F(ScriptedUserTest, ChosenPathsAnswerTheAttachmentsDialogsPickers) {
  UnansweredPicker before;
  qorvane::SetFilePicker(&before);
  const bool confirmed =
      Open(OneTime(), {"click btnAttachments", "choose C:\\Reports\\summary.pdf", "click btnAddFile",
                       "choose C:\\Data", "click btnAddFolder", "choose \"\"", "click btnAddFile",
                       "expect lvFiles summary.pdf | C:\\Reports\\summary.pdf; <LastModificated> | C:\\Data\\",
                       "click btnAddFolder", "click btnOK", "once at 2025-03-07 09:45, OK"});
  qorvane::SetFilePicker(nullptr);
  EXPECT_TRUE(confirmed);
  EXPECT_EQ(Forms(), (std::vector<std::string>{"frmOnce", "frmAttachments"}));
  EXPECT_EQ(record_->m_collAttachments, (qorvane::AttachmentList{"C:\\Reports\\summary.pdf", "C:\\Data\\"}));
  EXPECT_EQ(before.asked, 1) << "only the picker opened after the chosen paths ran out";
  EXPECT_EQ(&qorvane::CurrentFilePicker(), &qorvane::PlatformFilePicker()) << "the pickers are put back";
  EXPECT_TRUE(user_.Problems().empty()) << user_.Problems().front();
}

TEST(ChooseStep, ReadsThePathAndWritesItBack) {
  for (const char* line : {"choose C:\\Reports\\summary.pdf", "choose \"\"", "choose D:\\My Files\\a b.txt"}) {
    const ParsedStep parsed = ParseStep(line);
    ASSERT_TRUE(parsed.step.has_value()) << line << ": " << parsed.error;
    EXPECT_EQ(parsed.step->kind, StepKind::Choose);
    EXPECT_EQ(StepText(*parsed.step), line);
  }
  EXPECT_FALSE(ParseStep("choose").step.has_value());
  EXPECT_EQ(ParseStep("choose \"C:\\quoted path\"").step->value, "C:\\quoted path");
}

TEST_F(ScriptedUserTest, TheAboutBoxIsOnlyShown) {
  dialogs::CurrentDialogService().ShowAbout();
  EXPECT_EQ(user_.Count("frmAbout"), 1u);
}

}  // namespace
}  // namespace scenario
