// The about box's controls and handlers.
#include "support/frm_about.h"

#include <algorithm>
#include <string>

#include "infra/error_trap.h"
#include "platform/screen_metrics.h"
#include "platform/shell.h"
#include "store/main_options.h"
#include "store/version.h"
#include "support/bug_report.h"
#include "support/help.h"

using qorvane::forms::ControlKind;

frmAbout::frmAbout() {
  name = "frmAbout";
  caption = "About Qorvane";
  // Design size in twips; the Windows view replaces it with its template's.
  rect.width = 5400;
  rect.height = 3000;
  Add(ControlKind::Label, "lblProduct", "Qorvane");
  Add(ControlKind::Label, "lblVersion", "Version");
  Add(ControlKind::Label, "lblWebPage", qorvane::kWebPage);
  Add(ControlKind::Label, "lblSupport", qorvane::kSupportAddress);
  Add(ControlKind::Button, "btnOK", "OK");
  Add(ControlKind::Button, "btnHelp", "&Help");
  Add(ControlKind::Button, "btnBugReport", "&Bug Report");
  defaultButton = "btnOK";
  cancelButton = "btnOK";
}

void frmAbout::Load() {
  qorvane::Trap("frmAbout.Form_Load", [&] {
    const std::string version = Main::GetAppVersion();
    caption = "About Qorvane (ver." + version + ")";
    (*this)["lblVersion"].caption = "Version " + version;
    // No window to sit over: the middle of the screen.
    const qorvane::ScreenMetrics screen = qorvane::CurrentScreenMetrics();
    rect.left = std::max(0L, static_cast<long>((screen.width - static_cast<double>(rect.width)) / 2));
    rect.top = std::max(0L, static_cast<long>((screen.height - static_cast<double>(rect.height)) / 2));
  });
}

void frmAbout::Click(std::string_view controlName) {
  qorvane::Trap("frmAbout." + std::string(controlName) + "_Click", [&] {
    if (controlName == "btnOK") {
      unloaded = true;
    } else if (controlName == "btnHelp") {
      Help();
    } else if (controlName == "btnBugReport") {
      unloaded = true;
      mBugReport::SendBugReport();
    } else if (controlName == "lblWebPage") {
      qorvane::CurrentShell().Open(qorvane::kWebPage);
    } else if (controlName == "lblSupport") {
      qorvane::CurrentShell().Open(std::string("mailto:") + qorvane::kSupportAddress);
    }
  });
}

void frmAbout::Help() { support::ShowHelp(support::HelpTopic::About); }
