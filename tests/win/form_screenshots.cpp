// Shows the add-in's dialogs for scripts/screenshots.sh, opened as the
// add-in opens them (through the dialog service, over a mail's record):
// the one-time dialog, each page of the recurrence dialog, the day-31
// question, the attachments dialog and the about box. For each picture it
// writes "SHOT <name> <left> <top> <right> <bottom>" (the window in screen
// pixels) to stdout and waits for a line on stdin, which the script sends
// once it has taken it. Accelerators are underlined as when the keyboard is
// in use. Nothing is confirmed: the settings are left as they were.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "dialog_driver.h"
#include "dialogs/dialog_service.h"
#include "dialogs/hand_over.h"
#include "infra/ignore_list.h"
#include "schedule/mail_props.h"

namespace {

using qorvane::testing::DialogDriver;

// Monday 3 March 2025, 9:30.
constexpr double kSend = 45719.0 + 9.5 / 24.0;
// The opener's window, in twips: 800 x 600 pixels at (240, 200).
const DialogRect kOpener{3600, 3000, 12000, 9000};

// Waits for the picture to be taken; the pause before lets wine put the
// last drawing on the X screen.
void Shot(DialogDriver& driver, std::string_view form, const std::string& name) {
  driver.Pause(std::chrono::milliseconds(400)).Do(form, [name](HWND dialog) {
    RECT frame = {};
    GetWindowRect(dialog, &frame);
    std::printf("SHOT %s %ld %ld %ld %ld\n", name.c_str(), frame.left, frame.top, frame.right, frame.bottom);
    std::fflush(stdout);
    char answer[16];
    if (!std::fgets(answer, sizeof answer, stdin)) std::fprintf(stderr, "no answer on stdin\n");
  });
}

// Plays the script against the schedule dialog opened over a one-time
// record (the about box when `about`); 1 when the script did not finish.
int Show(const char* what, const std::function<void(DialogDriver&)>& script, bool about = false) {
  DialogDriver driver(std::chrono::seconds(120));
  script(driver);
  if (about) {
    dialogs::FormDialogs().ShowAbout();
  } else {
    auto record = std::make_shared<CMailProps>();
    record->m_ScheduleTime = kSend;
    record->m_collAttachments = {"C:\\Reports\\summary.pdf", "C:\\Data\\", "C:\\Users\\ann\\notes.txt"};
    dialogs::BeginHandOver(record, false, kOpener);
    dialogs::ShowScheduleDialog();
    dialogs::EndHandOver();
  }
  if (driver.Done() && !driver.TimedOut()) return 0;
  std::fprintf(stderr, "%s: the script did not run to its end\n", what);
  return 1;
}

}  // namespace

int main() {
  SystemParametersInfoW(SPI_SETKEYBOARDCUES, 0, reinterpret_cast<void*>(TRUE), 0);
  int failures = 0;
  failures += Show("once", [](DialogDriver& d) {
    Shot(d, "frmOnce", "once");
    d.Click("frmOnce", "btnCancel");
  });
  failures += Show("recurrence", [](DialogDriver& d) {
    d.Click("frmOnce", "optRecurrence");
    for (const char* page : {"Daily", "Weekly", "Monthly", "Yearly"}) {
      d.Click("frmRecurrence", std::string("opt") + page);
      Shot(d, "frmRecurrence", std::string("recurrence-") + page);
    }
    // The second line of the yearly page, and the first of the monthly one
    // with the day that not every month has.
    d.Click("frmRecurrence", "optYearNth4");
    Shot(d, "frmRecurrence", "recurrence-Yearly-nth");
    d.Click("frmRecurrence", "optMonthly").Type("frmRecurrence", "txtDayOfMonth3", "31");
    d.Click("frmRecurrence", "btnOK");
    Shot(d, qorvane::testing::kMessageBoxStep, "recurrence-day31-question");
    d.Answer(IDCANCEL);
    d.Click("frmRecurrence", "btnCancel");
  });
  g_IgnoreList.FromString("thumbs.db, desktop.ini");
  failures += Show("attachments", [](DialogDriver& d) {
    d.Click("frmOnce", "btnAttachments");
    d.SelectRows("frmAttachments", "lvFiles", {1});
    Shot(d, "frmAttachments", "attachments");
    d.Click("frmAttachments", "btnCancel");
    d.Click("frmOnce", "btnCancel");
  });
  failures += Show(
      "about",
      [](DialogDriver& d) {
        Shot(d, "frmAbout", "about");
        d.Key("frmAbout", VK_ESCAPE);
      },
      true);
  return failures == 0 ? 0 : 1;
}
