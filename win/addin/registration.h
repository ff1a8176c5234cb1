// Where the client finds the add-in: its COM class and its entry in the
// client's add-in list, all under HKEY_CURRENT_USER so that a user without
// administrator rights can register it:
//   Software\Classes\CLSID\{clsid}               "Qorvane Connect"
//     InprocServer32   (default) = DLL path, ThreadingModel = "Apartment"
//     ProgID           (default) = "Qorvane.Connect"
//   Software\Classes\Qorvane.Connect\CLSID        (default) = {clsid}
//   Software\Microsoft\Office\Outlook\Addins\Qorvane.Connect
//     FriendlyName "Qorvane", Description, LoadBehavior 3 (load at start-up),
//     CommandLineSafe 0
// A 32-bit DLL registered from a 32-bit process on 64-bit Windows lands in
// the 32-bit view of the classes by the system's registry redirection, which
// is where a 32-bit client looks; the add-in list is shared by both.
//
// Windows only.
#pragma once

#include <windows.h>

#include <string>

namespace addin_registration {

// {7B7E5550-09BB-4413-A1ED-7622FBE00BD2}
inline constexpr CLSID kClsid = {0x7B7E5550, 0x09BB, 0x4413, {0xA1, 0xED, 0x76, 0x22, 0xFB, 0xE0, 0x0B, 0xD2}};
inline constexpr wchar_t kClsidText[] = L"{7B7E5550-09BB-4413-A1ED-7622FBE00BD2}";
inline constexpr wchar_t kProgId[] = L"Qorvane.Connect";
inline constexpr wchar_t kFriendlyName[] = L"Qorvane";
inline constexpr wchar_t kDescription[] = L"Qorvane: send mail later, once or on a recurrence";
inline constexpr wchar_t kClientAddInsKey[] = L"Software\\Microsoft\\Office\\Outlook\\Addins";
inline constexpr DWORD kLoadAtStartup = 3;

// The keys registration makes, under HKEY_CURRENT_USER.
inline constexpr wchar_t kClassKey[] = L"Software\\Classes\\CLSID\\{7B7E5550-09BB-4413-A1ED-7622FBE00BD2}";
inline constexpr wchar_t kProgIdKey[] = L"Software\\Classes\\Qorvane.Connect";
inline constexpr wchar_t kAddInKey[] = L"Software\\Microsoft\\Office\\Outlook\\Addins\\Qorvane.Connect";

// Writes every key for the DLL at dllPath; false when one could not be
// written (the ones written stay, a second run overwrites them).
bool Register(const std::wstring& dllPath);
// Removes every key Register writes, and nothing else; true when none is
// left (also when none was there).
bool Unregister();

}  // namespace addin_registration
