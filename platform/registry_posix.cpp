// The registry on POSIX: advapi32's calls, handles and result codes over one
// per-user .reg file.
//
// The file is $QORVANE_REGISTRY_FILE when set, else
// $XDG_CONFIG_HOME/qorvane/registry.reg (~/.config/qorvane/ by default).
// Several processes share one registry: a change takes an exclusive flock on
// registry.reg.lock, brings its copy of the tree up to date, applies itself,
// renames a synced temporary file over the old one and counts the change in
// the lock file; reads take the lock shared. Every call checks that its copy
// is current, cheaply: the lock file's change count and the file's identity,
// size and times (see Refresh) tell when the file must be read again. A file
// that does not parse, or is larger than kMaxFileSize, is moved aside as
// registry.reg.bad-<time>, reported through the corruption reporter, and the
// registry carries on empty.
//
// A handle is a number standing for a hive, a key path and the access it was
// opened with; key names are matched case-insensitively at each use. The
// codes returned are the ones advapi32 gives under wine 8 (measured), down to
// access checks and handles whose key has been deleted.
#include <errno.h>
#include <fcntl.h>
#include <pwd.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "base/utf8_text.h"
#include "platform/reg_text.h"
#include "platform/registry.h"

namespace qorvane::registry {
namespace {

// advapi32 codes the shared header has no name for.
constexpr Result kBadPathname = 161;        // a sub-key path starting with "\"
constexpr Result kNoAccess = 998;           // data null but a size given
constexpr Result kRegistryIoFailed = 1016;  // the file could not be read or written
constexpr Result kKeyDeleted = 1018;        // the handle's key is gone
constexpr Result kQuotaLimit = 613;         // ERROR_REGISTRY_QUOTA_LIMIT: the file would grow too large

// The largest registry file read or written. The add-in keeps a few settings
// in it; the bound keeps a damaged or hostile file from taking the memory of
// the mail client's process, which loads the whole file.
constexpr std::size_t kMaxFileSize = std::size_t{8} << 20;

// Access bits checked by the calls, and how the generic rights map to them.
constexpr std::uint32_t kQueryValue = 0x0001;
constexpr std::uint32_t kSetValue = 0x0002;
constexpr std::uint32_t kEnumerateSubKeys = 0x0008;
constexpr std::uint32_t kKeyReadRights = 0x20019;
constexpr std::uint32_t kKeyWriteRights = 0x20006;
constexpr std::uint32_t kGenericRead = 0x80000000u;
constexpr std::uint32_t kGenericWrite = 0x40000000u;
constexpr std::uint32_t kGenericExecute = 0x20000000u;
constexpr std::uint32_t kGenericAll = 0x10000000u;
constexpr std::uint32_t kMaximumAllowed = 0x02000000u;

std::uint32_t EffectiveAccess(std::uint32_t access) {
  std::uint32_t rights = access & 0x00FFFFFFu;
  if (access & (kGenericRead | kGenericExecute)) rights |= kKeyReadRights;
  if (access & kGenericWrite) rights |= kKeyWriteRights;
  if (access & (kGenericAll | kMaximumAllowed)) rights |= kKeyAllAccess;
  return rights;
}

bool IsStringType(std::uint32_t type) { return type == kRegSz || type == kRegExpandSz || type == 7; }

// Names reach advapi32 as C strings, so anything after a NUL is not part of them.
std::string_view CName(const std::string& name) { return std::string_view(name.c_str()); }

bool BreaksLine(std::string_view name) { return name.find_first_of("\r\n") != std::string_view::npos; }

// ---------------------------------------------------------------------------
// The file

void DefaultReporter(const std::string& path, const std::string& reason) {
  std::fprintf(stderr, "qorvane: registry file %s was unreadable and has been set aside: %s\n", path.c_str(),
               reason.c_str());
}

std::atomic<CorruptionReporter> g_reporter{nullptr};

void ReportCorruption(const std::string& path, const std::string& reason) {
  const CorruptionReporter reporter = g_reporter.load();
  (reporter ? reporter : DefaultReporter)(path, reason);
}

std::string HomeFolder() {
  if (const char* home = getenv("HOME"); home && *home) return home;
  std::vector<char> buffer(16384);
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found && found->pw_dir) {
    return found->pw_dir;
  }
  return {};
}

std::string RegistryPath() {
  if (const char* file = getenv("QORVANE_REGISTRY_FILE"); file && *file) return file;
  std::string config;
  if (const char* xdg = getenv("XDG_CONFIG_HOME"); xdg && xdg[0] == '/') {
    config = xdg;
  } else {
    const std::string home = HomeFolder();
    if (home.empty()) return {};
    config = home + "/.config";
  }
  return config + "/qorvane/registry.reg";
}

std::string FolderOf(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

bool MakeFolders(const std::string& folder) {
  for (std::size_t slash = folder.find('/', 1); slash != std::string::npos; slash = folder.find('/', slash + 1)) {
    mkdir(folder.substr(0, slash).c_str(), 0700);
  }
  mkdir(folder.c_str(), 0700);
  struct stat info{};
  return stat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

// An flock on the lock file beside the registry, released when it goes out
// of scope. Without the folder there is nothing to lock, and nothing to read.
class FileLock {
 public:
  FileLock(const std::string& path, int operation) {
    fd_ = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd_ < 0) fd_ = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd_ < 0) return;
    while (flock(fd_, operation) != 0) {
      if (errno != EINTR) {
        close(fd_);
        fd_ = -1;
        return;
      }
    }
  }
  ~FileLock() {
    if (fd_ >= 0) close(fd_);
  }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  bool Held() const { return fd_ >= 0; }

  // How many changes writers have made to the registry file, kept in the
  // lock file's first eight bytes (0 for an empty lock file). A reader whose
  // copy was made at another count reads the file again, whatever its times
  // say: file times can be too coarse to tell two quick writes apart.
  std::uint64_t ChangeCount() const {
    std::uint64_t count = 0;
    if (fd_ < 0 || pread(fd_, &count, sizeof count, 0) != static_cast<ssize_t>(sizeof count)) return 0;
    return count;
  }
  // Under the exclusive lock, after a change reached the file.
  std::uint64_t CountChange() const {
    const std::uint64_t count = ChangeCount() + 1;
    if (fd_ >= 0 && pwrite(fd_, &count, sizeof count, 0) != static_cast<ssize_t>(sizeof count)) return 0;
    return count;
  }

 private:
  int fd_ = -1;
};

// What identifies one version of the file: the same inode, size and times
// mean the same text unless it changed within the clock tick (see Refresh).
struct FileStamp {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  timespec modified{};
  timespec changed{};

