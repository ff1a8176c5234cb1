// The file system on POSIX: stat and readdir. A name starting with '.' is the
// POSIX idea of hidden; there are no system files; times are nanoseconds.
#include <dirent.h>
#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"

namespace qorvane {
namespace {

std::int64_t ModifiedNanoseconds(const struct stat& info) {
  return static_cast<std::int64_t>(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec;
}

// Closes the listing however the loop is left.
class DirHandle {
 public:
  explicit DirHandle(const std::string& folder) : dir_(opendir(folder.c_str())) {}
  DirHandle(const DirHandle&) = delete;
  DirHandle& operator=(const DirHandle&) = delete;
  ~DirHandle() {
    if (dir_) closedir(dir_);
  }
  DIR* get() const { return dir_; }

 private:
  DIR* dir_;
};

}  // namespace

bool FileExists(const std::string& path) {
  struct stat info {};
  return !path.empty() && stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::optional<std::vector<FolderEntry>> ListFolder(const std::string& folder) {
  if (folder.empty()) return std::nullopt;
  DirHandle dir(folder);
  if (!dir.get()) return std::nullopt;
  const std::string prefix = folder.back() == '/' ? folder : folder + "/";
  std::vector<FolderEntry> entries;
  while (const dirent* entry = readdir(dir.get())) {
    FolderEntry item;
    item.name = entry->d_name;
    // A link is judged by what it points to, as a Windows listing judges a
    // file; a dangling one is still listed, by the link itself.
    struct stat info {};
    const std::string path = prefix + item.name;
    if (stat(path.c_str(), &info) != 0 && lstat(path.c_str(), &info) != 0) continue;  // gone since readdir
    item.directory = S_ISDIR(info.st_mode);
    item.hidden = !item.name.empty() && item.name.front() == '.';
    item.system = false;
    item.lastWriteTicks = ModifiedNanoseconds(info);
    entries.push_back(std::move(item));
  }
  return entries;
}

bool IsFolderReference(std::string_view reference) {
  return !reference.empty() && (reference.back() == '\\' || reference.back() == '/');
}

std::string JoinPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  path += '/';
  path += name;
  return path;
}

}  // namespace qorvane
