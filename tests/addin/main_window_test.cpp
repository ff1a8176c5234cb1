// The main window: the Help-menu entries, and editing the schedules of the
// selected deferred mails one by one or all at once.
#include "addin/frm_timer.h"
#include "dialogs/dialog_service.h"
#include "platform/message_box.h"
#include "tests/addin/addin_fixture.h"

namespace qorvane::testing {
namespace {

class MainWindowTest : public AddInTest {
 protected:
  void StartAttached() {
    window_ = S().OpenMainWindow();
    S().Start();
  }
  // The Help menu's entries of the add-in, as "caption (tag)".
  std::vector<std::string> HelpEntries() {
    const auto help = window_->CommandBars()->Item("Menu Bar")->FindControl(0, 30010, "")->CommandBar()->Controls();
    std::vector<std::string> entries;
    for (long i = 1; i <= help->Count(); ++i) {
      const auto entry = help->Item(i);
      if (entry->Tag().rfind("Kelmora", 0) == 0) entries.push_back(entry->Caption() + " (" + entry->Tag() + ")");
    }
    return entries;
  }
  void ShowDeferredFolder() {
    window_->CurrentFolder(Deferred());
  }
  void PressOptions() { S().PressMenuEntry(window_, "KelmoraQorvaneOptions"); }

  client::Ref<client::Explorer> window_;
};

TEST_F(MainWindowTest, AMainWindowAttachedTwiceHasOneEntryOfEach) {
  StartAttached();
  const std::vector<std::string> entries{"About Qorvane... (KelmoraQorvaneAbout)", "Qorvane (KelmoraQorvaneOptions)"};
  EXPECT_EQ(HelpEntries(), entries);
  const auto about = window_->CommandBars()->FindControl(0, 0, "KelmoraQorvaneAbout");
  const auto options = window_->CommandBars()->FindControl(0, 0, "KelmoraQorvaneOptions");
  EXPECT_TRUE(about->BeginGroup());
  EXPECT_FALSE(options->BeginGroup());
  EXPECT_EQ(options->Style(), client::msoButtonIconAndCaption);
  S().Disconnect();
  S().Start();
  EXPECT_EQ(HelpEntries(), entries);
  S().PressMenuEntry(window_, "KelmoraQorvaneAbout");
  EXPECT_EQ(User().Count("frmAbout"), 1u) << "the entry found again is bound again";
}

TEST_F(MainWindowTest, TheFirstPressOnlyGoesToTheFolder) {
  StartAttached();
  Waiting("selected", At(2025, 3, 4, 9, 0));
  PressOptions();
  EXPECT_EQ(window_->CurrentFolder()->FolderPath(), Deferred()->FolderPath());
  EXPECT_TRUE(User().Shown().empty());
}

TEST_F(MainWindowTest, NoMailSelectedDoesNothing) {
  StartAttached();
  ShowDeferredFolder();
  Client().Select(window_, {Client().AddOtherItem(Deferred(), 53, "a meeting")});
  PressOptions();
  EXPECT_TRUE(User().Shown().empty());
  EXPECT_TRUE(Client().MessageBoxes().empty());
}

// Three mails selected: the question, and what each answer does.
struct ManyCase {
  const char* name;
  long answer;
  std::size_t dialogs;
  std::vector<std::string> scheduled;
};

class EditMany : public MainWindowTest, public ::testing::WithParamInterface<ManyCase> {};

TEST_P(EditMany, AsksOnceAndEditsAsAnswered) {
  StartAttached();
  ShowDeferredFolder();
  std::vector<client::Ref<client::Item>> selected;
  for (const char* subject : {"one", "two", "three"}) selected.push_back(Waiting(subject, At(2025, 3, 4, 9, 0)));
  Client().Select(window_, selected);
  Client().SetMessageBoxAnswer(GetParam().answer);
  for (const char* when : {"10:00", "11:00", "12:00"}) User().Queue(std::string("once at 2025-03-05 ") + when + ", OK");
  PressOptions();
  ASSERT_EQ(Client().MessageBoxes().size(), 1u);
  EXPECT_EQ(Client().MessageBoxes()[0].prompt,
            "Subsequent show Qorvane props (yes)\r\nSet Qorvane Time to Selected Items(no)");
  EXPECT_EQ(Client().MessageBoxes()[0].buttons & 7, 3) << "Yes, No, Cancel";
  EXPECT_EQ(User().Shown().size(), GetParam().dialogs);
  std::vector<std::string> scheduled;
  for (const auto& mail : selected) scheduled.push_back(ScheduleTimeOf(mail));
  EXPECT_EQ(scheduled, GetParam().scheduled);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, EditMany,
    ::testing::Values(
        ManyCase{"Yes", qorvane::vbYes, 3, {"3/5/2025 10:00:00 AM", "3/5/2025 11:00:00 AM", "3/5/2025 12:00:00 PM"}},
        ManyCase{"No", qorvane::vbNo, 1, {"3/5/2025 10:00:00 AM", "3/5/2025 10:00:00 AM", "3/5/2025 10:00:00 AM"}},
        ManyCase{"Cancel", qorvane::vbCancel, 0, {"3/4/2025 9:00:00 AM", "3/4/2025 9:00:00 AM", "3/4/2025 9:00:00 AM"}}),
    [](const auto& info) { return std::string(info.param.name); });

// Records whether the scheduler could run while a dialog was open.
class SchedulerWatch final : public qorvane::forms::FormView {
 public:
  explicit SchedulerWatch(scenario::ScriptedUser& user) : user_(user) {}
  void ShowModal(qorvane::forms::Form& form) override {
    if (form.name == "frmOnce") runningDuringDialog = TimerForm().ctlTimer.Enabled();
    user_.ShowModal(form);
  }
  bool runningDuringDialog = true;