  bool operator==(const FileStamp& other) const {
    return device == other.device && inode == other.inode && size == other.size &&
           modified.tv_sec == other.modified.tv_sec && modified.tv_nsec == other.modified.tv_nsec &&
           changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec;
  }
};

FileStamp StampOf(const struct stat& info) {
  return FileStamp{info.st_dev, info.st_ino, info.st_size, info.st_mtim, info.st_ctim};
}

enum class FileRead { kRead, kMissing, kTooLarge, kFailed };

// The whole file and the stamp of what was read, or why not. A file larger
// than kMaxFileSize is not read at all.
FileRead ReadWholeFile(const std::string& path, std::string& text, FileStamp& stamp) {
  text.clear();
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return errno == ENOENT ? FileRead::kMissing : FileRead::kFailed;
  struct stat info{};
  if (fstat(fd, &info) != 0) {
    close(fd);
    return FileRead::kFailed;
  }
  stamp = StampOf(info);
  if (info.st_size < 0 || static_cast<std::uintmax_t>(info.st_size) > kMaxFileSize) {
    close(fd);
    return FileRead::kTooLarge;
  }
  text.reserve(static_cast<std::size_t>(info.st_size));
  char buffer[16384];
  for (;;) {
    const ssize_t got = read(fd, buffer, sizeof buffer);
    if (got > 0) {
      text.append(buffer, static_cast<std::size_t>(got));
      // The file may grow while it is read; the bound holds all the same.
      if (text.size() > kMaxFileSize) {
        close(fd);
        return FileRead::kTooLarge;
      }
    } else if (got == 0 || errno != EINTR) {
      close(fd);
      return got == 0 ? FileRead::kRead : FileRead::kFailed;
    }
  }
}

bool WriteAll(int fd, const std::string& text) {
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t put = write(fd, text.data() + done, text.size() - done);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    done += static_cast<std::size_t>(put);
  }
  return true;
}

