// The add-in folder on Windows: the folder of the module holding this code,
// which is the add-in DLL when loaded by the mail client and the executable
// in tests and the command-line tool.
#include <windows.h>

#include <string>

#include "platform/addin_folder.h"
#include "platform/addin_folder_default.h"

namespace qorvane {

const char* PathSeparator() noexcept { return "\\"; }

namespace detail {

std::string DefaultAddinFolder() {
  HMODULE module = nullptr;
  const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  if (!GetModuleHandleExA(flags, reinterpret_cast<LPCSTR>(&DefaultAddinFolder), &module)) return {};
  std::string path(MAX_PATH, '\0');
  for (;;) {
    const DWORD length = GetModuleFileNameA(module, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    if (length < path.size()) {
      path.resize(length);
      break;
    }
    path.resize(path.size() * 2);  // truncated: a long path
  }
  const auto slash = path.find_last_of("\\/");
  if (slash == std::string::npos) return {};
  return path.substr(0, slash);
}

}  // namespace detail
}  // namespace qorvane
