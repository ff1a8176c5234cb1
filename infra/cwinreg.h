// CWinReg: one open registry key at a time, with string, DWORD and yes/no
// values, enumeration and recursive delete.
//
// No operation raises: a failure shows as false, "" or 0, and callers treat
// a failed open as an absent setting. Strings are written without their
// terminator and read with one character cut from the returned count, which
// is what earlier versions did; both halves together give back the text.
//
// Lifecycle: create, open with one of the Init... calls, use, and close with
// CloseKey or by destruction. UI thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/registry.h"

class CWinReg {
 public:
  using HKEY = qorvane::registry::Handle;

  static constexpr HKEY HKEY_CLASSES_ROOT = qorvane::registry::kClassesRoot;
  static constexpr HKEY HKEY_CURRENT_USER = qorvane::registry::kCurrentUser;
  static constexpr HKEY HKEY_LOCAL_MACHINE = qorvane::registry::kLocalMachine;

  // The longest text ReadString returns, terminator included.
  static constexpr std::uint32_t kReadBufferSize = 256;
  static constexpr std::uint32_t kNameBufferSize = 255;
  // The longest text ReadText takes in: far beyond any setting, small enough
  // that a damaged value cannot exhaust memory.
  static constexpr std::uint32_t kMaxTextSize = 1u << 20;

  CWinReg() = default;
  ~CWinReg();
  CWinReg(const CWinReg&) = delete;
  CWinReg& operator=(const CWinReg&) = delete;

  bool InitForRead(HKEY hive, const std::string& subKey);
  bool InitForWrite(HKEY hive, const std::string& subKey, bool create);
  bool InitForAllAccess(HKEY hive, const std::string& subKey, bool create);
  // hive may also be the handle of another open key.
  bool InitForAccess(HKEY hive, const std::string& subKey, std::uint32_t access, bool create);

  // Names at a 0-based index; "" when enumeration is exhausted or fails.
  std::string Values(std::uint32_t index);
  std::string Keys(std::uint32_t index);

  // Deletes every sub-key, recursively; the key and its values stay.
  void DeleteAllKeys();
  // Deletes subKey of the open key with everything below it.
  bool DeleteKeyRec(const std::string& subKey);

  bool CloseKey();
  bool WriteString(const std::string& name, const std::string& value);
  // "" unless the value is a string of at most 255 characters: the add-in's
  // own values have always been read through a 256-character buffer, and a
  // longer one fails rather than being cut.
  std::string ReadString(const std::string& name);
  // A string value of any length up to kMaxTextSize bytes, without the
  // terminator; "" when it is missing, not a string, or longer. This is how
  // the runtime's settings store is read: it has no 256-character limit.
  std::string ReadText(const std::string& name);
  bool WriteLong(const std::string& name, std::int32_t value);
  // The second argument is accepted and ignored.
  std::int32_t ReadLong(const std::string& name, std::int32_t ignored = 0);
  bool WriteBool(const std::string& name, bool value);
  bool ReadBool(const std::string& name);
  // The type of a value (REG_SZ, REG_DWORD, ...), or nothing when there is
  // no such value or no key is open. Tells a missing value from an empty one.
  std::optional<std::uint32_t> ValueType(const std::string& name);
  bool DeleteValue(const std::string& name);
  bool DeleteKey(const std::string& subKey);
  bool FlushKey();

  HKEY Handle() const noexcept { return m_hKey; }
  bool IsOpen() const noexcept { return m_hKey != 0; }

 private:
  HKEY m_hKey = 0;
};
