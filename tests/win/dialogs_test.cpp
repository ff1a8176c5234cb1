// The add-in's four dialogs as real Win32 windows under wine: opened through
// the dialog service over the hand-over slot, driven through their controls
// as a person would (clicks, typing, picker values, list and combo choices,
// keys, the validation messages answered), and judged by the record and the
// result flag they leave.

// First: the registry wrapper names its roots as <windows.h> names its macros.
#include "tests/support/registry_sandbox.h"
// clang-format off
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <dlgs.h>
#include <shlobj.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>
// clang-format on

#include "dialog_driver.h"
#include "dialogs/dialog_service.h"
#include "dialogs/frm_attachments.h"
#include "dialogs/frm_once.h"
#include "dialogs/frm_recurrence.h"
#include "dialogs/hand_over.h"
#include "infra/ignore_list.h"
#include "infra/settings.h"
#include "platform/form_templates.h"
#include "platform/shell.h"
#include "schedule/mail_props.h"
#include "scoped_screen.h"
#include "store/version.h"
#include "support/frm_about.h"
#include "tests/support/test_env.h"
#include "win/com/apartment.h"
#include "win/com/wide_text.h"

namespace qorvane::testing {
namespace {

// Monday 3 March 2025 9:30, and a later pick: Monday 7 April 2025 14:05:30.
constexpr double kMonday = 45719.0;
constexpr double kSend = kMonday + (9 * 60 + 30) / 1440.0;
constexpr double kApril7 = kMonday + 35;
constexpr double kPicked = kApril7 + (14 * 3600 + 5 * 60 + 30) / 86400.0;
constexpr double kPickedToTheMinute = kApril7 + (14 * 60 + 5) / 1440.0;
constexpr double kTolerance = 1e-7;  // well under a second

// The opener's window: 600 x 400 pixels at (100, 100), its centre (400, 300).
const DialogRect kOpener{1500, 1500, 9000, 6000};

bool Checked(HWND dialog, const char* form, const char* control) {
  return SendMessageW(ControlWindow(dialog, form, control), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

std::shared_ptr<CMailProps> OneTimeRecord() {
  auto record = std::make_shared<CMailProps>();
  record->m_ScheduleTime = kSend;
  return record;
}

class RecordingShell final : public ShellService {
 public:
  RecordingShell() { SetShell(this); }
  ~RecordingShell() override { SetShell(nullptr); }
  RecordingShell(const RecordingShell&) = delete;
  RecordingShell& operator=(const RecordingShell&) = delete;

  bool Open(const std::string& target) override {
    opened.push_back(target);
    return true;
  }
  bool ShowHelpTopic(const std::string&, const std::string& page) override {
    opened.push_back("help " + page);
    return true;
  }
  std::vector<std::string> opened;
};

class RealDialogs : public ::testing::Test {
 protected:
  RealDialogs() : savedHandOver_(g_HandOver), savedIgnoreList_(g_IgnoreList) {}
  ~RealDialogs() override {
    g_HandOver = savedHandOver_;
    g_IgnoreList = savedIgnoreList_;
  }

  // The opener's command: the record into the slot, the schedule dialog
  // shown, the slot emptied; true when the user confirmed.
  bool Schedule(const std::shared_ptr<CMailProps>& record) {
    dialogs::BeginHandOver(record, false, kOpener);
    const bool confirmed = dialogs::ShowScheduleDialog();
    dialogs::EndHandOver();
    return confirmed;
  }

  static void ExpectFinished(const DialogDriver& driver) {
    EXPECT_TRUE(driver.Done()) << "steps left over";
    EXPECT_FALSE(driver.TimedOut());
  }

  // A refused conversion stays in Err after a check, as in the runtime.
  ScopedErr err_;
  ScopedLocale locale_{"en-US"};
  ScopedLogFolder log_;
  ScopedRegistryKeys registry_{{settings::StoreKeyPath(settings::kAppName, settings::kSettingsSection)}};
  ScopedScreen screen_;
  DialogHandOver savedHandOver_;
  CIgnoreList savedIgnoreList_;
};

// --- the one-time dialog: every way out ------------------------------------------

struct OnceEnding {
  const char* name;
  std::function<void(DialogDriver&)> finish;
  bool confirmed;
};

class OneTimeDialog : public RealDialogs, public ::testing::WithParamInterface<OnceEnding> {};

TEST_P(OneTimeDialog, OpensOverTheOpenerAndKeepsThePickedMinuteOnlyWhenConfirmed) {
  const OnceEnding& c = GetParam();
  auto record = OneTimeRecord();
  DialogDriver driver;
  driver.Do("frmOnce", [](HWND dialog) {
    EXPECT_EQ(TextOf(dialog), L"Qorvane");
    EXPECT_EQ(TextOf(ControlWindow(dialog, "frmOnce", "btnOk")), L"Qorvane");
    // The locale's time without its seconds, in the spinner picker.
    EXPECT_EQ(TextOf(ControlWindow(dialog, "frmOnce", "ctlTime")), L"9:30 AM");
    EXPECT_TRUE(GetWindowLongW(ControlWindow(dialog, "frmOnce", "ctlTime"), GWL_STYLE) & DTS_UPDOWN);
    EXPECT_TRUE(Checked(dialog, "frmOnce", "optOnce"));
    RECT frame = {};
    GetWindowRect(dialog, &frame);
    EXPECT_NEAR((frame.left + frame.right) / 2, 400, 1);
    EXPECT_NEAR((frame.top + frame.bottom) / 2, 300, 1);
  });
  driver.SetDate("frmOnce", "ctlDate", kPicked).SetDate("frmOnce", "ctlTime", kPicked);
  c.finish(driver);
  const bool confirmed = Schedule(record);
  ExpectFinished(driver);
  EXPECT_EQ(confirmed, c.confirmed);
  EXPECT_NEAR(record->m_ScheduleTime, c.confirmed ? kPickedToTheMinute : kSend, kTolerance);
  EXPECT_FALSE(record->m_IsRecurring);
}

INSTANTIATE_TEST_SUITE_P(
    Win32, OneTimeDialog,
    ::testing::Values(OnceEnding{"OkButton", [](DialogDriver& d) { d.Click("frmOnce", "btnOk"); }, true},
                      OnceEnding{"Enter", [](DialogDriver& d) { d.Key("frmOnce", VK_RETURN); }, true},
                      OnceEnding{"CancelButton", [](DialogDriver& d) { d.Click("frmOnce", "btnCancel"); }, false},
                      OnceEnding{"Esc", [](DialogDriver& d) { d.Key("frmOnce", VK_ESCAPE); }, false},
                      OnceEnding{"CloseBox", [](DialogDriver& d) { d.CloseBox("frmOnce"); }, false}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(RealDialogs, AnOpenerAtTheScreensCornerKeepsTheDialogOnTheScreenAndOnTop) {
  const ScreenMetrics screen = CurrentScreenMetrics();
  const auto screenRight = static_cast<LONG>(screen.width / screen.unitsPerPixelX);
  const auto screenBottom = static_cast<LONG>(screen.height / screen.unitsPerPixelY);
  const DialogRect corner{static_cast<std::int32_t>(screen.width) - 1500, static_cast<std::int32_t>(screen.height) - 1500,
                          3000, 3000};
  DialogDriver driver;
  driver.Do("frmOnce", [&](HWND dialog) {
    RECT frame = {};
    GetWindowRect(dialog, &frame);
    EXPECT_NEAR(frame.right, screenRight, 1);
    EXPECT_NEAR(frame.bottom, screenBottom, 1);
    EXPECT_TRUE(GetWindowLongW(dialog, GWL_EXSTYLE) & WS_EX_TOPMOST);
    // What the dialog owns (a picker's drop-down calendar) shows over it.
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM owner) -> BOOL {
          if (GetWindow(window, GW_OWNER) == reinterpret_cast<HWND>(owner)) {
            EXPECT_TRUE(GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST);
          }
          return TRUE;
        },
        reinterpret_cast<LPARAM>(dialog));
  });
  driver.Click("frmOnce", "btnOk");
  dialogs::BeginHandOver(OneTimeRecord(), true, corner);
  EXPECT_TRUE(dialogs::ShowScheduleDialog());
  dialogs::EndHandOver();
  ExpectFinished(driver);
}

// --- the recurrence dialog, reached from the one-time dialog -----------------------

constexpr const char* kNumberNotValid = "The number is not valid.";
constexpr const char* kDay31 =
    "Some months have fewer than 31 days. For thease months, the occurrence will fall on the last day of the month.";

struct RecurrenceCase {
  const char* name;
  std::function<void(DialogDriver&)> script;  // after "Recurrence..." was clicked
  std::vector<const char*> messages;          // the message boxes, in order
  bool confirmed;
  std::function<void(const CMailProps&)> check;
};

class RecurrenceDialog : public RealDialogs, public ::testing::WithParamInterface<RecurrenceCase> {};

TEST_P(RecurrenceDialog, StoresWhatItsControlsSayAndRefusesWhatTheyMayNot) {
  const RecurrenceCase& c = GetParam();
  auto record = OneTimeRecord();
  DialogDriver driver(std::chrono::seconds(20));
  driver.Click("frmOnce", "optRecurrence");
  // The defaults from the one-time send: weekly on its Monday, no end, from its start.
  driver.Do("frmRecurrence", [](HWND dialog) {
    EXPECT_EQ(TextOf(dialog), L"Qorvane Recurrence");
    EXPECT_TRUE(Checked(dialog, "frmRecurrence", "optWeekly"));
    EXPECT_TRUE(IsWindowVisible(ControlWindow(dialog, "frmRecurrence", "txtInterval2")));
    EXPECT_FALSE(IsWindowVisible(ControlWindow(dialog, "frmRecurrence", "txtInterval1")));
    EXPECT_TRUE(Checked(dialog, "frmRecurrence", "arWeekDays(1)"));
    EXPECT_TRUE(Checked(dialog, "frmRecurrence", "optNoEndDate"));
    EXPECT_EQ(TextOf(ControlWindow(dialog, "frmRecurrence", "ctlStartTime")), L"9:30 AM");
  });
  c.script(driver);
  const bool confirmed = Schedule(record);
  ExpectFinished(driver);
  std::vector<std::wstring> expected;
  for (const char* message : c.messages) expected.push_back(WideFromUtf8(message));
  EXPECT_EQ(driver.Messages(), expected);
  EXPECT_EQ(confirmed, c.confirmed);
  c.check(*record);
}

void FocusIn(DialogDriver& d, const char* control) {
  d.Do("frmRecurrence", [control](HWND dialog) {
    EXPECT_EQ(GetFocus(), ControlWindow(dialog, "frmRecurrence", control)) << "the focus is not back in " << control;
  });
}

const RecurrenceCase kRecurrenceCases[] = {
    {"WeeklyOnMondayAndFridayTenTimes",
     [](DialogDriver& d) {
       d.Click("frmRecurrence", "arWeekDays(5)");
       d.Type("frmRecurrence", "txtOccurrences", "10");
       d.Do("frmRecurrence", [](HWND dialog) { EXPECT_TRUE(Checked(dialog, "frmRecurrence", "optEndAfter")); });
       d.Click("frmRecurrence", "btnOK");
     },
     {}, true,
     [](const CMailProps& r) {
       EXPECT_TRUE(r.m_IsRecurring);
       EXPECT_EQ(r.m_RecurrenceType, kRecursWeekly);
       EXPECT_EQ(r.m_Interval, 1);
       EXPECT_EQ(r.m_DayOfWeekMask, 34);
       EXPECT_FALSE(r.m_NoEndDate);
       EXPECT_EQ(r.m_Occurrences, 10);
       EXPECT_EQ(r.m_PatternStartDate, kMonday);
       EXPECT_NEAR(r.m_StartTime, kSend - kMonday, kTolerance);
     }},
    {"AnEndDatePickedCountsTheOccurrencesUpToIt",
     [](DialogDriver& d) {
       d.SetDate("frmRecurrence", "ctlEndDate", kMonday + 28);  // the fifth Monday
       d.Do("frmRecurrence", [](HWND dialog) {
         EXPECT_TRUE(Checked(dialog, "frmRecurrence", "optEndBy"));
         EXPECT_EQ(TextOf(ControlWindow(dialog, "frmRecurrence", "txtOccurrences")), L"5");
       });
       d.Click("frmRecurrence", "btnOK");
     },
     {}, true,
     [](const CMailProps& r) {
       EXPECT_FALSE(r.m_NoEndDate);
       EXPECT_EQ(r.m_Occurrences, 5);
       EXPECT_EQ(r.m_PatternEndDate, kMonday + 28);
     }},
    {"ATextThatIsNoNumberIsRefusedUntilMended",
     [](DialogDriver& d) {
       d.Type("frmRecurrence", "txtInterval2", "x");
       d.Click("frmRecurrence", "btnOK").Answer(IDOK);
       FocusIn(d, "txtInterval2");
       d.Type("frmRecurrence", "txtInterval2", "2");
       d.Click("frmRecurrence", "btnOK");
     },
     {kNumberNotValid}, true,
     [](const CMailProps& r) {
       EXPECT_EQ(r.m_RecurrenceType, kRecursWeekly);
       EXPECT_EQ(r.m_Interval, 2);
     }},
    {"Day31AsksAndItsCancelKeepsTheDialogOpen",
     [](DialogDriver& d) {
       d.Click("frmRecurrence", "optMonthly");
       d.Type("frmRecurrence", "txtDayOfMonth3", "31");
       d.Click("frmRecurrence", "btnOK").Answer(IDCANCEL);
       FocusIn(d, "txtDayOfMonth3");
       d.Click("frmRecurrence", "btnOK").Answer(IDOK);
     },
     {kDay31, kDay31}, true,
     [](const CMailProps& r) {
       EXPECT_EQ(r.m_RecurrenceType, kRecursMonthly);
       EXPECT_EQ(r.m_DayOfMonth, 31);
       EXPECT_EQ(r.m_Interval, 1);
     }},
    {"EveryWeekday",
     [](DialogDriver& d) {
       d.Click("frmRecurrence", "optDaily").Click("frmRecurrence", "optEveryWeekday1");
       d.Click("frmRecurrence", "btnOK");
     },
     {}, true,
     [](const CMailProps& r) {
       EXPECT_EQ(r.m_RecurrenceType, kRecursDaily);
       EXPECT_EQ(r.m_Interval, 0);
       EXPECT_EQ(r.m_DayOfWeekMask, 62);
     }},
    {"TheLastOfAMonthPickedFromTheLists",
     [](DialogDriver& d) {
       d.Click("frmRecurrence", "optYearly");
       // A pick in a list of the second line selects that line's option.
       d.Pick("frmRecurrence", "cboInstance4", 4).Pick("frmRecurrence", "cboMonthOfYear44", 1);
       d.Do("frmRecurrence", [](HWND dialog) { EXPECT_TRUE(Checked(dialog, "frmRecurrence", "optYearNth4")); });
       d.Click("frmRecurrence", "btnOK");
     },
     {}, true,
     [](const CMailProps& r) {
       EXPECT_EQ(r.m_RecurrenceType, kRecursYearNth);
       EXPECT_EQ(r.m_Instance, 5);
       EXPECT_EQ(r.m_MonthOfYear, 2);
       EXPECT_EQ(r.m_DayOfWeekMask, 2) << "the start's Monday";
     }},
    {"CancelLeavesARefusableFieldAlone",
     [](DialogDriver& d) {
       d.Type("frmRecurrence", "txtInterval2", "x");
       d.Click("frmRecurrence", "btnCancel");
     },
     {}, false, [](const CMailProps& r) { EXPECT_FALSE(r.m_IsRecurring); }},
    {"RemoveRecurrenceHandsBackToTheOneTimeDialog",
     [](DialogDriver& d) {
       d.Click("frmRecurrence", "btnRemoveRec");
       d.Click("frmOnce", "btnOk");
     },
     {}, true,
     [](const CMailProps& r) {
       EXPECT_FALSE(r.m_IsRecurring);
       EXPECT_NEAR(r.m_ScheduleTime, kSend, kTolerance);
     }},
};

INSTANTIATE_TEST_SUITE_P(Win32, RecurrenceDialog, ::testing::ValuesIn(kRecurrenceCases),
                         [](const auto& info) { return std::string(info.param.name); });

// --- the attachments dialog over the one-time dialog -------------------------------

TEST_F(RealDialogs, AttachmentsRemoveTheSelectedRowsAndKeepTheIgnoreList) {
  auto record = OneTimeRecord();
  record->m_collAttachments = {"C:\\Reports\\summary.pdf", "C:\\Data\\", "C:\\Users\\ann\\notes.txt"};
  g_IgnoreList.FromString("thumbs.db");
  g_IgnoreList.IgnoreSysHiden(false);
  constexpr const char* kForm = "frmAttachments";
  DialogDriver driver(std::chrono::seconds(20));
  driver.Click("frmOnce", "btnAttachments");
  driver.Do(kForm, [](HWND dialog) {
    HWND list = ControlWindow(dialog, kForm, "lvFiles");
    ASSERT_EQ(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 3);
    wchar_t name[64] = {};
    LVITEMW item = {};
    item.pszText = name;
    item.cchTextMax = 64;
    SendMessageW(list, LVM_GETITEMTEXTW, 1, reinterpret_cast<LPARAM>(&item));
    EXPECT_STREQ(name, L"<LastModificated>");
    EXPECT_FALSE(IsWindowEnabled(ControlWindow(dialog, kForm, "btnRemove")));
  });
  driver.SelectRows(kForm, "lvFiles", {0, 2});
  driver.Do(kForm, [](HWND dialog) { EXPECT_TRUE(IsWindowEnabled(ControlWindow(dialog, kForm, "btnRemove"))); });
  driver.Click(kForm, "btnRemove");
  driver.Do(kForm, [](HWND dialog) {
    EXPECT_EQ(SendMessageW(ControlWindow(dialog, kForm, "lvFiles"), LVM_GETITEMCOUNT, 0, 0), 1);
  });
  // Leaving the field shows the list as it is kept.
  driver.Type(kForm, "txtIgnore", " Thumbs.db,Desktop.INI ").Focus(kForm, "chkIgnore");
  driver.Do(kForm, [](HWND dialog) {
    EXPECT_EQ(TextOf(ControlWindow(dialog, kForm, "txtIgnore")), L"thumbs.db, desktop.ini");
  });
  driver.Click(kForm, "chkIgnore").Click(kForm, "btnOK");
  driver.Click("frmOnce", "btnCancel");
  const bool confirmed = Schedule(record);
  ExpectFinished(driver);
  // The attachments are the record's whatever the schedule dialog's answer.
  EXPECT_FALSE(confirmed);
  EXPECT_EQ(record->m_collAttachments, AttachmentList{"C:\\Data\\"});
  // The list OK kept (and saved: the settings' own tests read it back; this
  // prefix's registry is shared with test programs running beside this one).
  EXPECT_EQ(g_IgnoreList.ToString(), "thumbs.db, desktop.ini");
  EXPECT_TRUE(g_IgnoreList.IgnoreSysHiden());
}

// The system's dialogs the attachments dialog opens: the open-file dialog by
// its title, the folder browser by its tree of folders.
DialogDriver::Ready TitledDialog(std::wstring title) {
  return [title](HWND active) { return TextOf(active) == title; };
}
bool FolderBrowser(HWND active) { return FindWindowExW(active, nullptr, L"SysTreeView32", nullptr) != nullptr; }

TEST_F(RealDialogs, AttachmentsAddAFileAndAFolderThroughTheSystemsPickers) {
  const com::ComApartment apartment;  // the folder browser is a shell object
  const std::filesystem::path file = log_.Folder() / "report.pdf";
  std::ofstream(file) << "report";
  const std::filesystem::path folder = log_.Folder() / "Data";
  std::filesystem::create_directories(folder);
  auto record = OneTimeRecord();
  constexpr const char* kForm = "frmAttachments";
  DialogDriver driver(std::chrono::seconds(30));
  driver.Click("frmOnce", "btnAttachments").Click(kForm, "btnAddFile");
  driver.DoWhen(TitledDialog(L"Open File"), [&](HWND box) {
    wchar_t filter[64] = {};
    SendMessageW(GetDlgItem(box, cmb1), CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(filter));
    EXPECT_STREQ(filter, L"All Files (*.*)");
    HWND name = GetDlgItem(box, cmb13) ? GetDlgItem(box, cmb13) : GetDlgItem(box, edt1);
    SetWindowTextW(name, file.wstring().c_str());
    PostMessageW(GetDlgItem(box, IDOK), BM_CLICK, 0, 0);
  });
  driver.Click(kForm, "btnAddFolder");
  driver.DoWhen(&FolderBrowser, [&](HWND box) {
    SendMessageW(box, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(folder.wstring().c_str()));
    PostMessageW(GetDlgItem(box, IDOK), BM_CLICK, 0, 0);
  });
  driver.Do(kForm, [](HWND dialog) {
    HWND list = ControlWindow(dialog, kForm, "lvFiles");
    ASSERT_EQ(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 2);
    wchar_t name[64] = {};
    LVITEMW item = {};
    item.pszText = name;
    item.cchTextMax = 64;
    SendMessageW(list, LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_STREQ(name, L"report.pdf");
  });
  driver.Click(kForm, "btnOK").Click("frmOnce", "btnCancel");
  Schedule(record);
  ExpectFinished(driver);
  EXPECT_EQ(record->m_collAttachments, (AttachmentList{Utf8FromWide(file.wstring().c_str()),
                                                        Utf8FromWide(folder.wstring().c_str()) + "\\"}));
}

// --- the about box -----------------------------------------------------------------

TEST_F(RealDialogs, AboutBoxOpensItsLinksAndHelpAndClosesOnEsc) {
  RecordingShell shell;
  constexpr const char* kForm = "frmAbout";
  DialogDriver driver;
  driver.Do(kForm, [](HWND dialog) {
    const std::wstring caption = TextOf(dialog);
    EXPECT_EQ(caption.rfind(L"About Qorvane (ver.", 0), 0u) << caption;
    EXPECT_EQ(TextOf(ControlWindow(dialog, kForm, "lblWebPage")), WideFromUtf8(kWebPage));
  });
  driver.Click(kForm, "lblWebPage").Click(kForm, "lblSupport").Key(kForm, VK_F1).Click(kForm, "btnHelp");
  driver.Key(kForm, VK_ESCAPE);
  dialogs::FormDialogs().ShowAbout();
  ExpectFinished(driver);
  EXPECT_EQ(shell.opened, (std::vector<std::string>{kWebPage, std::string("mailto:") + kSupportAddress,
                                                    "help dialog_about.html", "help dialog_about.html"}));
}

// --- the templates against the forms ----------------------------------------------

// Every control of a form has its window in the form's template (a page has
// none: its controls show and hide together), and every window of the
// template shows a control the form has: a renamed control cannot fall out
// of sight.
template <class Form>
void ExpectTemplateMatches() {
  Form form;
  const forms::FormTemplate* layout = forms::FindFormTemplate(form.name);
  ASSERT_NE(layout, nullptr) << form.name;
  for (const forms::Control& control : form.controls) {
    const int id = forms::TemplateControlId(*layout, control.name);
    if (control.kind == forms::ControlKind::Page) {
      EXPECT_EQ(id, 0) << form.name << "." << control.name;
    } else {
      EXPECT_NE(id, 0) << form.name << "." << control.name << " has no window";
    }
  }
  for (const forms::TemplateControl& entry : layout->controls) {
    EXPECT_TRUE(form.Has(entry.name)) << form.name << " has no control " << entry.name;
  }
}

TEST(DialogTemplates, ShowEveryControlOfTheirForm) {
  ExpectTemplateMatches<frmOnce>();
  ExpectTemplateMatches<frmRecurrence>();
  ExpectTemplateMatches<frmAttachments>();
  ExpectTemplateMatches<frmAbout>();
}

// --- what a person sees --------------------------------------------------------------

// Each control's caption, in the dialog's font, within the control.
void ExpectNothingClipped(HWND dialog) {
  for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    wchar_t kind[32] = {};
    GetClassNameW(child, kind, 32);
    const std::wstring caption = TextOf(child);
    RECT place = {};
    GetClientRect(child, &place);
    const LONG style = GetWindowLongW(child, GWL_STYLE);
    if (caption.empty()) continue;
    if (std::wstring_view(kind) == L"Button" && (style & BS_TYPEMASK) != BS_GROUPBOX) {
      SIZE ideal = {};
      SendMessageW(child, BCM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&ideal));
      // A push button's ideal size is its text's (in wine): a native one
      // leaves a few pixels of face either side.
      const LONG margin = (style & BS_TYPEMASK) <= BS_DEFPUSHBUTTON ? 8 : 0;
      EXPECT_LE(ideal.cx + margin, place.right) << "clipped: " << Utf8FromWide(caption.c_str());
    } else if (std::wstring_view(kind) == L"Static") {
      HDC dc = GetDC(child);
      HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(child, WM_GETFONT, 0, 0)));
      RECT text = {};
      DrawTextW(dc, caption.c_str(), -1, &text, DT_CALCRECT | DT_SINGLELINE);
      SelectObject(dc, old);
      ReleaseDC(child, dc);
      EXPECT_LE(text.right, place.right) << "clipped: " << Utf8FromWide(caption.c_str());
    }
  }
}

TEST_F(RealDialogs, NoCaptionIsClippedNoColumnCutShortAndLinksReadable) {
  auto record = OneTimeRecord();
  record->m_collAttachments = {"C:\\Data\\"};
  DialogDriver driver;
  driver.Do("frmOnce", &ExpectNothingClipped);
  driver.Click("frmOnce", "btnAttachments");
  driver.Do("frmAttachments", [](HWND dialog) {
    ExpectNothingClipped(dialog);
    HWND list = ControlWindow(dialog, "frmAttachments", "lvFiles");
    const int nameWidth = static_cast<int>(SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(L"<LastModificated>")));
    EXPECT_GT(SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0), nameWidth + 12) << "the folder row's name is cut short";
    RECT client = {};
    GetClientRect(list, &client);
    const LRESULT both = SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0) + SendMessageW(list, LVM_GETCOLUMNWIDTH, 1, 0);
    EXPECT_GE(both, client.right - GetSystemMetrics(SM_CXVSCROLL) - 2) << "the columns leave the list half empty";
  });
  driver.Click("frmAttachments", "btnCancel");
  driver.Click("frmOnce", "optRecurrence");
  driver.Do("frmRecurrence", &ExpectNothingClipped);
  driver.Click("frmRecurrence", "btnCancel");
  Schedule(record);
  ExpectFinished(driver);

  DialogDriver about;
  about.Do("frmAbout", [](HWND dialog) {
    ExpectNothingClipped(dialog);
    // The link's colour as the dialog hands it to the label, against the face.
    HWND link = ControlWindow(dialog, "frmAbout", "lblWebPage");
    HDC dc = GetDC(link);
    SendMessageW(dialog, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(link));
    const COLORREF text = GetTextColor(dc);
    ReleaseDC(link, dc);
    const auto lightness = [](COLORREF c) { return (GetRValue(c) * 299 + GetGValue(c) * 587 + GetBValue(c) * 114) / 1000; };
    EXPECT_GE(std::abs(lightness(text) - lightness(GetSysColor(COLOR_BTNFACE))), 96) << "the link is hard to read";
  });
  about.Key("frmAbout", VK_ESCAPE);
  dialogs::FormDialogs().ShowAbout();
  ExpectFinished(about);
}

}  // namespace
}  // namespace qorvane::testing