// Readers only ever see the old file or the new one: the text goes to a
// temporary file in the same folder, reaches the disk, and replaces the file
// in one rename. The folder is synced so the rename itself survives a crash.
bool WriteAtomically(const std::string& path, const std::string& text) {
  const std::string temporary = path + ".tmp-" + std::to_string(getpid());
  const int fd = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (fd < 0) return false;
  bool ok = WriteAll(fd, text) && fsync(fd) == 0;
  ok = close(fd) == 0 && ok;
  ok = ok && rename(temporary.c_str(), path.c_str()) == 0;
  if (!ok) {
    unlink(temporary.c_str());
    return false;
  }
  if (const int folder = open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); folder >= 0) {
    fsync(folder);
    close(folder);
  }
  return true;
}

// Renames a damaged file to registry.reg.bad-<local time>, with a counter
// when that name is taken. "" when it could not be moved.
std::string SetAside(const std::string& path) {
  const time_t now = time(nullptr);
  tm local{};
  localtime_r(&now, &local);
  char stamp[32];
  strftime(stamp, sizeof stamp, "%Y%m%d-%H%M%S", &local);
  const std::string base = path + ".bad-" + stamp;
  for (int attempt = 1; attempt < 1000; ++attempt) {
    const std::string aside = attempt == 1 ? base : base + "-" + std::to_string(attempt);
    struct stat info{};
    if (lstat(aside.c_str(), &info) == 0) continue;
    return rename(path.c_str(), aside.c_str()) == 0 ? aside : std::string();
  }
  return {};
}

timespec Now() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return now;
}

std::int64_t Nanoseconds(const timespec& t) { return std::int64_t{t.tv_sec} * 1000000000 + t.tv_nsec; }

// The tree of the file as last seen, with what identifies that version. A
// damaged file stays here (exists, with an empty tree) so it is reported
// once, even when it could not be moved aside.
struct Snapshot {
  bool valid = false;
  std::string path;
  std::uint64_t changeCount = 0;
  bool exists = false;
  FileStamp stamp;
  std::size_t textHash = 0;
  timespec checkedAt{};  // just before the file was last read or compared
  RegTree tree;
  bool damaged = false;  // a damaged file that could not be moved aside
};

// A file changed within a clock tick of our reading it may carry the same
// times as the version we read (file times come from a coarse clock), so
// such a file is read again and compared until the tick has passed.
bool MayHaveChangedUnseen(const Snapshot& snapshot) {
  constexpr std::int64_t kClockTick = 50'000'000;  // 50 ms, well above the kernel's coarse tick
  return Nanoseconds(snapshot.stamp.changed) + kClockTick >= Nanoseconds(snapshot.checkedAt) ||
         Nanoseconds(snapshot.stamp.modified) + kClockTick >= Nanoseconds(snapshot.checkedAt);
}

enum class Load { kOk, kDamaged, kIoError };

