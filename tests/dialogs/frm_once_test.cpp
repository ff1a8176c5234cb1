// The one-time schedule dialog: what it shows, where it stands, the time it
// picks, and how each way out leaves the record.
#include "dialogs/frm_once.h"

#include "dialogs/schedule_dialog.h"
#include "tests/dialogs/dialog_fixture.h"

namespace qorvane::testing {
namespace {

class FrmOnceTest : public DialogTest {
 protected:
  // Wednesday 2025-03-05 at 14:05:45.
  static CMailProps OneTime() {
    CMailProps record;
    record.m_ScheduleTime = At(2025, 3, 5, 14, 5, 45);
    return record;
  }
};

TEST_F(FrmOnceTest, LoadShowsTheSendTimeOverTheOpener) {
  Slot(OneTime(), DialogRect{7200, 3600, 9000, 7200});
  const auto form = Opened<frmOnce>();
  EXPECT_EQ(scenario::Picture(*form),
            "[frmOnce] Qorvane\n"
            "  Select date and time for the e-mail to be sent. Date: [3/5/2025] Time: [2:05 PM]\n"
            "  Recurrence: (x) Once ( ) Recurrence...\n"
            "  <Qorvane> <Cancel> <Attachments> <Help>");
  EXPECT_EQ((*form)["ctlDate"].value, At(2025, 3, 5, 14, 5, 45));
  EXPECT_EQ((*form)["ctlTime"].value, At(2025, 3, 5, 14, 5, 45));
  EXPECT_TRUE((*form)["ctlTime"].upDown);
  // Centred over the opener: 7200 + (9000 - 4680) / 2, 3600 + (7200 - 3240) / 2.
  EXPECT_EQ(form->rect.left, 9360);
  EXPECT_EQ(form->rect.top, 5580);
  EXPECT_FALSE(form->topmost);
  EXPECT_FALSE(form->unloaded);
}

struct TimeFormatCase {
  const char* locale;
  const char* format;
};

class TimePickerFormat : public FrmOnceTest, public ::testing::WithParamInterface<TimeFormatCase> {};

TEST_P(TimePickerFormat, IsTheLocalesTimeWithoutSeconds) {
  ScopedLocale locale(GetParam().locale);
  ASSERT_TRUE(locale.ok());
  Slot(OneTime());
  EXPECT_EQ((*Opened<frmOnce>())["ctlTime"].customFormat, GetParam().format);
}

INSTANTIATE_TEST_SUITE_P(Locales, TimePickerFormat,
                         ::testing::Values(TimeFormatCase{"en-US", "h:mm tt"}, TimeFormatCase{"en-GB", "HH:mm"},
                                           TimeFormatCase{"de-DE", "HH:mm"}));

TEST_F(FrmOnceTest, PickersAreOffForARecordThatRecurs) {
  for (const bool recurring : {false, true}) {
    CMailProps record = OneTime();
    record.m_IsRecurring = recurring;
    Slot(record);
    const auto form = Opened<frmOnce>();
    EXPECT_EQ((*form)["ctlDate"].enabled, !recurring) << recurring;
    EXPECT_EQ((*form)["ctlTime"].enabled, !recurring) << recurring;
  }
}

TEST_F(FrmOnceTest, KeepOnTopMakesTheDialogTopmost) {
  Slot(OneTime(), DialogRect{}, true);
  EXPECT_TRUE(Opened<frmOnce>()->topmost);
}

// The screen is 28800 x 16200 twips; the dialog 4680 x 3240.
struct PlacementCase {
  const char* name;
  DialogRect opener;
  long left;
  long top;
};

class Placement : public FrmOnceTest, public ::testing::WithParamInterface<PlacementCase> {};

TEST_P(Placement, KeepsTheDialogOnTheScreen) {
  Slot(OneTime(), GetParam().opener);
  const auto form = Opened<frmOnce>();
  EXPECT_EQ(form->rect.left, GetParam().left);
  EXPECT_EQ(form->rect.top, GetParam().top);
  EXPECT_EQ(form->rect.width, 4680) << "the size stays";
}

INSTANTIATE_TEST_SUITE_P(Edges, Placement,
                         ::testing::Values(PlacementCase{"Centred", {7200, 3600, 9000, 7200}, 9360, 5580},
                                           PlacementCase{"RightEdge", {26000, 3600, 2000, 7200}, 28800 - 4680, 5580},
                                           PlacementCase{"BottomEdge", {7200, 15000, 9000, 1000}, 9360, 16200 - 3240},
                                           PlacementCase{"LeftEdge", {-3000, 3600, 1000, 7200}, 0, 5580},
                                           PlacementCase{"TopEdge", {7200, -2000, 9000, 600}, 9360, 0},
                                           PlacementCase{"BottomRightCorner", {30000, 20000, 3000, 3000}, 24120, 12960},
                                           PlacementCase{"NoOpener", {0, 0, 0, 0}, 0, 0}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(CentredOver, ADialogWiderThanTheScreenStartsAtItsLeftEdge) {
  const forms::FormRect rect = dialogs::CentredOver({1000, 1000, 2000, 2000}, 40000, 20000, 28800, 16200);
  EXPECT_EQ(rect.left, 0);
  EXPECT_EQ(rect.top, 0);
}

struct PickCase {
  const char* name;
  std::vector<const char*> steps;
  double sent;
};

class PickedTime : public FrmOnceTest, public ::testing::WithParamInterface<PickCase> {};

TEST_P(PickedTime, IsOnAWholeMinuteOfThePickedDay) {
  const auto record = Slot(OneTime());
  auto form = Opened<frmOnce>();
  for (const char* step : GetParam().steps) Act(*form, {step});
  Act(*form, {"click btnOk"});
  EXPECT_TRUE(form->unloaded);
  EXPECT_TRUE(g_HandOver.Confirmed());
  EXPECT_EQ(record->m_ScheduleTime, GetParam().sent);
}

INSTANTIATE_TEST_SUITE_P(
    Pickers, PickedTime,
    ::testing::Values(PickCase{"AsShownSecondsDropped", {}, At(2025, 3, 5, 14, 5)},
                      // The time picker keeps the seconds it does not show.
                      PickCase{"TimeChanged", {"set ctlTime 9:30"}, At(2025, 3, 5, 9, 30)},
                      // The date picker's own time of day does not count.
                      PickCase{"DateChanged", {"set ctlDate 2025-12-31"}, At(2025, 12, 31, 14, 5)},
                      PickCase{"Both", {"set ctlDate 2026-02-28", "set ctlTime 0:00"}, At(2026, 2, 28)}),
    [](const auto& info) { return std::string(info.param.name); });

struct WayOut {
  const char* name;
  const char* step;
  bool confirmed;
  double sent;
  dialogs::NextDialog next;
};

class WaysOut : public FrmOnceTest, public ::testing::WithParamInterface<WayOut> {};

TEST_P(WaysOut, LeaveTheRecordAsTheUserMeant) {
  const auto record = Slot(OneTime());
  auto form = Opened<frmOnce>();
  Act(*form, {"set ctlTime 9:30", GetParam().step});
  EXPECT_TRUE(form->unloaded);
  EXPECT_EQ(g_HandOver.Confirmed(), GetParam().confirmed);
  EXPECT_EQ(record->m_ScheduleTime, GetParam().sent);
  EXPECT_FALSE(record->m_IsRecurring);
  EXPECT_EQ(form->next, GetParam().next);
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, WaysOut,
    ::testing::Values(WayOut{"Ok", "click btnOk", true, At(2025, 3, 5, 9, 30), dialogs::NextDialog::None},
                      WayOut{"Enter", "press enter", true, At(2025, 3, 5, 9, 30), dialogs::NextDialog::None},
                      WayOut{"Cancel", "click btnCancel", false, At(2025, 3, 5, 14, 5, 45), dialogs::NextDialog::None},
                      WayOut{"Esc", "press esc", false, At(2025, 3, 5, 14, 5, 45), dialogs::NextDialog::None},
                      WayOut{"CloseBox", "close", false, At(2025, 3, 5, 14, 5, 45), dialogs::NextDialog::None},
                      // The picked time is the recurrence's start; its dialog decides.
                      WayOut{"Recurrence", "click optRecurrence", false, At(2025, 3, 5, 9, 30),
                             dialogs::NextDialog::Recurrence}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(FrmOnceTest, HelpOpensTheDialogsPageOfTheHelpFile) {
  Slot(OneTime());
  auto form = Opened<frmOnce>();
  Act(*form, {"click btnHelp", "press f1"});
  const std::string page = "help " + (log_.Folder() / "Help.chm").string() + "::/dialog_once.html";
  EXPECT_EQ(shell_.opened, (std::vector<std::string>{page, page}));
  EXPECT_FALSE(form->unloaded);
}

TEST_F(FrmOnceTest, AttachmentsOpenOverTheDialog) {
  const auto record = Slot(OneTime());
  scenario::ScopedFormView view(user_);
  picker_.files = {"C:\\Reports\\summary.pdf"};
  for (const char* step : {"click btnAddFile", "click btnOK"}) ASSERT_TRUE(user_.Queue(step));
  auto form = Opened<frmOnce>();
  Act(*form, {"click btnAttachments"});
  EXPECT_EQ(user_.Count("frmAttachments"), 1u);
  EXPECT_FALSE(form->unloaded) << "the one-time dialog stays open behind it";
  EXPECT_EQ(record->m_collAttachments, qorvane::AttachmentList{"C:\\Reports\\summary.pdf"});
}

TEST_F(FrmOnceTest, AnEmptySlotIsLoggedAndTheDialogStaysUsable) {
  dialogs::EndHandOver();
  auto form = Opened<frmOnce>();
  EXPECT_TRUE(log_.LogContains("frmDelay.Form_Load")) << log_.LogText();
  Act(*form, {"click btnOk"});
  EXPECT_TRUE(form->unloaded);
}

#ifndef _WIN32
// Nobody can answer a dialog without a window system: it ends as the close
// box ends it, and the opener goes on.
TEST_F(FrmOnceTest, WithoutAWindowSystemTheDialogEndsCancelled) {
  for (const bool recurring : {false, true}) {
    CMailProps record = OneTime();
    record.m_IsRecurring = recurring;
    const auto slot = Slot(record);
    EXPECT_FALSE(dialogs::ShowScheduleDialog()) << recurring;
    EXPECT_EQ(slot->m_ScheduleTime, At(2025, 3, 5, 14, 5, 45)) << recurring;
  }
}
#endif

}  // namespace
}  // namespace qorvane::testing
