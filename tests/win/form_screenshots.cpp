// Shows every dialog, and every page of the recurrence dialog, for a
// screenshot: for each one it writes "SHOT <name> <left> <top> <right>
// <bottom>" (the window in screen pixels) to stdout and waits for a line on
// stdin, which scripts/screenshots.sh sends once it has taken the picture.
// Accelerators are underlined as when the keyboard is in use.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <string>

#include "dialog_driver.h"
#include "platform/form.h"
#include "sample_forms.h"

namespace {

using qorvane::testing::DialogDriver;

// Waits for the picture to be taken; the pause before lets wine put the
// last drawing on the X screen.
void Shot(DialogDriver& driver, const char* form, const std::string& name) {
  driver.Pause(std::chrono::milliseconds(400)).Do(form, [name](HWND dialog) {
    RECT frame = {};
    GetWindowRect(dialog, &frame);
    std::printf("SHOT %s %ld %ld %ld %ld\n", name.c_str(), frame.left, frame.top, frame.right, frame.bottom);
    std::fflush(stdout);
    char answer[16];
    if (!std::fgets(answer, sizeof answer, stdin)) std::fprintf(stderr, "no answer on stdin\n");
  });
}

int Show(const char* form, void (*script)(DialogDriver&)) {
  auto sample = qorvane::testing::SampleByName(form);
  DialogDriver driver(std::chrono::seconds(120));
  script(driver);
  driver.CloseBox(form);
  qorvane::forms::ShowModal(*sample);
  if (driver.Done() && !driver.TimedOut()) return 0;
  std::fprintf(stderr, "%s: the script did not run to its end\n", form);
  return 1;
}

}  // namespace

int main() {
  SystemParametersInfoW(SPI_SETKEYBOARDCUES, 0, reinterpret_cast<void*>(TRUE), 0);
  int failures = 0;
  failures += Show("frmOnce", [](DialogDriver& d) { Shot(d, "frmOnce", "once"); });
  failures += Show("frmRecurrence", [](DialogDriver& d) {
    for (const char* page : {"Daily", "Weekly", "Monthly", "Yearly"}) {
      d.Click("frmRecurrence", std::string("opt") + page);
      Shot(d, "frmRecurrence", std::string("recurrence-") + page);
    }
  });
  failures += Show("frmAttachments", [](DialogDriver& d) {
    d.SelectRows("frmAttachments", "lvFiles", {1});
    Shot(d, "frmAttachments", "attachments");
  });
  failures += Show("frmAbout", [](DialogDriver& d) { Shot(d, "frmAbout", "about"); });
  return failures == 0 ? 0 : 1;
}
