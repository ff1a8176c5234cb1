// The shell's "open": the help file at one of its pages, the product's web
// page, a new mail from a "mailto:" link.
//
// Windows: HTML Help for a help page (the file opened by the shell when the
// help viewer is missing), ShellExecute's "open" verb for everything else,
// the active window as owner, "C:\" as working folder, a normal window.
// POSIX: there is no shell to hand these to; nothing is opened (and no
// browser is ever started from a test run) and the calls report false.
//
// Lifecycle: the platform's shell is current until SetShell installs another
// (tests record what would be opened); nullptr restores it. UI thread only.
#pragma once

#include <string>

namespace qorvane {

class ShellService {
 public:
  virtual ~ShellService() = default;
  // A file, a web address or a "mailto:" link; false when nothing opened.
  virtual bool Open(const std::string& target) = 0;
  // The page ("dialog_once.html") of a compiled help file (its full path).
  virtual bool ShowHelpTopic(const std::string& helpFile, const std::string& page) = 0;
};

ShellService& PlatformShell();
ShellService& CurrentShell();
void SetShell(ShellService* shell);

}  // namespace qorvane