// Brings the snapshot up to date with the file at the lock's change count.
// An unchanged file costs a stat; a changed one is read, and parsed only when
// its text differs. A damaged file is only dealt with under the exclusive
// lock; under the shared one kDamaged says so.
Load Refresh(Snapshot& snapshot, const std::string& path, std::uint64_t changeCount, bool exclusive) {
  const bool current = snapshot.valid && snapshot.path == path && snapshot.changeCount == changeCount;
  struct stat info{};
  const bool exists = stat(path.c_str(), &info) == 0;
  if (!exists && errno != ENOENT) return Load::kIoError;
  if (current && !exists && !snapshot.exists) return Load::kOk;
  if (current && exists && snapshot.exists && StampOf(info) == snapshot.stamp &&
      (snapshot.damaged || !MayHaveChangedUnseen(snapshot))) {
    return Load::kOk;
  }

  const timespec checkedAt = Now();
  std::string text;
  FileStamp stamp;
  std::string reason;
  switch (ReadWholeFile(path, text, stamp)) {
    case FileRead::kFailed: return Load::kIoError;
    case FileRead::kMissing:
      snapshot = Snapshot{true, path, changeCount, false, {}, 0, checkedAt, RegTree()};
      return Load::kOk;
    case FileRead::kTooLarge:
      reason = "the file is larger than " + std::to_string(kMaxFileSize >> 20) + " MiB";
      break;
    case FileRead::kRead: break;
  }
  const std::size_t textHash = std::hash<std::string>()(text);
  if (reason.empty() && snapshot.valid && snapshot.path == path && snapshot.exists &&
      stamp.size == snapshot.stamp.size && textHash == snapshot.textHash) {
    snapshot.changeCount = changeCount;
    snapshot.stamp = stamp;
    snapshot.checkedAt = checkedAt;
    return Load::kOk;
  }
  RegTree tree;
  if (!reason.empty() || !ParseRegText(text, tree, reason)) {
    if (!exclusive) return Load::kDamaged;
    tree = RegTree();
    const std::string aside = SetAside(path);
    ReportCorruption(path, reason + (aside.empty() ? "; it could not be moved aside" : "; kept as " + aside));
    const bool movedAside = !aside.empty();
    snapshot = Snapshot{true, path, changeCount, !movedAside, stamp, textHash, checkedAt, std::move(tree), !movedAside};
    return Load::kOk;
  }
  snapshot = Snapshot{true, path, changeCount, true, stamp, textHash, checkedAt, std::move(tree), false};
  return Load::kOk;
}

// ---------------------------------------------------------------------------
// Handles and keys

struct OpenKey {
  int hive = 0;
  std::vector<std::string> path;
  std::uint32_t access = 0;
  bool deleted = false;
};

// One UI thread uses the registry, but a lock costs nothing next to the file
// work and keeps the tables sound if that ever changes.
std::mutex g_mutex;
Snapshot g_snapshot;
std::map<Handle, OpenKey> g_handles;
// Multiples of four, like kernel handles, far below the predefined ones.
Handle g_nextHandle = 0x40;

int HiveOf(Handle handle) {
  if (handle == kClassesRoot) return 0;
  if (handle == kCurrentUser) return 1;
  if (handle == kLocalMachine) return 2;
  return -1;
}

Result Resolve(Handle handle, OpenKey& key) {
  if (const int hive = HiveOf(handle); hive >= 0) {
    key = OpenKey{hive, {}, kKeyAllAccess, false};
    return kSuccess;
  }
  const auto it = g_handles.find(handle);
  if (it == g_handles.end()) return kInvalidHandle;
  if (it->second.deleted) return kKeyDeleted;
  key = it->second;
  return kSuccess;
}

Handle NewHandle(OpenKey key) {
  const Handle handle = g_nextHandle;
  g_nextHandle += 4;
  g_handles.emplace(handle, std::move(key));
  return handle;
}

// The names of a sub-key path. Doubled and trailing separators are skipped
// as advapi32 skips them; a leading one is its ERROR_BAD_PATHNAME. A name
// longer than Windows allows is refused as Windows refuses it, and one with a
// line break could not be written to the line-based file.
Result SplitPath(const std::string& subKey, std::vector<std::string>& names) {
  const std::string_view path = CName(subKey);
  if (!path.empty() && path.front() == '\\') return kBadPathname;
  for (std::size_t start = 0; start <= path.size();) {
    std::size_t end = path.find('\\', start);
    if (end == std::string_view::npos) end = path.size();
    if (end > start) names.emplace_back(path.substr(start, end - start));
    start = end + 1;
  }
  for (const std::string& name : names) {
    if (BreaksLine(name) || TextLength(name) > kMaxKeyNameLength) return kInvalidParameter;
  }
  return kSuccess;
}

template <typename Key>
Key* Walk(Key* key, const std::vector<std::string>& names, std::size_t count) {
  for (std::size_t i = 0; key && i < count; ++i) key = key->FindSubkey(names[i]);
  return key;
}

template <typename Key>
Key* Walk(Key* key, const std::vector<std::string>& names) {
  return Walk(key, names, names.size());
}

bool IsWithin(const OpenKey& key, int hive, const std::vector<std::string>& path) {
  if (key.hive != hive || key.path.size() < path.size()) return false;
  for (std::size_t i = 0; i < path.size(); ++i) {
    if (CompareNames(key.path[i], path[i]) != 0) return false;
  }
  return true;
}

