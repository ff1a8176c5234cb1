// The registry on Windows: advapi32's ANSI functions, unchanged.
#include <windows.h>

#include <utility>

#include "platform/registry.h"

namespace qorvane::registry {
namespace {

HKEY AsHkey(Handle handle) { return reinterpret_cast<HKEY>(handle); }

}  // namespace

Result CreateKeyEx(Handle parent, const std::string& subKey, std::uint32_t access, Handle& result,
                   std::uint32_t& disposition) {
  HKEY key = nullptr;
  DWORD how = 0;
  const LONG rc = RegCreateKeyExA(AsHkey(parent), subKey.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr,
                                  &key, &how);
  result = rc == ERROR_SUCCESS ? reinterpret_cast<Handle>(key) : 0;
  disposition = how;
  return rc;
}

Result OpenKeyEx(Handle parent, const std::string& subKey, std::uint32_t access, Handle& result) {
  HKEY key = nullptr;
  const LONG rc = RegOpenKeyExA(AsHkey(parent), subKey.c_str(), 0, access, &key);
  result = rc == ERROR_SUCCESS ? reinterpret_cast<Handle>(key) : 0;
  return rc;
}

Result CloseKey(Handle key) { return RegCloseKey(AsHkey(key)); }

Result SetValueEx(Handle key, const std::string& name, std::uint32_t type, const std::uint8_t* data,
                  std::uint32_t size) {
  return RegSetValueExA(AsHkey(key), name.c_str(), 0, type, data, size);
}

Result QueryValueEx(Handle key, const std::string& name, std::uint32_t* type, std::uint8_t* data,
                    std::uint32_t* size) {
  DWORD t = 0;
  DWORD s = size ? *size : 0;
  const LONG rc = RegQueryValueExA(AsHkey(key), name.c_str(), nullptr, &t, data, size ? &s : nullptr);
  if (type) *type = t;
  if (size) *size = s;
  return rc;
}

Result DeleteKey(Handle key, const std::string& subKey) { return RegDeleteKeyA(AsHkey(key), subKey.c_str()); }

Result DeleteValue(Handle key, const std::string& name) { return RegDeleteValueA(AsHkey(key), name.c_str()); }

Result EnumKeyEx(Handle key, std::uint32_t index, char* name, std::uint32_t* nameLength) {
  DWORD length = *nameLength;
  const LONG rc = RegEnumKeyExA(AsHkey(key), index, name, &length, nullptr, nullptr, nullptr, nullptr);
  *nameLength = length;
  return rc;
}

Result EnumValue(Handle key, std::uint32_t index, char* name, std::uint32_t* nameLength) {
  DWORD length = *nameLength;
  const LONG rc = RegEnumValueA(AsHkey(key), index, name, &length, nullptr, nullptr, nullptr, nullptr);
  *nameLength = length;
  return rc;
}

Result FlushKey(Handle key) { return RegFlushKey(AsHkey(key)); }

}  // namespace qorvane::registry

namespace qorvane::registry {

// advapi32 keeps its own hives; there is no file of ours to find unreadable,
// so the reporter is only kept, to be handed back.
CorruptionReporter SetCorruptionReporter(CorruptionReporter reporter) {
  static CorruptionReporter kept = nullptr;
  return std::exchange(kept, reporter);
}

}  // namespace qorvane::registry
