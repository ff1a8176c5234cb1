// Where the add-in keeps its settings, and the client options it reads.
//
//   own key    HKCU "Software\Brendix\Qorvane": "NextOccurence", "SendAndExit"
//   store      the runtime's per-user application settings, HKCU
//              "Software\VB and VBA Program Settings\<app>\<section>", so that
//              settings of earlier installs are found; values are strings
//   client     HKCU "Software\Microsoft\Office\<ver>\Outlook\Options\...":
//              "FirstDOW" and the spelling "Check", read and never written
//
// Every function treats a key that does not open as an absent setting.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qorvane::settings {

inline constexpr const char* kOwnKey = "Software\\Brendix\\Qorvane";
// Spelled as earlier versions spelled it: outside tools read this name.
inline constexpr const char* kNextOccurence = "NextOccurence";
inline constexpr const char* kSendAndExit = "SendAndExit";

inline constexpr const char* kAppName = "Qorvane";
inline constexpr const char* kSettingsSection = "Settings";
inline constexpr const char* kIgnoreList = "IgnoreList";
inline constexpr const char* kIgnoreSysHiden = "IgnoreSysHiden";

// The runtime's GetSetting / SaveSetting / DeleteSetting.
std::string StoreKeyPath(std::string_view appName, std::string_view section);
std::string GetSetting(std::string_view appName, std::string_view section, std::string_view key,
                       std::string_view defaultValue = "");
bool SaveSetting(std::string_view appName, std::string_view section, std::string_view key, std::string_view value);
bool DeleteSetting(std::string_view appName, std::string_view section, std::string_view key);

// The own key's values. The key is opened for write with create, so it
// exists after the first start.
std::string ReadOwnString(const char* name);
bool WriteOwnString(const char* name, const std::string& value);

// Reads "SendAndExit" and writes "" back at once: the request is consumed.
std::string TakeSendAndExitRequest();

// The client's version as the add-in records it: cut before the second dot
// ("11.0.6359" gives "11.0"; "9.0" and "12" stay as they are).
std::string RecordedClientVersion(std::string_view applicationVersion);
// The first field of the version ("11.0.6359" gives "11").
std::string ClientMajorVersion(std::string_view applicationVersion);

std::string CalendarOptionsKey(std::string_view recordedVersion);
std::string SpellingOptionsKey(std::string_view majorVersion);

// The client's spelling option: true when "Check" is present and not 0.
bool ClientWantsSpellingCheck(std::string_view majorVersion);

}  // namespace qorvane::settings