// The current tree, read under the shared lock.
Result ReadTree(const RegTree*& tree) {
  const std::string path = RegistryPath();
  if (path.empty()) return kRegistryIoFailed;
  {
    FileLock shared(path + ".lock", LOCK_SH);
    const Load load = Refresh(g_snapshot, path, shared.ChangeCount(), false);
    if (load == Load::kIoError) return kRegistryIoFailed;
    if (load == Load::kOk) {
      tree = &g_snapshot.tree;
      return kSuccess;
    }
  }
  FileLock exclusive(path + ".lock", LOCK_EX);
  if (Refresh(g_snapshot, path, exclusive.ChangeCount(), true) != Load::kOk) return kRegistryIoFailed;
  tree = &g_snapshot.tree;
  return kSuccess;
}

// Applies change(tree, changed) to the current tree under the exclusive lock
// and writes the file when the change succeeded and changed something. The
// change works on the snapshot's own tree; when the file cannot take it, the
// snapshot is dropped, so the next call reads the file as it stayed.
template <typename Change>
Result Mutate(Change change) {
  const std::string path = RegistryPath();
  if (path.empty() || !MakeFolders(FolderOf(path))) return kRegistryIoFailed;
  FileLock exclusive(path + ".lock", LOCK_EX);
  if (!exclusive.Held() || Refresh(g_snapshot, path, exclusive.ChangeCount(), true) != Load::kOk) {
    return kRegistryIoFailed;
  }
  bool changed = false;
  const Result result = change(g_snapshot.tree, changed);
  if (!changed) return result;
  std::string text = FormatRegText(g_snapshot.tree);
  const timespec checkedAt = Now();
  Result written = kSuccess;
  struct stat info{};
  if (result != kSuccess) {
    written = result;
  } else if (text.size() > kMaxFileSize) {
    written = kQuotaLimit;
  } else if (!WriteAtomically(path, text) || stat(path.c_str(), &info) != 0) {
    written = kRegistryIoFailed;
  }
  if (written != kSuccess) {
    g_snapshot.valid = false;
    return written;
  }
  g_snapshot.changeCount = exclusive.CountChange();
  g_snapshot.exists = true;
  g_snapshot.damaged = false;
  g_snapshot.stamp = StampOf(info);
  g_snapshot.textHash = std::hash<std::string>()(text);
  g_snapshot.checkedAt = checkedAt;
  return kSuccess;
}

}  // namespace

Result CreateKeyEx(Handle parent, const std::string& subKey, std::uint32_t access, Handle& result,
                   std::uint32_t& disposition) {
  const std::lock_guard guard(g_mutex);
  result = 0;
  disposition = 0;
  OpenKey base;
  std::vector<std::string> names;
  if (const Result rc = Resolve(parent, base); rc != kSuccess) return rc;
  if (const Result rc = SplitPath(subKey, names); rc != kSuccess) return rc;
  // Windows stops keys at 512 levels with ERROR_INVALID_PARAMETER; so does
  // the file, whose text could not hold deeper ones.
  if (base.path.size() + names.size() > MaxKeyDepth(base.hive)) return kInvalidParameter;
  // Wine reports an empty sub-key path as a new key, so do we.
  bool created = names.empty();
  const Result rc = Mutate([&](RegTree& tree, bool& changed) {
    RegKey* key = Walk(&tree.hives[base.hive], base.path);
    if (!key) return kKeyDeleted;
    for (const std::string& name : names) {
      key = &key->AddSubkey(name, &created);
      changed = changed || created;
    }
    return kSuccess;
  });
  if (rc != kSuccess) return rc;
  OpenKey opened{base.hive, base.path, EffectiveAccess(access), false};
  opened.path.insert(opened.path.end(), names.begin(), names.end());
  result = NewHandle(std::move(opened));
  disposition = created ? kCreatedNewKey : kOpenedExistingKey;
  return kSuccess;
}

