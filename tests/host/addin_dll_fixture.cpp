// Installing the add-in DLL for the tests, and what the tests read back.
#include "tests/host/addin_dll_fixture.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "base/ole_date.h"
#include "infra/settings.h"
#include "schedule/mail_props.h"
#include "win/com/unique_handle.h"
#include "win/com/wide_text.h"

namespace host_testing {
namespace {

using qorvane::com::UniqueHkey;

std::wstring g_dll;
std::wstring g_folder;

std::wstring BuiltDll() {
  const char* path = std::getenv("QORVANE_ADDIN_DLL");
  if (!path || !*path) return {};
  std::wstring wide = qorvane::WideFromUtf8(path);
  // A path of the machine under wine: drive Z: is its root.
  if (wide[0] == L'/') {
    for (wchar_t& c : wide) c = c == L'/' ? L'\\' : c;
    wide = L"Z:" + wide;
  }
  return wide;
}

void ClearOwnSettings() { RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Brendix\\Qorvane"); }

std::string Narrow(const std::wstring& wide) { return qorvane::Utf8FromWide(wide.c_str()); }

}  // namespace

DWORD RunRegsvr32(const std::wstring& dll, bool unregister) {
  std::wstring command = L"regsvr32.exe /s ";
  if (unregister) command += L"/u ";
  command += L"\"" + dll + L"\"";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
    return static_cast<DWORD>(-1);
  WaitForSingleObject(process.hProcess, 60000);
  DWORD code = static_cast<DWORD>(-1);
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return code;
}

std::optional<std::wstring> RegistryText(HKEY hive, const std::wstring& key, const wchar_t* name) {
  wchar_t value[2048] = {};
  DWORD bytes = sizeof value - sizeof(wchar_t);
  if (RegGetValueW(hive, key.c_str(), name, RRF_RT_REG_SZ, nullptr, value, &bytes) != ERROR_SUCCESS)
    return std::nullopt;
  return std::wstring(value);
}

std::optional<DWORD> RegistryNumber(HKEY hive, const std::wstring& key, const wchar_t* name) {
  DWORD value = 0;
  DWORD bytes = sizeof value;
  if (RegGetValueW(hive, key.c_str(), name, RRF_RT_REG_DWORD, nullptr, &value, &bytes) != ERROR_SUCCESS)
    return std::nullopt;
  return value;
}

bool RegistryKeyExists(HKEY hive, const std::wstring& key) {
  UniqueHkey opened;
  return RegOpenKeyExW(hive, key.c_str(), 0, KEY_READ, opened.put()) == ERROR_SUCCESS;
}

void AddInDllTest::SetUpTestSuite() {
  const std::wstring built = BuiltDll();
  ASSERT_FALSE(built.empty()) << "QORVANE_ADDIN_DLL names no DLL";
  wchar_t temp[MAX_PATH];
  GetTempPathW(MAX_PATH, temp);
  g_folder = std::wstring(temp) + L"qorvane-addin-" + std::to_wstring(GetCurrentProcessId());
  CreateDirectoryW(g_folder.c_str(), nullptr);
  g_dll = g_folder + L"\\qorvane.dll";
  ASSERT_TRUE(CopyFileW(built.c_str(), g_dll.c_str(), FALSE)) << Narrow(built);
  ASSERT_EQ(RunRegsvr32(g_dll, false), 0u);
}

void AddInDllTest::TearDownTestSuite() {
  RunRegsvr32(g_dll, true);
  DeleteFileW((g_folder + L"\\Qorvane.Log").c_str());
  DeleteFileW(g_dll.c_str());
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW((g_folder + L"\\*").c_str(), &found);
  if (search != INVALID_HANDLE_VALUE) {
    do {
      DeleteFileW((g_folder + L"\\" + found.cFileName).c_str());
    } while (FindNextFileW(search, &found));
    FindClose(search);
  }
  RemoveDirectoryW(g_folder.c_str());
}

AddInDllTest::AddInDllTest() {
  ClearOwnSettings();
  logLinesBefore_ = LogLines().size();
}

AddInDllTest::~AddInDllTest() { ClearOwnSettings(); }

const std::wstring& AddInDllTest::InstalledDll() { return g_dll; }
const std::wstring& AddInDllTest::InstallFolder() { return g_folder; }

std::vector<std::string> AddInDllTest::LogLines() const {
  std::vector<std::string> lines;
  std::ifstream log(Narrow(g_folder + L"\\Qorvane.Log"), std::ios::binary);
  std::string line;
  while (std::getline(log, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty()) lines.push_back(line);
  }
  return lines;
}

bool AddInDllTest::LogContains(const std::string& text) const {
  for (const std::string& line : LogLines()) {
    if (line.find(text) != std::string::npos) return true;
  }
  return false;
}

std::vector<std::string> AddInDllTest::NewLogLines() const {
  std::vector<std::string> lines = LogLines();
  lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(std::min(logLinesBefore_, lines.size())));
  return lines;
}

client::Ref<client::MAPIFolder> AddInDllTest::DeferredFolder(host::HostOutlook& outlook) {
  const auto folders = outlook.Client().Root()->Folders();
  for (long i = 1, count = folders->Count(); i <= count; ++i) {
    auto folder = folders->Item(i);
    if (folder->Name() == "Qorvane") return folder;
  }
  return nullptr;
}

client::Ref<client::MailItem> AddInDllTest::WaitingRecurringMail(host::HostOutlook& outlook, const std::string& subject,
                                                                 double timeOfDay, int occurrences,
                                                                 const std::string& attachment) {
  auto folder = DeferredFolder(outlook);
  if (!folder) folder = outlook.Client().Root()->Folders()->Add("Qorvane", client::olFolderDrafts);
  const auto mail = outlook.Client().AddMail(folder, subject);
  const double today = std::floor(Now());
  CMailProps props;
  props.m_IsRecurring = true;
  props.m_RecurrenceType = 1;  // weekly
  props.m_Interval = 1;
  // Today and the day after tomorrow (Sunday 1 ... Saturday 64).
  const int todayBit = 1 << (qorvane::Weekday(today) - 1);
  const int laterBit = 1 << (qorvane::Weekday(today + 2) - 1);
  props.m_DayOfWeekMask = todayBit | laterBit;
  props.m_Occurrences = occurrences;
  props.m_NoEndDate = false;
  props.m_StartTime = timeOfDay;
  props.m_PatternStartDate = today;
  props.m_ScheduleTime = today + timeOfDay;
  if (!attachment.empty()) props.m_collAttachments = {attachment};
  props.WriteProps(mail);
  mail->Save();
  return mail;
}

std::string AddInDllTest::MakeFile(const std::string& name, const std::string& contents) {
  const std::string path = Narrow(g_folder) + "\\" + name;
  std::ofstream(path, std::ios::binary) << contents;
  return path;
}

double Now() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return qorvane::DateSerialRollOver(now.wYear, now.wMonth, now.wDay) +
         qorvane::TimeSerial(now.wHour, now.wMinute, now.wSecond);
}

double TodayAt(double timeOfDay) { return std::floor(Now()) + timeOfDay; }

}  // namespace host_testing
