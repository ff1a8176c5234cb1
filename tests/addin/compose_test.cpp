// The compose window: which windows get the button and where, and the
// scheduling command from the spell check to the mail's new place.
#include "addin/frm_timer.h"
#include "dialogs/hand_over.h"
#include "platform/screen_metrics.h"
#include "store/marked_mails.h"
#include "tests/addin/addin_fixture.h"

namespace qorvane::testing {
namespace {

std::vector<std::string> ButtonsOf(const client::Ref<client::Inspector>& window) {
  std::vector<std::string> found;
  for (const char* bar : {"Standard", "Qorvane"}) {
    const auto commandBar = window->CommandBars()->Item(bar);
    if (!commandBar) continue;
    const auto controls = commandBar->Controls();
    for (long i = 1; i <= controls->Count(); ++i) {
      const auto control = controls->Item(i);
      if (control->Tag().rfind("KelmoraQorvane", 0) == 0)
        found.push_back(std::string(bar) + "#" + std::to_string(i) + " " + control->Tag());
    }
  }
  return found;
}

class ComposeTest : public AddInTest {
 protected:
  void StartAttached() {
    S().OpenMainWindow();
    S().Start();
  }
};

TEST_F(ComposeTest, OnlyAnUnsentMailGetsTheButtonRightAfterSend) {
  StartAttached();
  const auto composed = S().ComposeMail("new");
  EXPECT_EQ(ButtonsOf(composed.window), std::vector<std::string>{"Standard#2 KelmoraQorvane"});
  const auto button = composed.window->CommandBars()->FindControl(0, 0, "KelmoraQorvane");
  EXPECT_EQ(button->Caption() + " face " + std::to_string(button->FaceId()) + " style " + std::to_string(button->Style()),
            "Qorvane face 2617 style 3");

  const auto sentMail = Client().AddMail(Client().DefaultFolder(client::olFolderInbox), "already sent");
  Client().SendFromUser(sentMail);
  const auto sentItems = Client().DefaultFolder(5)->Items();
  EXPECT_TRUE(ButtonsOf(Client().OpenInspector(sentItems->Item(sentItems->Count()))).empty());
  const auto meeting = Client().AddOtherItem(Client().DefaultFolder(client::olFolderInbox), 53, "meeting");
  EXPECT_TRUE(ButtonsOf(Client().OpenInspector(meeting)).empty());
}

TEST_F(ComposeTest, AWindowHookedTwiceHasOneButton) {
  S().Start();  // no main window: the poll hooks every open window again
  const auto composed = S().ComposeMail("twice");
  Client().Advance(1.0 / 86400);
  EXPECT_EQ(ButtonsOf(composed.window), std::vector<std::string>{"Standard#2 KelmoraQorvane"});
}

TEST_F(ComposeTest, WithoutSendOnStandardTheButtonGoesOnItsOwnBar) {
  const auto composed = S().ComposeMail("no send");
  composed.window->CommandBars()->Item("Standard")->FindControl(0, 2617, "")->Delete();
  S().Start();
  Client().Advance(1.0 / 86400);
  EXPECT_EQ(ButtonsOf(composed.window), std::vector<std::string>{"Qorvane#1 KelmoraQorvane2"});
  User().Queue("once at 2025-03-03 10:00, OK");
  ASSERT_TRUE(S().PressQorvane(composed.window));
  ASSERT_EQ(User().Shown().size(), 1u);
  EXPECT_TRUE(User().Shown()[0].keepOnTop) << "only the own bar's button keeps the dialog on top";
}

// The spelling option as the client keeps it, and whether the command runs.
struct SpellCase {
  std::optional<std::int32_t> check;
  int runs;
};

class SpellCheck : public ComposeTest, public ::testing::WithParamInterface<SpellCase> {};

TEST_P(SpellCheck, RunsWhenTheClientsOptionAsksForIt) {
  if (GetParam().check) SetSpellingCheck(*GetParam().check);
  StartAttached();
  const auto composed = S().ComposeMail("spelled");
  User().Queue("Cancel");
  S().PressQorvane(composed.window);
  EXPECT_EQ(Client().SpellChecks(), GetParam().runs);
  EXPECT_EQ(User().Count("frmOnce"), 1u) << "scheduling goes on after the check";
}

INSTANTIATE_TEST_SUITE_P(Options, SpellCheck,
                         ::testing::Values(SpellCase{std::nullopt, 0}, SpellCase{0, 0}, SpellCase{1, 1},
                                           SpellCase{-1, 1}));

TEST_F(ComposeTest, AMissingSpellingCommandIsLoggedAndSchedulingGoesOn) {
  SetSpellingCheck(1);
  StartAttached();
  const auto composed = S().ComposeMail("spelled");
  composed.window->CommandBars()->FindControl(0, 2, "")->Delete();
  User().Queue("once at 2025-03-03 10:00, OK");
  S().PressQorvane(composed.window);
  EXPECT_TRUE(log_.LogContains("Error(custom) : QorvaneClick\tCant find spell checking button in Menu Bar"));
  EXPECT_EQ(S().Subjects(S().DeferredFolder()), std::vector<std::string>{"spelled"});
}

TEST_F(ComposeTest, AMailWithoutRecipientsIsToldSoAndStaysOpen) {
  StartAttached();
  const auto composed = S().ComposeMail("nobody", "");
  User().Queue("once at 2025-03-03 10:00, OK");
  S().PressQorvane(composed.window);
  ASSERT_EQ(Client().MessageBoxes().size(), 1u);
  EXPECT_EQ(Client().MessageBoxes()[0].prompt,
            "There must be at least one name or distribution list in the To, Cc, or Bcc box.");
  EXPECT_TRUE(User().Shown().empty());
  EXPECT_EQ(Client().Application()->Inspectors()->Count(), 1);
  EXPECT_TRUE(TimerForm().ctlTimer.Enabled()) << "the scheduler is back";
}

TEST_F(ComposeTest, CancelLeavesTheMailAsItWasAndItsWindowOpen) {
  StartAttached();
  const auto composed = S().ComposeMail("undecided");
  User().Queue("Cancel");
  S().PressQorvane(composed.window);
  EXPECT_EQ(composed.mail->UserProperties()->Count(), 0);
  EXPECT_EQ(Client().Application()->Inspectors()->Count(), 1);
  EXPECT_EQ(S().Subjects(S().DeferredFolder()), std::vector<std::string>{});
  EXPECT_EQ(g_HandOver.m_MailProps, nullptr) << "the slot let go of the record";
}

TEST_F(ComposeTest, TheDialogOpensOverTheComposeWindowInTwips) {
  const ScreenMetrics screen{12.0, 15.0, 23040.0, 16200.0};  // 120 dpi across, 96 down
  SetScreenMetrics(&screen);
  StartAttached();
  const auto composed = S().ComposeMail("placed");
  User().Queue("Cancel");
  S().PressQorvane(composed.window);
  SetScreenMetrics(nullptr);
  ASSERT_EQ(User().Shown().size(), 1u);
  const client::WindowRect pixels = composed.window->Rect();
  const auto units = [](long value, int factor) { return static_cast<std::int32_t>(value * factor); };
  EXPECT_EQ(User().Shown()[0].openerRect, (DialogRect{units(pixels.Left, 12), units(pixels.Top, 15),
                                                      units(pixels.Width, 12), units(pixels.Height, 15)}));
  EXPECT_FALSE(User().Shown()[0].keepOnTop);
}

TEST_F(ComposeTest, AMailAlreadyInTheFolderIsOnlySavedAndClosed) {
  StartAttached();
  const auto mail = Waiting("again", At(2025, 3, 4, 9, 0));
  const std::string entryId = mail->EntryID();
  const auto window = Client().OpenInspector(mail);
  User().Queue("once at 2025-03-05 11:00, OK");
  S().PressQorvane(window);
  const auto items = S().DeferredFolder()->Items();
  ASSERT_EQ(items->Count(), 1);
  EXPECT_EQ(items->Item(1)->EntryID(), entryId) << "not moved";
  EXPECT_EQ(ScheduleTimeOf(items->Item(1)), "3/5/2025 11:00:00 AM");
  EXPECT_EQ(Client().Application()->Inspectors()->Count(), 0);
}

TEST_F(ComposeTest, WithoutAMainWindowTheMailIsMarkedNotMoved) {
  S().Start();
  const auto composed = S().ComposeMail("marked");
  User().Queue("once at 2025-03-03 10:00, OK");
  S().PressQorvane(composed.window);
  EXPECT_NE(composed.mail->UserProperties()->Find(mSpecial::kMarkProperty), nullptr);
  EXPECT_EQ(S().DeferredFolder(), nullptr) << "no folder made without a main window";
  EXPECT_EQ(Client().Application()->Inspectors()->Count(), 0) << "closed, saved";
}

TEST_F(ComposeTest, ARecurringMailOpensTheRecurrenceDialogAndStartsOnItsFirstOccurrence) {
  StartAttached();
  CMailProps monthly;
  monthly.m_IsRecurring = true;
  monthly.m_RecurrenceType = kRecursMonthNth;
  monthly.m_Interval = 1;
  monthly.m_Instance = kInstanceLast;
  monthly.m_DayOfWeekMask = 32;
  monthly.m_NoEndDate = true;
  monthly.m_StartTime = TimeSerial(16, 0, 0);
  monthly.m_PatternStartDate = At(2025, 3, 28);
  monthly.m_ScheduleTime = At(2025, 3, 28, 16, 0);
  const auto mail = WaitingWith("report", monthly);
  const auto window = Client().OpenInspector(mail);
  User().Queue("monthly on the second Tuesday at 8:15 from 2025-03-01, no end, OK");
  S().PressQorvane(window);
  EXPECT_EQ(User().Count("frmRecurrence"), 1u);
  EXPECT_EQ(User().Count("frmOnce"), 0u);
  EXPECT_EQ(ScheduleTimeOf(S().DeferredFolder()->Items()->Item(1)), "3/11/2025 8:15:00 AM");
}

}  // namespace
}  // namespace qorvane::testing
