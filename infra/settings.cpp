// Settings through CWinReg.
#include "infra/settings.h"

#include "infra/cwinreg.h"

namespace qorvane::settings {

std::string StoreKeyPath(std::string_view appName, std::string_view section) {
  return "Software\\VB and VBA Program Settings\\" + std::string(appName) + "\\" + std::string(section);
}

std::string GetSetting(std::string_view appName, std::string_view section, std::string_view key,
                       std::string_view defaultValue) {
  CWinReg reg;
  if (!reg.InitForRead(CWinReg::HKEY_CURRENT_USER, StoreKeyPath(appName, section))) return std::string(defaultValue);
  // A missing value reads as the default; an empty string that is really
  // stored stays empty. The store has no length limit (an ignore list is
  // easily longer than 255 characters).
  if (reg.ValueType(std::string(key))) return reg.ReadText(std::string(key));
  return std::string(defaultValue);
}

bool SaveSetting(std::string_view appName, std::string_view section, std::string_view key, std::string_view value) {
  CWinReg reg;
  if (!reg.InitForWrite(CWinReg::HKEY_CURRENT_USER, StoreKeyPath(appName, section), true)) return false;
  return reg.WriteString(std::string(key), std::string(value));
}

bool DeleteSetting(std::string_view appName, std::string_view section, std::string_view key) {
  CWinReg reg;
  if (!reg.InitForWrite(CWinReg::HKEY_CURRENT_USER, StoreKeyPath(appName, section), false)) return false;
  return reg.DeleteValue(std::string(key));
}

std::string ReadOwnString(const char* name) {
  CWinReg reg;
  if (!reg.InitForWrite(CWinReg::HKEY_CURRENT_USER, kOwnKey, true)) return "";
  return reg.ReadString(name);
}

bool WriteOwnString(const char* name, const std::string& value) {
  CWinReg reg;
  if (!reg.InitForWrite(CWinReg::HKEY_CURRENT_USER, kOwnKey, true)) return false;
  return reg.WriteString(name, value);
}

std::string TakeSendAndExitRequest() {
  CWinReg reg;
  if (!reg.InitForWrite(CWinReg::HKEY_CURRENT_USER, kOwnKey, true)) return "";
  std::string request = reg.ReadString(kSendAndExit);
  reg.WriteString(kSendAndExit, "");
  return request;
}

std::string RecordedClientVersion(std::string_view applicationVersion) {
  int dots = 0;
  for (std::size_t i = 0; i < applicationVersion.size(); ++i) {
    if (applicationVersion[i] == '.' && ++dots == 2) return std::string(applicationVersion.substr(0, i));
  }
  return std::string(applicationVersion);
}

std::string ClientMajorVersion(std::string_view applicationVersion) {
  return std::string(applicationVersion.substr(0, applicationVersion.find('.')));
}

std::string CalendarOptionsKey(std::string_view recordedVersion) {
  return "Software\\Microsoft\\Office\\" + std::string(recordedVersion) + "\\Outlook\\Options\\Calendar";
}

std::string SpellingOptionsKey(std::string_view majorVersion) {
  return "Software\\Microsoft\\Office\\" + std::string(majorVersion) + ".0\\Outlook\\Options\\Spelling";
}

bool ClientWantsSpellingCheck(std::string_view majorVersion) {
  CWinReg reg;
  if (!reg.InitForRead(CWinReg::HKEY_CURRENT_USER, SpellingOptionsKey(majorVersion))) return false;
  return reg.ReadLong("Check", 0) != 0;
}

}  // namespace qorvane::settings
