// The add-in folder on POSIX: $QORVANE_HOME, else the executable's folder.
#include <limits.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>

#include "platform/addin_folder.h"
#include "platform/addin_folder_default.h"

namespace qorvane {

const char* PathSeparator() noexcept { return "/"; }

namespace detail {

std::string DefaultAddinFolder() {
  if (const char* home = getenv("QORVANE_HOME"); home && *home) {
    std::string folder = home;
    while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    return folder;
  }
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
  if (length <= 0) return {};
  const std::string exe(path, static_cast<std::size_t>(length));
  const auto slash = exe.rfind('/');
  if (slash == std::string::npos) return {};
  return slash == 0 ? std::string("/") : exe.substr(0, slash);
}

}  // namespace detail
}  // namespace qorvane
