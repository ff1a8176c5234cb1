// CWinReg over the registry call layer.
#include "infra/cwinreg.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/runtime_text.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"

namespace reg = qorvane::registry;

namespace {

// A registry file that could not be read has been set aside by the POSIX
// half; the user should find that in the log rather than on a console.
void LogUnreadableRegistryFile(const std::string& path, const std::string& reason) {
  qorvane::IgnoreErrors([&] { g_debug.OutWarning("CWinReg", "registry file " + path + " set aside: " + reason); });
}

[[maybe_unused]] const bool kReporterInstalled = [] {
  reg::SetCorruptionReporter(&LogUnreadableRegistryFile);
  return true;
}();

}  // namespace

CWinReg::~CWinReg() { CloseKey(); }

bool CWinReg::InitForRead(HKEY hive, const std::string& subKey) {
  return InitForAccess(hive, subKey, reg::kKeyRead, false);
}

bool CWinReg::InitForWrite(HKEY hive, const std::string& subKey, bool create) {
  return InitForAccess(hive, subKey, reg::kKeyWrite, create);
}

bool CWinReg::InitForAllAccess(HKEY hive, const std::string& subKey, bool create) {
  return InitForAccess(hive, subKey, reg::kKeyAllAccess, create);
}

bool CWinReg::InitForAccess(HKEY hive, const std::string& subKey, std::uint32_t access, bool create) {
  // Re-initialising lets go of the key held before.
  CloseKey();
  reg::Result rc;
  if (create) {
    std::uint32_t disposition = 0;
    rc = reg::CreateKeyEx(hive, subKey, access, m_hKey, disposition);
  } else {
    rc = reg::OpenKeyEx(hive, subKey, access, m_hKey);
  }
  if (rc != reg::kSuccess) m_hKey = 0;
  return rc == reg::kSuccess;
}

std::string CWinReg::Values(std::uint32_t index) {
  std::array<char, kNameBufferSize + 1> name{};
  std::uint32_t length = kNameBufferSize;
  if (reg::EnumValue(m_hKey, index, name.data(), &length) != reg::kSuccess) return "";
  return std::string(name.data(), std::min<std::uint32_t>(length, kNameBufferSize));
}

std::string CWinReg::Keys(std::uint32_t index) {
  std::array<char, kNameBufferSize + 1> name{};
  std::uint32_t length = kNameBufferSize;
  if (reg::EnumKeyEx(m_hKey, index, name.data(), &length) != reg::kSuccess) return "";
  return std::string(name.data(), std::min<std::uint32_t>(length, kNameBufferSize));
}

void CWinReg::DeleteAllKeys() {
  // Collect first: deleting while enumerating would shift the indexes.
  std::vector<std::string> names;
  for (std::uint32_t i = 0;; ++i) {
    std::string name = Keys(i);
    if (name.empty()) break;
    names.push_back(std::move(name));
  }
  for (const std::string& name : names) {
    // The registry reads names as C strings: one with a NUL in it would open
    // as this very key and recurse without end. Such a name cannot be
    // opened or deleted by name, so it is left, like any undeletable key.
    if (name.find('\0') != std::string::npos) continue;
    CWinReg child;
    if (child.InitForAllAccess(m_hKey, name, false)) {
      child.DeleteAllKeys();
      child.CloseKey();
    }
    DeleteKey(name);
  }
}

bool CWinReg::DeleteKeyRec(const std::string& subKey) {
  CWinReg child;
  if (child.InitForAllAccess(m_hKey, subKey, false)) {
    child.DeleteAllKeys();
    child.CloseKey();
  }
  return DeleteKey(subKey);
}

bool CWinReg::CloseKey() {
  if (m_hKey == 0) return true;
  const reg::Result rc = reg::CloseKey(m_hKey);
  m_hKey = 0;
  return rc == reg::kSuccess;
}

