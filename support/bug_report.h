// mBugReport: the bug-report mail. A new mail to the support address, its
// body describing the installation (versions, folders, the operating system,
// the safe-mail library, the client's COM add-ins) below three empty lines
// for the user's own words, the diagnostic log attached when there is one.
// The mail is shown to the user, never sent by the add-in.
//
// Each procedure traps and logs its own failures (labels "mBugReport.<name>")
// and returns what it had as far as it got. UI thread only.
#pragma once

#include <string>

namespace mBugReport {

inline constexpr const char* kSubject = "Qorvane Bug Report (Qorvane AddIn)";

// Builds the mail through the current client application and displays it.
void SendBugReport();

// The body SendBugReport writes, lines separated by CR LF.
std::string BugReportBody();

// "Windows NT Win version:10.0 Build: 19045"; on POSIX the system's own
// name, "Linux Win version:6.1 Build: 6.1.0-18-amd64".
std::string GetWinVersion();

// "Uses COMAddIns :" and a line per COM add-in of the client:
// "ProgID: <id>; Description: <text>; Connect: True".
std::string GetAddIns();

// "Redemption.dll" lies in the add-in's folder.
bool isRedemptionExist();
// The safe-mail library is registered: its safe mail item can be created.
bool isRegRedemption();

}  // namespace mBugReport
