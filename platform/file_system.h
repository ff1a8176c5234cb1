// The file system as attachment resolution needs it: does a file exist, and
// what does a folder hold (names, attributes, last-write times).
//
// Windows answers from the Win32 attributes and times; POSIX from stat, where
// a name starting with '.' counts as hidden and nothing is a system file.
// Stateless; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qorvane {

struct FolderEntry {
  std::string name;  // without the folder
  bool directory = false;
  bool hidden = false;
  bool system = false;
  // Comparable within one platform only: larger is later.
  std::int64_t lastWriteTicks = 0;
};

// True for an existing regular file (not a folder).
bool FileExists(const std::string& path);

// The entries of a folder, "." and ".." included where the platform lists
// them, in the platform's listing order; nothing when it can't be listed.
std::optional<std::vector<FolderEntry>> ListFolder(const std::string& folder);

// An attachment reference that names a folder: it ends with "\" (and, on
// POSIX, also with "/").
bool IsFolderReference(std::string_view reference);

// folder + the platform's separator + name.
std::string JoinPath(std::string_view folder, std::string_view name);

}  // namespace qorvane
