// The operating system's version, for the bug report.
//
// Windows: RtlGetVersion (which, unlike GetVersionExW, is not capped at the
// version named in the calling executable's manifest), GetVersionExW when
// ntdll lacks it. POSIX: uname, read into the same fields: the system's name
// ("Linux"), the release's first two numbers and the whole release as build.
//
// Lifecycle: the platform's answer is current until SetOsVersion installs
// another (tests pin a system); nullptr restores it. Any thread.
#pragma once

#include <string>

namespace qorvane {

// Windows' platform identifiers (VER_PLATFORM_WIN32s, _WINDOWS, _NT).
inline constexpr long kPlatformWin32s = 0;
inline constexpr long kPlatformWin32Windows = 1;
inline constexpr long kPlatformWin32NT = 2;
// Not a Windows platform: `systemName` names the system.
inline constexpr long kPlatformOther = -1;

struct OsVersion {
  long platformId = kPlatformOther;
  std::string systemName;  // POSIX only: uname's sysname
  long major = 0;
  long minor = 0;
  std::string build;  // Windows: the build number; POSIX: the release
};

class OsVersionService {
 public:
  virtual ~OsVersionService() = default;
  virtual OsVersion Get() = 0;
};

OsVersionService& PlatformOsVersion();
OsVersionService& CurrentOsVersion();
void SetOsVersion(OsVersionService* service);

}  // namespace qorvane
