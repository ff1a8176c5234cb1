// A private registry on Windows: HKEY_CURRENT_USER redirected to a key of
// its own for this process.
#include "tools/private_registry.h"

#include <windows.h>

namespace qorvane::tool {

namespace {
constexpr const char* kParent = "Software\\Brendix\\Qorvane Demo";
}  // namespace

PrivateRegistry::PrivateRegistry(const std::string&) {
  saved_ = std::string(kParent) + "\\" + std::to_string(GetCurrentProcessId());
  HKEY key = nullptr;
  DWORD disposition = 0;
  if (RegCreateKeyExA(HKEY_CURRENT_USER, saved_.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr,
                      &key, &disposition) != ERROR_SUCCESS)
    return;
  ok_ = RegOverridePredefKey(HKEY_CURRENT_USER, key) == ERROR_SUCCESS;
  // The redirection keeps its own handle to the key.
  RegCloseKey(key);
  if (!ok_) RegDeleteTreeA(HKEY_CURRENT_USER, saved_.c_str());
}

PrivateRegistry::~PrivateRegistry() {
  if (!ok_) return;
  RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
  RegDeleteTreeA(HKEY_CURRENT_USER, saved_.c_str());
  RegDeleteKeyA(HKEY_CURRENT_USER, saved_.substr(0, saved_.rfind('\\')).c_str());  // only when no other run uses it
}

}  // namespace qorvane::tool
