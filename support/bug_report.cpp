// The bug-report mail and the facts it carries.
#include "support/bug_report.h"

#include "client/addins.h"
#include "client/application.h"
#include "client/items.h"
#include "client/safe_mail.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "platform/addin_folder.h"
#include "platform/file_system.h"
#include "platform/os_version.h"
#include "store/main_options.h"
#include "store/version.h"

namespace mBugReport {
namespace {

constexpr const char* kLineBreak = "\r\n";

std::string PlatformName(const qorvane::OsVersion& version) {
  switch (version.platformId) {
    case qorvane::kPlatformWin32NT: return "Windows NT";
    case qorvane::kPlatformWin32Windows: return "Windows 95/98";
    case qorvane::kPlatformWin32s: return "Windows 32s";
    default: return version.systemName;
  }
}

}  // namespace

std::string BugReportBody() {
  // A line that cannot be had ends the body there: the report keeps what was
  // built before it.
  std::string body;
  const auto line = [&](const std::string& text) { body += text + kLineBreak; };
  qorvane::Trap("mBugReport.SendBugReport", [&] {
    line("");
    line("");
    line("");
    line("---- Please type bug description above this line.Thank you ----");
    line("");
    line(std::string("Qorvane version: ") + Main::GetAppVersion());
    line("Qorvane path: " + qorvane::AddinFolder());
    line("");
    line("OS: " + GetWinVersion());
    line("Outlook version: " + client::Require(client::CurrentApplication())->Version());
    line("");
    line(std::string("Redemption.dll ") + (isRedemptionExist() ? "ok" : "not in product folder"));
    line(std::string("Redemption ") + (isRegRedemption() ? "registered" : "not registered"));
    body += GetAddIns();
  });
  return body;
}

void SendBugReport() {
  client::Ref<client::MailItem> mail;
  qorvane::Trap("mBugReport.SendBugReport", [&] {
    const auto application = client::Require(client::CurrentApplication());
    mail = client::Require(client::Require(application->CreateItem(client::olMailItem))->AsMailItem());
    mail->To(qorvane::kSupportAddress);
    mail->Subject(kSubject);
  });
  if (!mail) return;
  // Whatever part fails, the user gets the mail as far as it was built.
  qorvane::Trap("mBugReport.SendBugReport", [&] { mail->Body(BugReportBody()); });
  qorvane::Trap("mBugReport.SendBugReport", [&] {
    const std::string log = g_debug.LogFilePath();
    if (qorvane::FileExists(log)) mail->Attachments()->Add(log, "");
  });
  qorvane::Trap("mBugReport.SendBugReport", [&] { mail->Display(); });
}

std::string GetWinVersion() {
  std::string text;
  qorvane::Trap("mBugReport.GetWinVersion", [&] {
    const qorvane::OsVersion version = qorvane::CurrentOsVersion().Get();
    text = PlatformName(version) + " Win version:" + std::to_string(version.major) + "." +
           std::to_string(version.minor) + " Build: " + version.build;
  });
  return text;
}

std::string GetAddIns() {
  std::string text = "Uses COMAddIns :";
  qorvane::Trap("mBugReport.GetAddIns", [&] {
    const auto addIns = client::Require(client::Require(client::CurrentApplication())->COMAddIns());
    for (long i = 1, count = addIns->Count(); i <= count; ++i) {
      const auto addIn = client::Require(addIns->Item(i));
      text += kLineBreak;
      text += "ProgID: " + addIn->ProgId() + "; Description: " + addIn->Description() +
              "; Connect: " + (addIn->Connect() ? "True" : "False");
    }
  });
  return text;
}

bool isRedemptionExist() {
  bool exists = false;
  qorvane::Trap("mBugReport.isRedemptionExist",
                [&] { exists = qorvane::FileExists(qorvane::JoinPath(qorvane::AddinFolder(), "Redemption.dll")); });
  return exists;
}

bool isRegRedemption() {
  bool registered = false;
  qorvane::Trap("mBugReport.isRegRedemption",
                [&] { registered = client::CurrentSafeMailFactory().CreateSafeMailItem() != nullptr; });
  return registered;
}

}  // namespace mBugReport
