// The recurrence dialog: its opening, the store routine's checks and
// questions, the end range kept in step, the handlers that act only on the
// user's own actions, and records loaded and stored back unchanged.
#include "dialogs/frm_recurrence.h"

#include "tests/dialogs/dialog_fixture.h"

namespace qorvane::testing {
namespace {

constexpr const char* kPatternNotValid = "Recurrence pattern is not valid";
constexpr const char* kNumberNotValid = "The number is not valid.";

// The record's recurrence as one comparable line.
std::string Fields(const CMailProps& r) {
  char start[64];
  const CivilDate d = ToCivil(r.m_PatternStartDate);
  const TimeOfDay t = ToTimeOfDay(r.m_StartTime);
  const CivilDate e = ToCivil(r.m_PatternEndDate);
  std::snprintf(start, sizeof start, "%04d-%02d-%02d %02d:%02d:%02d until %04d-%02d-%02d", d.year, d.month, d.day,
                t.hour, t.minute, t.second, e.year, e.month, e.day);
  return "type " + std::to_string(r.m_RecurrenceType) + " interval " + std::to_string(r.m_Interval) + " mask " +
         std::to_string(r.m_DayOfWeekMask) + " day " + std::to_string(r.m_DayOfMonth) + " instance " +
         std::to_string(r.m_Instance) + " month " + std::to_string(r.m_MonthOfYear) + " from " + start +
         (r.m_NoEndDate ? " no end" : " count " + std::to_string(r.m_Occurrences));
}

class FrmRecurrenceTest : public DialogTest {
 protected:
  // Wednesday 2025-03-05 at 14:05:30, not recurring yet: the dialog is
  // reached from the one-time dialog.
  static CMailProps OneTime() {
    CMailProps record;
    record.m_ScheduleTime = At(2025, 3, 5, 14, 5, 30);
    return record;
  }
  static CMailProps Recurring(std::int32_t type, std::int32_t interval, std::int32_t mask, std::int32_t day,
                              std::int32_t instance, std::int32_t month) {
    CMailProps record;
    record.m_IsRecurring = true;
    record.m_ScheduleTime = At(2025, 3, 3, 9, 30);
    record.m_RecurrenceType = type;
    record.m_Interval = interval;
    record.m_DayOfWeekMask = mask;
    record.m_DayOfMonth = day;
    record.m_Instance = instance;
    record.m_MonthOfYear = month;
    record.m_PatternStartDate = At(2025, 3, 3);
    record.m_StartTime = TimeSerial(9, 30, 0);
    record.m_PatternEndDate = At(2025, 4, 4);
    record.m_NoEndDate = false;
    record.m_Occurrences = 10;
    return record;
  }
  std::unique_ptr<frmRecurrence> Open(const CMailProps& record) {
    Slot(record);
    return Opened<frmRecurrence>();
  }
};

TEST_F(FrmRecurrenceTest, OpeningFromTheOneTimeDialogShowsTheWeeklyDefaultsInStep) {
  const auto form = Open(OneTime());
  EXPECT_EQ(scenario::Picture(*form),
            "[frmRecurrence] Qorvane Recurrence\n"
            "  Qorvane time: Start: [2:05 PM]\n"
            "  Recurrence pattern: ( ) Daily (x) Weekly ( ) Monthly ( ) Yearly | Recur every [1] week(s) on: "
            "[ ]Sunday [ ]Monday [ ]Tuesday [x]Wednesday [ ]Thursday [ ]Friday [ ]Saturday\n"
            "  Range of recurrence: Start: [3/5/2025] (x) No end date ( ) End after: [10] occurrences ( ) End by: "
            "[5/7/2025]\n"
            "  <Qorvane> <Cancel> <Remove Recurrence> <Attachments>");
  EXPECT_EQ(Text(*form, "ctlEndDate"), "2025-05-07") << "the tenth Wednesday";
  // The defaults are in the record already, which does not recur yet.
  EXPECT_FALSE(record_->m_IsRecurring);
  EXPECT_EQ(Fields(*record_),
            "type 1 interval 1 mask 8 day 0 instance 0 month 0 from 2025-03-05 14:05:00 until "
            "2025-03-05 no end");
}

TEST_F(FrmRecurrenceTest, CancelKeepsTheOpeningDefaultsUnconfirmed) {
  auto form = Open(OneTime());
  Act(*form, {"click optDaily", "click btnCancel"});
  EXPECT_TRUE(form->unloaded);
  EXPECT_FALSE(g_HandOver.Confirmed());
  EXPECT_FALSE(record_->m_IsRecurring);
  EXPECT_EQ(record_->m_RecurrenceType, kRecursWeekly);
}

struct ShortMonthCase {
  const char* day;
  long answer;
  bool asked;
  bool confirmed;
};

class ShortMonths : public FrmRecurrenceTest, public ::testing::WithParamInterface<ShortMonthCase> {};

TEST_P(ShortMonths, ADayLateInTheMonthIsAskedAbout) {
  boxes_.answer = GetParam().answer;
  auto form = Open(OneTime());
  Act(*form, {"click optMonthly"});
  Act(*form, {(std::string("type txtDayOfMonth3 ") + GetParam().day).c_str(), "click btnOK"});
  const std::string question = std::string("Some months have fewer than ") + GetParam().day +
                               " days. For thease months, the occurrence will fall on the last day of the month.";
  EXPECT_EQ(boxes_.prompts, GetParam().asked ? std::vector<std::string>{question} : std::vector<std::string>{});
  if (GetParam().asked) {
    EXPECT_EQ(boxes_.buttons[0] & 7, vbOKCancel);
  }
  EXPECT_EQ(g_HandOver.Confirmed(), GetParam().confirmed);
  EXPECT_EQ(form->unloaded, GetParam().confirmed);
  if (!GetParam().confirmed) {
    EXPECT_EQ(form->activeControl, "txtDayOfMonth3") << "Cancel puts the focus on the day";
  }
}

INSTANTIATE_TEST_SUITE_P(Days, ShortMonths,
                         ::testing::Values(ShortMonthCase{"28", vbOK, false, true},
                                           ShortMonthCase{"29", vbOK, true, true},
                                           ShortMonthCase{"31", vbOK, true, true},
                                           ShortMonthCase{"31", vbCancel, true, false}));

struct LeapCase {
  const char* start;
  bool accepted;
};

class LeapDay : public FrmRecurrenceTest, public ::testing::WithParamInterface<LeapCase> {};

TEST_P(LeapDay, TheTwentyNinthOfFebruaryNeedsALeapStartYear) {
  auto form = Open(OneTime());
  Act(*form, {(std::string("set ctlStartDate ") + GetParam().start).c_str(), "click optYearly",
              "pick cboMonthOfYear4 february", "type txtDayOfMonth4 29", "click btnOK"});
  EXPECT_EQ(g_HandOver.Confirmed(), GetParam().accepted);
  EXPECT_EQ(boxes_.prompts,
            GetParam().accepted ? std::vector<std::string>{} : std::vector<std::string>{kPatternNotValid});
  if (GetParam().accepted) {
    EXPECT_EQ(record_->m_DayOfMonth, 29);
  }
}

INSTANTIATE_TEST_SUITE_P(Years, LeapDay,
                         ::testing::Values(LeapCase{"2028-01-01", true}, LeapCase{"2025-01-01", false},
                                           LeapCase{"2000-06-30", true}, LeapCase{"2100-01-01", false}));

TEST_F(FrmRecurrenceTest, NoWeekdayCheckedIsNotAPattern) {
  auto form = Open(OneTime());
  Act(*form, {"uncheck arWeekDays(3)", "click btnOK"});
  EXPECT_EQ(boxes_.prompts, std::vector<std::string>{kPatternNotValid});
  EXPECT_FALSE(form->unloaded);
  EXPECT_FALSE(g_HandOver.Confirmed());
  EXPECT_TRUE(log_.LogContains(kPatternNotValid)) << "a refusal is logged too";
}

TEST_F(FrmRecurrenceTest, TypingACountPicksEndAfterAndLeavingItMovesTheEndDate) {
  auto form = Open(OneTime());
  Act(*form, {"type txtOccurrences 5"});
  EXPECT_EQ(Text(*form, "optEndAfter"), "checked");
  EXPECT_EQ(Text(*form, "ctlEndDate"), "2025-05-07") << "typing alone brings nothing in step";
  Act(*form, {"leave txtOccurrences"});
  EXPECT_EQ(Text(*form, "ctlEndDate"), "2025-04-02") << "the fifth Wednesday";
  Act(*form, {"click btnOK"});
  EXPECT_EQ(Fields(*record_),
            "type 1 interval 1 mask 8 day 0 instance 0 month 0 from 2025-03-05 14:05:00 until "
            "2025-04-02 count 5");
}

TEST_F(FrmRecurrenceTest, AnEndBeforeTheFirstOccurrenceBecomesThatOccurrence) {
  auto form = Open(OneTime());
  Act(*form,
      {"set ctlStartDate 2025-03-01", "click optMonthly", "type txtDayOfMonth3 20", "set ctlEndDate 2025-03-02"});
  EXPECT_EQ(Text(*form, "optEndBy"), "checked");
  EXPECT_EQ(Text(*form, "txtOccurrences"), "1");
  EXPECT_EQ(Text(*form, "ctlEndDate"), "2025-03-20");
}

TEST_F(FrmRecurrenceTest, AnEndDateBeyondTheEnginesCapEndsAtTheLastListedOccurrence) {
  auto form = Open(OneTime());
  Act(*form, {"set ctlStartDate 2025-01-01", "click optDaily", "set ctlEndDate 2030-01-01"});
  EXPECT_EQ(Text(*form, "txtOccurrences"), "999");
  EXPECT_EQ((*form)["ctlEndDate"].value, At(2025, 1, 1) + 998);
}

TEST_F(FrmRecurrenceTest, EveryWeekdayIsStoredAsTheClientKnowsItAndLoadsBack) {
  auto form = Open(OneTime());
  Act(*form, {"click optDaily", "click optEveryWeekday1", "click btnOK"});
  EXPECT_EQ(record_->m_RecurrenceType, kRecursDaily);
  EXPECT_EQ(record_->m_Interval, 0);
  EXPECT_EQ(record_->m_DayOfWeekMask, 62);
  const auto again = Open(*record_);
  EXPECT_EQ(Text(*again, "ctlDailyPage"), "shown");
  EXPECT_EQ(Text(*again, "optEveryWeekday1"), "checked");
  EXPECT_EQ(Text(*again, "optInterval1"), "unchecked");
}

// A recurring record loaded and confirmed without a change is stored back
// as it was.
struct RoundTrip {
  const char* name;
  std::int32_t type, interval, mask, day, instance, month;
};

class LoadAndStore : public FrmRecurrenceTest, public ::testing::WithParamInterface<RoundTrip> {};

TEST_P(LoadAndStore, GivesBackTheRecord) {
  const RoundTrip& c = GetParam();
  const CMailProps record = Recurring(c.type, c.interval, c.mask, c.day, c.instance, c.month);
  auto form = Open(record);
  Act(*form, {"click btnOK"});
  EXPECT_TRUE(g_HandOver.Confirmed()) << boxes_.prompts.size();
  EXPECT_EQ(Fields(*record_), Fields(record));
  EXPECT_FALSE(log_.LogContains("Init Failed!"));
}

INSTANTIATE_TEST_SUITE_P(Types, LoadAndStore,
                         ::testing::Values(RoundTrip{"DailyEvery3Days", 0, 3, 0, 0, 0, 0},
                                           RoundTrip{"DailyEveryWeekday", 0, 0, 62, 0, 0, 0},
                                           RoundTrip{"WeeklyMondayFriday", 1, 2, 34, 0, 0, 0},
                                           RoundTrip{"MonthlyDay15", 2, 2, 0, 15, 0, 0},
                                           RoundTrip{"MonthlyLastFriday", 3, 1, 32, 0, 5, 0},
                                           RoundTrip{"MonthlySecondWeekendDay", 3, 3, 65, 0, 2, 0},
                                           RoundTrip{"YearlyJanuary15", 5, 1, 0, 15, 0, 1},
                                           RoundTrip{"YearlyFirstWeekdayOfMarch", 6, 1, 62, 0, 1, 3}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(FrmRecurrenceTest, ARecordTheListsCannotShowIsLoggedAndTheDialogStaysOpen) {
  const std::pair<CMailProps, const char*> records[] = {{Recurring(4, 1, 0, 0, 0, 0), "ctlWeeklyPage"},
                                                        {Recurring(3, 1, 32, 0, 7, 0), "ctlMonthlyPage"},
                                                        {Recurring(6, 1, 5, 0, 1, 3), "ctlYearlyPage"}};
  for (const auto& [record, page] : records) {
    const auto form = Open(record);
    EXPECT_EQ(Text(*form, page), "shown") << page;
    EXPECT_FALSE(form->unloaded);
  }
  std::size_t failures = 0;
  for (const std::string& line : log_.LogLines()) failures += line.find("Init Failed!") != std::string::npos;
  EXPECT_EQ(failures, 3u);
}

struct NumberCase {
  const char* text;
  bool valid;
};

class NumberCheck : public ::testing::TestWithParam<NumberCase> {};

TEST_P(NumberCheck, TakesPositiveWholeNumbersInDigitsOnly) {
  ScopedLocale locale("en-US");
  EXPECT_EQ(frmRecurrence::IsValidNumber(GetParam().text, false), GetParam().valid) << '"' << GetParam().text << '"';
}

INSTANTIATE_TEST_SUITE_P(Texts, NumberCheck,
                         ::testing::Values(NumberCase{"5", true}, NumberCase{" 7 ", true}, NumberCase{"007", true},
                                           NumberCase{"999", true}, NumberCase{"0", false}, NumberCase{"-3", false},
                                           NumberCase{"2.5", false}, NumberCase{"1 2", false}, NumberCase{"", false},
                                           NumberCase{"abc", false}, NumberCase{"+4", false},
                                           NumberCase{"99999999999", false}, NumberCase{"1,000", false}));

struct FieldCase {
  const char* field;
  const char* text;
  const char* message;  // "" when the text is taken
};

class LeavingAField : public FrmRecurrenceTest, public ::testing::WithParamInterface<FieldCase> {};

TEST_P(LeavingAField, KeepsTheFocusOnABadNumber) {
  auto form = Open(Recurring(2, 1, 0, 15, 0, 0));
  const std::string field = GetParam().field;
  for (const char* page : {"click optDaily", "click optMonthly", "click optYearly"}) {
    if (form->Shown(field)) break;
    Act(*form, {page});
  }
  Act(*form, {("type " + field + " " + GetParam().text).c_str()});
  const bool taken = *GetParam().message == '\0';
  EXPECT_EQ(user_.Act(*form, ("leave " + field).c_str()), taken);
  EXPECT_EQ(boxes_.prompts, taken ? std::vector<std::string>{} : std::vector<std::string>{GetParam().message});
  if (!taken) {
    EXPECT_EQ(form->activeControl, field);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Fields, LeavingAField,
    ::testing::Values(FieldCase{"txtInterval1", "0", kNumberNotValid}, FieldCase{"txtInterval1", "4", ""},
                      FieldCase{"txtInterval3", "x", kNumberNotValid}, FieldCase{"txtInterval33", "2", ""},
                      FieldCase{"txtDayOfMonth3", "32", kPatternNotValid}, FieldCase{"txtDayOfMonth3", "31", ""},
                      FieldCase{"txtDayOfMonth4", "-1", kNumberNotValid},
                      FieldCase{"txtOccurrences", "2.5", kNumberNotValid}, FieldCase{"txtOccurrences", "12", ""}));

TEST_F(FrmRecurrenceTest, ABadFieldKeepsTheFocusFromOkButNotFromCancel) {
  auto form = Open(OneTime());
  Act(*form, {"type txtInterval2 0"});
  EXPECT_TRUE(Refused(*form, "click btnOK"));
  EXPECT_EQ(boxes_.prompts, std::vector<std::string>{kNumberNotValid});
  EXPECT_FALSE(form->unloaded);
  Act(*form, {"click btnCancel"});
  EXPECT_TRUE(form->unloaded);
  EXPECT_EQ(boxes_.prompts.size(), 1u) << "Cancel does not check the field";
}

// What each change or click does when it is the user's own (its control is
// the active one) and when the dialog itself changed the control.
struct ActiveCase {
  const char* control;
  bool change;  // a Change event, else a Click
  const char* selects;
};

class OnlyTheUsersOwnActions : public FrmRecurrenceTest, public ::testing::WithParamInterface<ActiveCase> {};

TEST_P(OnlyTheUsersOwnActions, SelectTheirOption) {
  const ActiveCase& c = GetParam();
  auto form = Open(Recurring(0, 0, 62, 0, 0, 0));
  // Every option of the pages and of the end cleared.
  for (auto& control : form->controls) {
    if (control.kind == forms::ControlKind::OptionButton && control.container != "Frame1") control.checked = false;
  }
  const auto event = [&] { c.change ? form->Change(c.control) : form->Click(c.control); };
  form->activeControl = "btnOK";
  event();
  EXPECT_FALSE((*form)[c.selects].checked) << "not the active control: nothing happens";
  form->activeControl = c.control;
  event();
  EXPECT_TRUE((*form)[c.selects].checked);
}

INSTANTIATE_TEST_SUITE_P(
    Family, OnlyTheUsersOwnActions,
    ::testing::Values(
        ActiveCase{"txtInterval1", true, "optInterval1"}, ActiveCase{"txtDayOfMonth3", true, "optDayOfMonth3"},
        ActiveCase{"txtInterval3", true, "optDayOfMonth3"}, ActiveCase{"txtInterval33", true, "optTheMonthNth3"},
        ActiveCase{"cboInstance3", false, "optTheMonthNth3"}, ActiveCase{"cboDayOfWeekMask3", false, "optTheMonthNth3"},
        ActiveCase{"txtDayOfMonth4", true, "optYearly4"}, ActiveCase{"cboMonthOfYear4", false, "optYearly4"},
        ActiveCase{"cboInstance4", false, "optYearNth4"}, ActiveCase{"cboDayOfWeekMask4", false, "optYearNth4"},
        ActiveCase{"cboMonthOfYear44", false, "optYearNth4"}, ActiveCase{"txtOccurrences", true, "optEndAfter"},
        ActiveCase{"ctlEndDate", true, "optEndBy"}));

TEST_F(FrmRecurrenceTest, APatternOptionClickedByTheDialogBringsNothingInStep) {
  auto form = Open(OneTime());
  const double shown = (*form)["ctlEndDate"].value;
  form->SelectOption("optDaily");
  form->activeControl = "btnOK";
  form->Click("optDaily");
  EXPECT_EQ(Text(*form, "ctlDailyPage"), "shown") << "the page is shown all the same";
  EXPECT_EQ((*form)["ctlEndDate"].value, shown);
  Act(*form, {"click optWeekly", "click optDaily"});
  EXPECT_EQ(Text(*form, "ctlEndDate"), "2025-03-14") << "the user's click does: ten days";
}

struct DefaultsCase {
  const char* start;
  const char* option;
  std::vector<std::pair<const char*, const char*>> shown;
};

class PageDefaults : public FrmRecurrenceTest, public ::testing::WithParamInterface<DefaultsCase> {};

TEST_P(PageDefaults, ComeFromTheStartDate) {
  auto form = Open(OneTime());
  Act(*form, {(std::string("set ctlStartDate ") + GetParam().start).c_str(),
              (std::string("click ") + GetParam().option).c_str()});
  for (const auto& [control, value] : GetParam().shown) EXPECT_EQ(Text(*form, control), value) << control;
}

INSTANTIATE_TEST_SUITE_P(
    Starts, PageDefaults,
    ::testing::Values(
        // The 29th of a 31-day month is the last of its weekday, not the fifth.
        DefaultsCase{"2025-03-29",
                     "optMonthly",
                     {{"txtDayOfMonth3", "29"},
                      {"cboInstance3", "last"},
                      {"cboDayOfWeekMask3", "saturday"},
                      {"txtInterval3", "1"},
                      {"txtInterval33", "1"},
                      {"optDayOfMonth3", "checked"}}},
        // The 22nd of a 28-day February is the last Saturday too.
        DefaultsCase{"2025-02-22", "optMonthly", {{"cboInstance3", "last"}}},
        DefaultsCase{"2025-03-08",
                     "optYearly",
                     {{"cboMonthOfYear4", "march"},
                      {"txtDayOfMonth4", "8"},
                      {"cboInstance4", "second"},
                      {"cboDayOfWeekMask4", "saturday"},
                      {"cboMonthOfYear44", "march"},
                      {"optYearly4", "checked"}}},
        DefaultsCase{"2025-03-10",
                     "optWeekly",
                     {{"arWeekDays(1)", "checked"}, {"arWeekDays(3)", "unchecked"}, {"txtInterval2", "1"}}},
        DefaultsCase{"2025-03-10", "optDaily", {{"txtInterval1", "1"}, {"optInterval1", "checked"}}}));

TEST_F(FrmRecurrenceTest, NoEndDateShowsTenAgainAndKeepsTheEndDateInStep) {
  auto form = Open(Recurring(1, 1, 2, 0, 0, 0));
  Act(*form, {"type txtOccurrences 3", "leave txtOccurrences"});
  EXPECT_EQ(Text(*form, "ctlEndDate"), "2025-03-17");
  Act(*form, {"click optNoEndDate"});
  EXPECT_EQ(Text(*form, "txtOccurrences"), "10");
  EXPECT_EQ(Text(*form, "ctlEndDate"), "2025-05-05") << "the tenth Monday, kept while hidden behind no end";
  Act(*form, {"click btnOK"});
  EXPECT_TRUE(record_->m_NoEndDate);
  EXPECT_EQ(record_->m_Occurrences, 0);
}

TEST_F(FrmRecurrenceTest, RemoveRecurrenceHandsTheRecordToTheOneTimeDialog) {
  auto form = Open(Recurring(1, 1, 2, 0, 0, 0));
  Act(*form, {"click btnRemoveRec"});
  EXPECT_TRUE(form->unloaded);
  EXPECT_EQ(form->next, dialogs::NextDialog::Once);
  EXPECT_FALSE(record_->m_IsRecurring);
  EXPECT_FALSE(g_HandOver.Confirmed());
}

struct RecurrenceWayOut {
  const char* name;
  const char* step;
  bool confirmed;
};

class RecurrenceWaysOut : public FrmRecurrenceTest, public ::testing::WithParamInterface<RecurrenceWayOut> {};

// Only OK makes the record recur; every other way out leaves the flag false
// with the opening defaults in the record.
TEST_P(RecurrenceWaysOut, ConfirmOnlyThroughOk) {
  auto form = Open(OneTime());
  Act(*form, {"click optDaily", "type txtInterval1 3", GetParam().step});
  EXPECT_TRUE(form->unloaded);
  EXPECT_EQ(form->next, dialogs::NextDialog::None);
  EXPECT_EQ(g_HandOver.Confirmed(), GetParam().confirmed);
  EXPECT_EQ(record_->m_IsRecurring, GetParam().confirmed);
  EXPECT_EQ(record_->m_RecurrenceType, GetParam().confirmed ? kRecursDaily : kRecursWeekly);
  EXPECT_EQ(record_->m_Interval, GetParam().confirmed ? 3 : 1);
}

INSTANTIATE_TEST_SUITE_P(Buttons, RecurrenceWaysOut,
                         ::testing::Values(RecurrenceWayOut{"Ok", "click btnOK", true},
                                           RecurrenceWayOut{"Enter", "press enter", true},
                                           RecurrenceWayOut{"Cancel", "click btnCancel", false},
                                           RecurrenceWayOut{"Esc", "press esc", false},
                                           RecurrenceWayOut{"CloseBox", "close", false}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(FrmRecurrenceTest, StandsOverTheOpenerAndOnTopWhenAsked) {
  Slot(OneTime(), DialogRect{26000, 15000, 2000, 1000}, true);
  const auto form = Opened<frmRecurrence>();
  EXPECT_EQ(form->rect.left, 28800 - form->rect.width);
  EXPECT_EQ(form->rect.top, 16200 - form->rect.height);
  EXPECT_TRUE(form->topmost);
}

TEST_F(FrmRecurrenceTest, AttachmentsOpenOverTheDialog) {
  const auto record = Slot(Recurring(1, 1, 2, 0, 0, 0));
  scenario::ScopedFormView view(user_);
  picker_.folders = {"D:\\Scans"};
  for (const char* step : {"click btnAddFolder", "click btnOK"}) ASSERT_TRUE(user_.Queue(step));
  auto form = Opened<frmRecurrence>();
  Act(*form, {"click btnAttachments"});
  EXPECT_EQ(user_.Count("frmAttachments"), 1u);
  EXPECT_FALSE(form->unloaded);
  EXPECT_EQ(record->m_collAttachments, qorvane::AttachmentList{"D:\\Scans\\"});
}

TEST_F(FrmRecurrenceTest, HelpOpensTheRecurrencePage) {
  auto form = Open(OneTime());
  Act(*form, {"press f1"});
  EXPECT_EQ(shell_.opened,
            std::vector<std::string>{"help " + (log_.Folder() / "Help.chm").string() + "::/dialog_recurrence.html"});
}

}  // namespace
}  // namespace qorvane::testing
