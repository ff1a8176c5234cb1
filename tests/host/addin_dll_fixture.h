// The add-in DLL installed for the tests as a user installs it: copied into
// a folder of its own (its log and help live beside it) and registered with
// regsvr32, per user; the host program (host_outlook.h) then plays the
// client. Each test starts and ends with the add-in's own registry settings
// cleared and with a dialog driver that closes any dialog nobody expected.
//
// The built DLL is named by the environment variable QORVANE_ADDIN_DLL (a
// path of the machine running wine, mapped through drive Z:).
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "client/client.h"
#include "tests/host/dialog_driver.h"
#include "tests/host/host_outlook.h"

namespace host_testing {

// regsvr32 on the DLL (with /u to unregister); its exit code.
DWORD RunRegsvr32(const std::wstring& dll, bool unregister);

// A value under HKEY_CURRENT_USER (or another hive); nothing when missing.
std::optional<std::wstring> RegistryText(HKEY hive, const std::wstring& key, const wchar_t* name);
std::optional<DWORD> RegistryNumber(HKEY hive, const std::wstring& key, const wchar_t* name);
bool RegistryKeyExists(HKEY hive, const std::wstring& key);

class AddInDllTest : public ::testing::Test {
 protected:
  // Copies and registers the DLL once for the suite; unregisters it at the end.
  static void SetUpTestSuite();
  static void TearDownTestSuite();
  AddInDllTest();
  ~AddInDllTest() override;

  static const std::wstring& InstalledDll();
  static const std::wstring& InstallFolder();

  // The add-in's log, one line a string ("" lines dropped).
  std::vector<std::string> LogLines() const;
  bool LogContains(const std::string& text) const;
  // The log lines written since this test began.
  std::vector<std::string> NewLogLines() const;

  // The deferred folder of the host's store, or null.
  static client::Ref<client::MAPIFolder> DeferredFolder(host::HostOutlook& outlook);
  // A mail waiting in the deferred folder (made when missing) with its
  // schedule written as the add-in writes it: recurring weekly on today and
  // the day after tomorrow at the time given, `occurrences` sends from today,
  // with one attached file; its first send time is today at that time.
  client::Ref<client::MailItem> WaitingRecurringMail(host::HostOutlook& outlook, const std::string& subject,
                                                     double timeOfDay, int occurrences,
                                                     const std::string& attachment);
  // A file in the install folder to attach; its full path.
  std::string MakeFile(const std::string& name, const std::string& contents);

  // The button every dialog that comes is closed with: Cancel where it has
  // one, unless a test asks for its OK, or 0 when the test drives the dialogs
  // itself. A test that expects a dialog looks at Seen().
  int answer_ = IDCANCEL;
  host::DialogDriver dialogs_{[this](HWND dialog, const host::SeenDialog&) {
    if (answer_ != 0) host::DialogDriver::Press(dialog, GetDlgItem(dialog, answer_) ? answer_ : IDOK);
  }};

 private:
  std::size_t logLinesBefore_ = 0;
};

// Today at the time of day, as a date-time.
double TodayAt(double timeOfDay);
double Now();

}  // namespace host_testing
