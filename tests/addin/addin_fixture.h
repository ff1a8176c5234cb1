// The add-in on a simulated client with a scripted user, its log, registry
// and locale pinned, and helpers to name dates and put mails in place.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "base/ole_date.h"
#include "infra/settings.h"
#include "scenario/session.h"
#include "schedule/mail_props.h"
#include "tests/support/registry_sandbox.h"
#include "tests/support/test_env.h"

namespace qorvane::testing {

inline double At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return DateSerialRollOver(year, month, day) + TimeSerial(hour, minute, second);
}

// A date-time as the add-in writes it ("3/3/2025 9:30:00 AM" in en-US).
inline std::string Text(double date) { return CurrentLocale().FormatGeneralDate(date); }

inline constexpr const char* kSpellingKey = "Software\\Microsoft\\Office\\16.0\\Outlook\\Options\\Spelling";

class AddInTest : public ::testing::Test {
 protected:
  // A fresh client process; the default starts 2025-03-03 09:00 on version 16.
  scenario::Session& NewSession(sim::SimOptions options = {}) {
    session_.reset();
    session_.emplace(options);
    return *session_;
  }
  scenario::Session& S() {
    if (!session_) NewSession();
    return *session_;
  }
  sim::SimClient& Client() { return S().Client(); }
  scenario::ScriptedUser& User() { return S().User(); }
  const std::shared_ptr<Connect>& AddIn() { return S().AddIn(); }

  // The deferred folder, made as the add-in makes it.
  client::Ref<client::MAPIFolder> Deferred() {
    if (auto folder = S().DeferredFolder()) return folder;
    return Client().Root()->Folders()->Add("Qorvane", client::olFolderDrafts);
  }
  // A mail waiting in the deferred folder for its one-time send time.
  client::Ref<client::MailItem> Waiting(const std::string& subject, double when) {
    CMailProps props;
    props.m_ScheduleTime = when;
    return WaitingWith(subject, props);
  }
  client::Ref<client::MailItem> WaitingWith(const std::string& subject, CMailProps props) {
    auto mail = Client().AddMail(Deferred(), subject);
    props.WriteProps(mail);
    mail->Save();
    return mail;
  }

  // The send log as "subject at time" lines.
  std::vector<std::string> Sent() {
    std::vector<std::string> lines;
    for (const auto& sent : Client().SendLog()) lines.push_back(sent.subject + " at " + Text(sent.time));
    return lines;
  }
  std::vector<std::string> SentSubjects() {
    std::vector<std::string> subjects;
    for (const auto& sent : Client().SendLog()) subjects.push_back(sent.subject);
    return subjects;
  }
  // A scheduled mail's next send time as text; "" without one.
  std::string ScheduleTimeOf(const client::Ref<client::Item>& item) {
    CMailProps props;
    return props.ReadProps(item) ? Text(props.m_ScheduleTime) : "";
  }
  std::size_t ErrorLines() const {
    std::size_t count = 0;
    for (const std::string& line : log_.LogLines()) count += line.find("Error(") != std::string::npos ? 1 : 0;
    return count;
  }
  // No error entry in the add-in's log.
  void ExpectCleanLog() { EXPECT_FALSE(log_.LogContains("Error(")) << log_.LogText(); }

  std::string NextOccurence() { return settings::ReadOwnString(settings::kNextOccurence); }
  void SetOwnString(const char* name, const std::string& value) { settings::WriteOwnString(name, value); }
  void SetSpellingCheck(std::int32_t value) {
    CWinReg reg;
    ASSERT_TRUE(reg.InitForWrite(CWinReg::HKEY_CURRENT_USER, kSpellingKey, true));
    reg.WriteLong("Check", value);
  }

  ScopedLocale locale_{"en-US"};
  ScopedLogFolder log_;
  ScopedRegistryKeys registry_{{settings::kOwnKey, kSpellingKey,
                                settings::StoreKeyPath(settings::kAppName, settings::kSettingsSection)}};
  std::optional<scenario::Session> session_;
};

}  // namespace qorvane::testing