Result OpenKeyEx(Handle parent, const std::string& subKey, std::uint32_t access, Handle& result) {
  const std::lock_guard guard(g_mutex);
  result = 0;
  OpenKey base;
  std::vector<std::string> names;
  if (const Result rc = Resolve(parent, base); rc != kSuccess) return rc;
  if (const Result rc = SplitPath(subKey, names); rc != kSuccess) return rc;
  // advapi32 hands back the predefined handle itself for an empty path.
  if (names.empty() && HiveOf(parent) >= 0) {
    result = parent;
    return kSuccess;
  }
  const RegTree* tree = nullptr;
  if (const Result rc = ReadTree(tree); rc != kSuccess) return rc;
  const RegKey* key = Walk(&tree->hives[base.hive], base.path);
  if (!key) return kKeyDeleted;
  if (!Walk(key, names)) return kFileNotFound;
  OpenKey opened{base.hive, base.path, EffectiveAccess(access), false};
  opened.path.insert(opened.path.end(), names.begin(), names.end());
  result = NewHandle(std::move(opened));
  return kSuccess;
}

Result CloseKey(Handle key) {
  const std::lock_guard guard(g_mutex);
  if (HiveOf(key) >= 0) return kSuccess;
  return g_handles.erase(key) == 1 ? kSuccess : kInvalidHandle;
}

Result SetValueEx(Handle key, const std::string& name, std::uint32_t type, const std::uint8_t* data,
                  std::uint32_t size) {
  const std::lock_guard guard(g_mutex);
  OpenKey open;
  if (const Result rc = Resolve(key, open); rc != kSuccess) return rc;
  if (!(open.access & kSetValue)) return kAccessDenied;
  const std::string_view valueName = CName(name);
  if (BreaksLine(valueName) || TextLength(valueName) > kMaxValueNameLength) return kInvalidParameter;
  if (!data && size != 0) return kNoAccess;
  if (size > kMaxFileSize) return kQuotaLimit;
  // advapi32 looks one byte past a string that lacks its terminator and
  // counts the terminator when it finds one there, so "abc" given as three
  // bytes of a C string is stored as four. Callers pass C strings; a buffer
  // without that byte is a caller error on Windows as well.
  if (IsStringType(type) && size != 0 && data[size - 1] != 0 && data[size] == 0) ++size;
  std::vector<std::uint8_t> bytes(data, data + size);
  return Mutate([&](RegTree& tree, bool& changed) {
    RegKey* target = Walk(&tree.hives[open.hive], open.path);
    if (!target) return kKeyDeleted;
    changed = target->SetValue(valueName, type, std::move(bytes));
    return kSuccess;
  });
}

Result QueryValueEx(Handle key, const std::string& name, std::uint32_t* type, std::uint8_t* data,
                    std::uint32_t* size) {
  const std::lock_guard guard(g_mutex);
  const auto fail = [type](Result rc) {
    if (type) *type = kRegNone;
    return rc;
  };
  if (data && !size) return fail(kInvalidParameter);
  OpenKey open;
  if (const Result rc = Resolve(key, open); rc != kSuccess) return fail(rc);
  if (!(open.access & kQueryValue)) return fail(kAccessDenied);
  const RegTree* tree = nullptr;
  if (const Result rc = ReadTree(tree); rc != kSuccess) return fail(rc);
  const RegKey* target = Walk(&tree->hives[open.hive], open.path);
  if (!target) return fail(kKeyDeleted);
  const RegValue* value = target->FindValue(CName(name));
  if (!value) return fail(kFileNotFound);

  const auto required = static_cast<std::uint32_t>(value->data.size());
  if (type) *type = value->type;
  if (data) {
    if (required > *size) {
      *size = required;
      return kMoreData;
    }
    if (required != 0) std::memcpy(data, value->data.data(), required);
    // A string stored without its terminator gets one when there is room;
    // the size reported stays the stored size.
    if (IsStringType(value->type) && required != 0 && required < *size && data[required - 1] != 0) {
      data[required] = 0;
    }
  }
  if (size) *size = required;
  return kSuccess;
}