bool CWinReg::WriteString(const std::string& name, const std::string& value) {
  if (m_hKey == 0) return false;
  // The terminator is deliberately not counted; reading appends it back.
  return reg::SetValueEx(m_hKey, name, reg::kRegSz, reinterpret_cast<const std::uint8_t*>(value.data()),
                         static_cast<std::uint32_t>(value.size())) == reg::kSuccess;
}

std::string CWinReg::ReadString(const std::string& name) {
  if (m_hKey == 0) return "";
  std::array<std::uint8_t, kReadBufferSize> buffer{};
  std::uint32_t type = 0;
  std::uint32_t size = kReadBufferSize;
  if (reg::QueryValueEx(m_hKey, name, &type, buffer.data(), &size) != reg::kSuccess) return "";
  if (type != reg::kRegSz && type != reg::kRegExpandSz) return "";
  if (size < 1) return "";
  // The count includes the terminator: cut one character.
  return std::string(reinterpret_cast<const char*>(buffer.data()), size - 1);
}

std::string CWinReg::ReadText(const std::string& name) {
  if (m_hKey == 0) return "";
  // The value may change between asking its size and reading it (another
  // process saving the same setting), so ask again when it grew.
  for (int attempt = 0; attempt < 3; ++attempt) {
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    if (reg::QueryValueEx(m_hKey, name, &type, nullptr, &size) != reg::kSuccess) return "";
    if ((type != reg::kRegSz && type != reg::kRegExpandSz) || size > kMaxTextSize) return "";
    // One byte more than stored, for the terminator a string stored without
    // one is given.
    std::vector<std::uint8_t> buffer(size + 1);
    std::uint32_t got = size + 1;
    const reg::Result rc = reg::QueryValueEx(m_hKey, name, &type, buffer.data(), &got);
    if (rc == reg::kMoreData) continue;
    if (rc != reg::kSuccess || (type != reg::kRegSz && type != reg::kRegExpandSz)) return "";
    std::string text(reinterpret_cast<const char*>(buffer.data()), std::min<std::uint32_t>(got, size + 1));
    if (!text.empty() && text.back() == '\0') text.pop_back();
    return text;
  }
  return "";
}

bool CWinReg::WriteLong(const std::string& name, std::int32_t value) {
  if (m_hKey == 0) return false;
  std::uint8_t bytes[4];
  const auto bits = static_cast<std::uint32_t>(value);
  for (int i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(bits >> (8 * i));
  return reg::SetValueEx(m_hKey, name, reg::kRegDword, bytes, 4) == reg::kSuccess;
}

std::int32_t CWinReg::ReadLong(const std::string& name, std::int32_t) {
  if (m_hKey == 0) return 0;
  std::uint8_t bytes[4] = {};
  std::uint32_t type = 0;
  std::uint32_t size = 4;
  if (reg::QueryValueEx(m_hKey, name, &type, bytes, &size) != reg::kSuccess || type != reg::kRegDword) return 0;
  std::uint32_t bits = 0;
  for (int i = 0; i < 4; ++i) bits |= static_cast<std::uint32_t>(bytes[i]) << (8 * i);
  return static_cast<std::int32_t>(bits);
}

bool CWinReg::WriteBool(const std::string& name, bool value) { return WriteString(name, value ? "yes" : "no"); }

bool CWinReg::ReadBool(const std::string& name) { return qorvane::LCase(ReadString(name)) == "yes"; }

std::optional<std::uint32_t> CWinReg::ValueType(const std::string& name) {
  if (m_hKey == 0) return std::nullopt;
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  if (reg::QueryValueEx(m_hKey, name, &type, nullptr, &size) != reg::kSuccess) return std::nullopt;
  return type;
}

bool CWinReg::DeleteValue(const std::string& name) { return reg::DeleteValue(m_hKey, name) == reg::kSuccess; }

bool CWinReg::DeleteKey(const std::string& subKey) { return reg::DeleteKey(m_hKey, subKey) == reg::kSuccess; }

bool CWinReg::FlushKey() { return reg::FlushKey(m_hKey) == reg::kSuccess; }
