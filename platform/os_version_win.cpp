// The Windows version: RtlGetVersion from ntdll, GetVersionExW without it.
#include <windows.h>

#include <string>

#include "platform/os_version.h"

namespace qorvane {
namespace {

using RtlGetVersionFunction = LONG(WINAPI*)(OSVERSIONINFOW*);

OsVersion FromInfo(const OSVERSIONINFOW& info) {
  OsVersion version;
  version.platformId = static_cast<long>(info.dwPlatformId);
  version.major = static_cast<long>(info.dwMajorVersion);
  version.minor = static_cast<long>(info.dwMinorVersion);
  version.build = std::to_string(info.dwBuildNumber);
  return version;
}

class WindowsVersion final : public OsVersionService {
 public:
  OsVersion Get() override {
    OSVERSIONINFOW info{};
    info.dwOSVersionInfoSize = sizeof info;
    if (HMODULE ntdll = GetModuleHandleW(L"ntdll.dll")) {
      const auto rtlGetVersion = reinterpret_cast<RtlGetVersionFunction>(
          reinterpret_cast<void*>(GetProcAddress(ntdll, "RtlGetVersion")));
      if (rtlGetVersion && rtlGetVersion(&info) == 0) return FromInfo(info);
    }
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    if (GetVersionExW(&info)) return FromInfo(info);
#pragma GCC diagnostic pop
    return OsVersion{kPlatformWin32NT, {}, 0, 0, {}};
  }
};

}  // namespace

OsVersionService& PlatformOsVersion() {
  static WindowsVersion service;
  return service;
}

}  // namespace qorvane
