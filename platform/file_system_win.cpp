// The file system on Windows: the Win32 attributes and last-write times
// (100-nanosecond ticks since 1601), with paths and names kept as UTF-8 and
// handed to the wide-character calls so that any file name survives.
#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"
#include "platform/win_text.h"

namespace qorvane {
namespace {

std::int64_t Ticks(const FILETIME& time) {
  return static_cast<std::int64_t>((static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime);
}

}  // namespace

bool FileExists(const std::string& path) {
  if (path.empty()) return false;
  const DWORD attributes = GetFileAttributesW(WideFromUtf8(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::optional<std::vector<FolderEntry>> ListFolder(const std::string& folder) {
  if (folder.empty()) return std::nullopt;
  WIN32_FIND_DATAW found;
  const HANDLE find = FindFirstFileW(WideFromUtf8(JoinPath(folder, "*")).c_str(), &found);
  if (find == INVALID_HANDLE_VALUE) return std::nullopt;
  std::vector<FolderEntry> entries;
  do {
    FolderEntry entry;
    entry.name = Utf8FromWide(found.cFileName);
    entry.directory = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    entry.hidden = (found.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
    entry.system = (found.dwFileAttributes & FILE_ATTRIBUTE_SYSTEM) != 0;
    entry.lastWriteTicks = Ticks(found.ftLastWriteTime);
    entries.push_back(std::move(entry));
  } while (FindNextFileW(find, &found));
  FindClose(find);
  return entries;
}

bool IsFolderReference(std::string_view reference) { return !reference.empty() && reference.back() == '\\'; }

std::string JoinPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  path += '\\';
  path += name;
  return path;
}

}  // namespace qorvane
