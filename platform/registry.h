// The registry as the add-in's settings see it: the ANSI advapi32 calls it
// uses, with their handles, result codes and byte-count rules.
//
// Windows forwards each call to advapi32 unchanged. POSIX keeps the same
// hive/key/value model in one per-user file, $XDG_CONFIG_HOME/qorvane/
// registry.reg (default ~/.config/qorvane/), written in the .reg export text
// format so a person can read and diff it. Both answer the same conformance
// tests, so CWinReg's rules (a terminator not counted on write, one character
// cut on read, the 256-character read buffer) hold on both.
//
// Lifecycle: a handle returned by CreateKeyEx/OpenKeyEx stays valid until
// CloseKey; the predefined hive handles are always valid. Handles are not
// shared between threads (the add-in has one UI thread).
#pragma once

#include <cstdint>
#include <string>

namespace qorvane::registry {

using Handle = std::uintptr_t;
using Result = long;

inline constexpr Handle kClassesRoot = 0x80000000u;
inline constexpr Handle kCurrentUser = 0x80000001u;
inline constexpr Handle kLocalMachine = 0x80000002u;

// Result codes (Windows system error numbers).
inline constexpr Result kSuccess = 0;
inline constexpr Result kFileNotFound = 2;
inline constexpr Result kAccessDenied = 5;
inline constexpr Result kInvalidHandle = 6;
inline constexpr Result kInvalidParameter = 87;
inline constexpr Result kMoreData = 234;
inline constexpr Result kNoMoreItems = 259;

// Value types.
inline constexpr std::uint32_t kRegNone = 0;
inline constexpr std::uint32_t kRegSz = 1;
inline constexpr std::uint32_t kRegExpandSz = 2;
inline constexpr std::uint32_t kRegBinary = 3;
inline constexpr std::uint32_t kRegDword = 4;

// Access masks.
inline constexpr std::uint32_t kKeyRead = 0x20019;
inline constexpr std::uint32_t kKeyWrite = 0x2001F;  // read, set value, create sub-key
inline constexpr std::uint32_t kKeyAllAccess = 0xF003F;

// Dispositions of CreateKeyEx.
inline constexpr std::uint32_t kCreatedNewKey = 1;
inline constexpr std::uint32_t kOpenedExistingKey = 2;

// Each function mirrors its advapi32 namesake (RegCreateKeyExA, ...).
Result CreateKeyEx(Handle parent, const std::string& subKey, std::uint32_t access, Handle& result,
                   std::uint32_t& disposition);
Result OpenKeyEx(Handle parent, const std::string& subKey, std::uint32_t access, Handle& result);
Result CloseKey(Handle key);
// String data is passed as given: a REG_SZ written without its terminator is
// stored without it, and read back with one appended.
Result SetValueEx(Handle key, const std::string& name, std::uint32_t type, const std::uint8_t* data,
                  std::uint32_t size);
// data may be null to ask for type and size only; size is in and out.
Result QueryValueEx(Handle key, const std::string& name, std::uint32_t* type, std::uint8_t* data,
                    std::uint32_t* size);
// Fails with kAccessDenied when the sub-key has sub-keys of its own.
Result DeleteKey(Handle key, const std::string& subKey);
Result DeleteValue(Handle key, const std::string& name);
// name receives at most *nameLength characters plus a terminator; on success
// *nameLength is the name's length. Sub-keys and values enumerate in
// case-insensitive name order.
Result EnumKeyEx(Handle key, std::uint32_t index, char* name, std::uint32_t* nameLength);
Result EnumValue(Handle key, std::uint32_t index, char* name, std::uint32_t* nameLength);
Result FlushKey(Handle key);

// Told when the POSIX registry file could not be read (cut off, bad syntax):
// the file has been moved aside and the registry starts empty. infra points
// this at the diagnostic log; null restores the default, one line on stderr.
// Windows never calls it (advapi32 keeps its own hives). Returns the reporter
// set before.
using CorruptionReporter = void (*)(const std::string& path, const std::string& reason);
CorruptionReporter SetCorruptionReporter(CorruptionReporter reporter);

}  // namespace qorvane::registry
