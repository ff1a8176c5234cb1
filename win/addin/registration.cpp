// Writing and removing the add-in's per-user keys.
#include "win/addin/registration.h"

#include "win/com/unique_handle.h"

namespace addin_registration {
namespace {

using qorvane::com::UniqueHkey;

UniqueHkey CreateKey(const std::wstring& path) {
  UniqueHkey key;
  if (RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, key.put(), nullptr) !=
      ERROR_SUCCESS)
    key.Reset();
  return key;
}

// name null: the key's default value.
bool SetText(const std::wstring& path, const wchar_t* name, const std::wstring& value) {
  const UniqueHkey key = CreateKey(path);
  if (!key) return false;
  const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  return RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()), bytes) ==
         ERROR_SUCCESS;
}

bool SetNumber(const std::wstring& path, const wchar_t* name, DWORD value) {
  const UniqueHkey key = CreateKey(path);
  return key && RegSetValueExW(key.get(), name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value) ==
                    ERROR_SUCCESS;
}

bool RemoveTree(const std::wstring& path) {
  const LSTATUS status = RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str());
  return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

}  // namespace

bool Register(const std::wstring& dllPath) {
  if (dllPath.empty()) return false;
  const std::wstring server = std::wstring(kClassKey) + L"\\InprocServer32";
  // Every step runs, so that one refused value leaves the others written.
  bool written = SetText(kClassKey, nullptr, L"Qorvane Connect");
  written &= SetText(server, nullptr, dllPath);
  written &= SetText(server, L"ThreadingModel", L"Apartment");
  written &= SetText(std::wstring(kClassKey) + L"\\ProgID", nullptr, kProgId);
  written &= SetText(kProgIdKey, nullptr, L"Qorvane Connect");
  written &= SetText(std::wstring(kProgIdKey) + L"\\CLSID", nullptr, kClsidText);
  written &= SetText(kAddInKey, L"FriendlyName", kFriendlyName);
  written &= SetText(kAddInKey, L"Description", kDescription);
  written &= SetNumber(kAddInKey, L"LoadBehavior", kLoadAtStartup);
  written &= SetNumber(kAddInKey, L"CommandLineSafe", 0);
  return written;
}

bool Unregister() {
  bool removed = RemoveTree(kAddInKey);
  removed &= RemoveTree(kProgIdKey);
  removed &= RemoveTree(kClassKey);
  return removed;
}

}  // namespace addin_registration