 private:
  scenario::ScriptedUser& user_;
};

TEST_F(MainWindowTest, OneMailIsEditedWithTheSchedulerPausedAndDueEditsGoOut) {
  StartAttached();
  ShowDeferredFolder();
  const auto mail = Waiting("edited", At(2025, 3, 4, 9, 0));
  Client().Select(window_, {mail});
  SchedulerWatch watch(User());
  scenario::ScopedFormView installed(watch);
  User().Queue("once at 2025-03-03 09:00, OK");
  PressOptions();
  EXPECT_FALSE(watch.runningDuringDialog);
  EXPECT_TRUE(TimerForm().ctlTimer.Enabled());
  EXPECT_EQ(ScheduleTimeOf(mail), "3/3/2025 9:00:00 AM");
  Client().RunUntil(At(2025, 3, 3, 9, 1));
  EXPECT_EQ(SentSubjects(), std::vector<std::string>{"edited"});
}

TEST_F(MainWindowTest, AnItemEditedOutsideTheFolderIsMovedIn) {
  StartAttached();
  const auto inbox = Client().DefaultFolder(client::olFolderInbox);
  const auto mail = Client().AddMail(inbox, "from the inbox");
  CMailProps props;
  props.m_ScheduleTime = At(2025, 3, 6, 8, 0);
  AddIn()->QorvanePropsApply(props, mail);
  EXPECT_EQ(S().Subjects(inbox), std::vector<std::string>{});
  ASSERT_EQ(S().Subjects(Deferred()), std::vector<std::string>{"from the inbox"});
  EXPECT_EQ(ScheduleTimeOf(Deferred()->Items()->Item(1)), "3/6/2025 8:00:00 AM");
  ExpectCleanLog();
}

TEST_F(MainWindowTest, EveryStepOfApplyingRunsEvenIfOneBeforeFailed) {
  StartAttached();
  const auto mail = Client().AddMail(Client().DefaultFolder(client::olFolderInbox), "stubborn");
  CMailProps props;
  props.m_ScheduleTime = At(2025, 3, 6, 8, 0);
  Client().FailCall("MailItem.Save", 1);
  AddIn()->QorvanePropsApply(props, mail);
  EXPECT_EQ(S().Subjects(Deferred()), std::vector<std::string>{"stubborn"}) << "moved although the save failed";
  EXPECT_TRUE(log_.LogContains("QorvanePropsApply"));
}

TEST_F(MainWindowTest, ItemSendIsOnlyTracedAndNeverCancelled) {
  StartAttached();
  EXPECT_TRUE(Client().SendFromUser(S().ComposeMail("by hand").mail));
  ExpectCleanLog();
}

}  // namespace
}  // namespace qorvane::testing
