// The file system service against real temporary folders: what a listing
// holds and how each entry is flagged, the unit of the last-write times, and
// the platform's own separator rules.
#include "platform/file_system.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <string>

#ifdef _WIN32
#include <windows.h>
constexpr bool kPosix = false;
constexpr std::int64_t kTicksPerSecond = 10'000'000;  // FILETIME: 100 ns
#else
constexpr bool kPosix = true;
constexpr std::int64_t kTicksPerSecond = 1'000'000'000;  // st_mtim: 1 ns
#endif

namespace qorvane {
namespace {

namespace fs = std::filesystem;

// Paths and names travel as UTF-8 through the service; the standard library
// must be told so, or mingw reads them in the ANSI code page.
fs::path Path(const std::string& utf8) {
  return fs::path(std::u8string(reinterpret_cast<const char8_t*>(utf8.data()), utf8.size()));
}

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return std::string(reinterpret_cast<const char*>(text.data()), text.size());
}

// A whole second three days ago, so that every file system keeps it exactly.
const fs::file_time_type kBase =
    std::chrono::time_point_cast<std::chrono::seconds>(fs::file_time_type::clock::now()) - std::chrono::hours(72);

struct TempFolder {
  const fs::path root = fs::temp_directory_path() / ("qorvane-fs-" + std::to_string(std::random_device()()));
  TempFolder() { fs::create_directories(root); }
  ~TempFolder() {
    std::error_code ec;
    fs::remove_all(root, ec);
  }
  std::string Folder() const { return Utf8(root); }
  std::string File(const std::string& name, fs::file_time_type modified = kBase) const {
    std::ofstream(root / Path(name)) << name;
    fs::last_write_time(root / Path(name), modified);
    return Utf8(root / Path(name));
  }
  std::string SubFolder(const std::string& name) const {
    fs::create_directories(root / Path(name));
    return Utf8(root / Path(name));
  }
};

// Windows flags entries by their attributes; POSIX calls dot names hidden and
// nothing system. Only files, not folders, exist for FileExists.
TEST(ListFolder, FlagsEachEntryAndKeepsItsTime) {
  TempFolder temp;
  // attributes: set on Windows, 2 hidden and 4 system.
  const struct { const char* name; bool directory, hidden, system; unsigned attributes; } cases[] = {
      {".", true, kPosix, false, 0},              {"..", true, kPosix, false, 0},
      {"sub", true, false, false, 0},             {".cache", true, kPosix, false, 0},
      {"report1.txt", false, false, false, 0},    {"report2.txt", false, false, false, 0},
      {"same-time.txt", false, false, false, 0},  {".profile", false, kPosix, false, 0},
      {"Bericht-\xC3\xBC\xE2\x82\xAC.txt", false, false, false, 0},  // u-umlaut and the euro sign
      {"hidden.txt", false, !kPosix, false, 2},   {"system.txt", false, false, !kPosix, 4},
      {"both.txt", false, !kPosix, !kPosix, 6},
  };
  for (const auto& c : cases) {
    const std::string path = c.directory ? temp.SubFolder(c.name) : temp.File(c.name);
#ifdef _WIN32
    if (c.attributes) {
      ASSERT_TRUE(SetFileAttributesW(Path(path).c_str(), c.attributes)) << c.name;
    }
#endif
  }
  temp.File("report2.txt", kBase + std::chrono::hours(24));
  const auto listed = ListFolder(temp.Folder());
  ASSERT_TRUE(listed);
  std::map<std::string, FolderEntry> entries;
  for (const FolderEntry& e : *listed) EXPECT_TRUE(entries.emplace(e.name, e).second) << "listed twice: " << e.name;
  EXPECT_EQ(entries.size(), std::size(cases));
  for (const auto& c : cases) {
    const auto found = entries.find(c.name);
    ASSERT_NE(found, entries.end()) << c.name;
    EXPECT_EQ(found->second.directory, c.directory) << c.name;
    EXPECT_EQ(found->second.system, c.system) << c.name;
    // On Windows the file system decides for dot names (wine calls them hidden).
    if (kPosix || c.name[0] != '.') {
      EXPECT_EQ(found->second.hidden, c.hidden) << c.name;
    }
    EXPECT_EQ(FileExists(JoinPath(temp.Folder(), c.name)), !c.directory) << "only a file exists: " << c.name;
  }
  const std::int64_t t1 = entries.at("report1.txt").lastWriteTicks;
  EXPECT_EQ(entries.at("report2.txt").lastWriteTicks - t1, 24 * 3600 * kTicksPerSecond) << "one day later";
  EXPECT_EQ(entries.at("same-time.txt").lastWriteTicks, t1);
  EXPECT_GT(t1, 0);
}

TEST(ListFolder, NothingForWhatIsNotAFolderThatExists) {
  TempFolder temp;
  const std::string missing = JoinPath(temp.Folder(), "missing");
  const std::string file = temp.File("plain.txt");
  for (const std::string& path : {std::string(), missing, JoinPath(missing, "deeper"), JoinPath(file, "x"), file}) {
    EXPECT_FALSE(ListFolder(path)) << "'" << path << "'";
    EXPECT_EQ(FileExists(path), path == file) << "'" << path << "'";
  }
}

TEST(FilePaths, FolderReferencesEndWithASeparatorAndJoinUsesThePlatforms) {
  const struct { const char* reference; bool expected; } cases[] = {
      {"C:\\Reports\\", true}, {"\\", true}, {"C:\\Reports", false}, {"C:\\Reports\\a.txt", false}, {"", false},
      {"C:\\Reports\\ ", false}, {"C:/Reports/", kPosix}, {"/", kPosix},
  };
  for (const auto& c : cases) EXPECT_EQ(IsFolderReference(c.reference), c.expected) << c.reference;
#ifdef _WIN32
  EXPECT_EQ(JoinPath("C:\\Reports", "a.txt"), "C:\\Reports\\a.txt");
  EXPECT_EQ(JoinPath("\\\\server\\share", "b"), "\\\\server\\share\\b");
#else
  EXPECT_EQ(JoinPath("/home/me/Reports", "a.txt"), "/home/me/Reports/a.txt");
  EXPECT_EQ(JoinPath("relative", "b"), "relative/b");
#endif
}

}  // namespace
}  // namespace qorvane
