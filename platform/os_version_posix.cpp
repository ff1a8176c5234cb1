// The system's version from uname: "Linux", release "6.1.0-18-amd64" gives
// version 6.1 with the whole release as its build.
#include <sys/utsname.h>

#include <cstdlib>

#include "platform/os_version.h"

namespace qorvane {
namespace {

class Uname final : public OsVersionService {
 public:
  OsVersion Get() override {
    OsVersion version;
    utsname names{};
    if (uname(&names) != 0) return version;
    version.systemName = names.sysname;
    version.build = names.release;
    char* end = nullptr;
    version.major = std::strtol(names.release, &end, 10);
    if (end && *end == '.') version.minor = std::strtol(end + 1, nullptr, 10);
    return version;
  }
};

}  // namespace

OsVersionService& PlatformOsVersion() {
  static Uname service;
  return service;
}

}  // namespace qorvane