Result DeleteKey(Handle key, const std::string& subKey) {
  const std::lock_guard guard(g_mutex);
  OpenKey base;
  std::vector<std::string> names;
  if (const Result rc = Resolve(key, base); rc != kSuccess) return rc;
  if (const Result rc = SplitPath(subKey, names); rc != kSuccess) return rc;
  if (names.empty() && HiveOf(key) >= 0) return kAccessDenied;
  std::vector<std::string> full = base.path;
  full.insert(full.end(), names.begin(), names.end());
  const Result rc = Mutate([&](RegTree& tree, bool& changed) {
    RegKey* hive = &tree.hives[base.hive];
    if (!Walk(hive, base.path)) return kKeyDeleted;
    RegKey* parent = Walk(hive, full, full.size() - 1);
    const RegKey* target = parent ? parent->FindSubkey(full.back()) : nullptr;
    if (!target) return kFileNotFound;
    if (!target->subkeys.empty()) return kAccessDenied;
    changed = parent->RemoveSubkey(full.back());
    return kSuccess;
  });
  if (rc == kSuccess) {
    for (auto& [handle, open] : g_handles) {
      if (IsWithin(open, base.hive, full)) open.deleted = true;
    }
  }
  return rc;
}

Result DeleteValue(Handle key, const std::string& name) {
  const std::lock_guard guard(g_mutex);
  OpenKey open;
  if (const Result rc = Resolve(key, open); rc != kSuccess) return rc;
  if (!(open.access & kSetValue)) return kAccessDenied;
  return Mutate([&](RegTree& tree, bool& changed) {
    RegKey* target = Walk(&tree.hives[open.hive], open.path);
    if (!target) return kKeyDeleted;
    changed = target->RemoveValue(CName(name));
    return changed ? kSuccess : kFileNotFound;
  });
}

namespace {

// The shared part of the two enumerations: the key behind the handle, or why
// there is none.
Result EnumTarget(Handle key, std::uint32_t needed, const RegKey*& target) {
  OpenKey open;
  if (const Result rc = Resolve(key, open); rc != kSuccess) return rc;
  if (!(open.access & needed)) return kAccessDenied;
  const RegTree* tree = nullptr;
  if (const Result rc = ReadTree(tree); rc != kSuccess) return rc;
  target = Walk(&tree->hives[open.hive], open.path);
  return target ? kSuccess : kKeyDeleted;
}

}  // namespace

Result EnumKeyEx(Handle key, std::uint32_t index, char* name, std::uint32_t* nameLength) {
  const std::lock_guard guard(g_mutex);
  if (!name || !nameLength) return kInvalidParameter;
  const RegKey* target = nullptr;
  if (const Result rc = EnumTarget(key, kEnumerateSubKeys, target); rc != kSuccess) return rc;
  if (index >= target->subkeys.size()) return kNoMoreItems;
  const std::string& found = target->subkeys[index].name;
  // Too small a buffer is left untouched, the length too.
  if (found.size() >= *nameLength) return kMoreData;
  std::memcpy(name, found.c_str(), found.size() + 1);
  *nameLength = static_cast<std::uint32_t>(found.size());
  return kSuccess;
}

Result EnumValue(Handle key, std::uint32_t index, char* name, std::uint32_t* nameLength) {
  const std::lock_guard guard(g_mutex);
  if (!name || !nameLength) return kInvalidParameter;
  const RegKey* target = nullptr;
  if (const Result rc = EnumTarget(key, kQueryValue, target); rc != kSuccess) return rc;
  if (index >= target->values.size()) return kNoMoreItems;
  const std::string& found = target->values[index].name;
  if (found.size() >= *nameLength) {
    // Unlike the key names, a value name too long for the buffer arrives cut
    // to fit with its terminator; the length stays as given.
    if (*nameLength != 0) {
      std::memcpy(name, found.data(), *nameLength - 1);
      name[*nameLength - 1] = '\0';
    }
    return kMoreData;
  }
  std::memcpy(name, found.c_str(), found.size() + 1);
  *nameLength = static_cast<std::uint32_t>(found.size());
  return kSuccess;
}

Result FlushKey(Handle key) {
  const std::lock_guard guard(g_mutex);
  OpenKey open;
  if (const Result rc = Resolve(key, open); rc != kSuccess) return rc;
  // Every change is on disk before its call returns; only the key is checked.
  const RegTree* tree = nullptr;
  if (const Result rc = ReadTree(tree); rc != kSuccess) return rc;
  return Walk(&tree->hives[open.hive], open.path) ? kSuccess : kKeyDeleted;
}

CorruptionReporter SetCorruptionReporter(CorruptionReporter reporter) { return g_reporter.exchange(reporter); }

}  // namespace qorvane::registry
