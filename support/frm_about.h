// frmAbout: the about box. Its caption names the product and its version;
// OK closes it, Help opens its help page, Bug Report closes it and prepares
// the bug-report mail (the mail window can't be used while a modal box is
// open), and the two links open the product's web page and a new mail to
// support through the shell.
//
// Controls, in tab order (name, kind, caption):
//   lblProduct    label   "Qorvane"
//   lblVersion    label   "Version " + the version
//   lblWebPage    label   the web page (a link: clicking opens it)
//   lblSupport    label   the support address (a link: a new mail to it)
//   btnOK         button  "OK"            (Enter and Esc)
//   btnHelp       button  "&Help"         (and F1)
//   btnBugReport  button  "&Bug Report"
//
// Lifecycle: created by the dialog service for one modal showing. UI thread.
#pragma once

#include <string_view>

#include "platform/form.h"

class frmAbout final : public qorvane::forms::Form {
 public:
  frmAbout();

  void Load() override;
  void Click(std::string_view controlName) override;
  void Help() override;
};
