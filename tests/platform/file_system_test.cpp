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
#endif

namespace qorvane {
namespace {

namespace fs = std::filesystem;

#ifdef _WIN32
constexpr std::int64_t kTicksPerSecond = 10'000'000;  // FILETIME: 100 ns
#else
constexpr std::int64_t kTicksPerSecond = 1'000'000'000;  // st_mtim: 1 ns
#endif

// Paths and names travel as UTF-8 through the service; the standard library
// must be told so, or mingw reads them in the ANSI code page.
fs::path Path(const std::string& utf8) {
  return fs::path(std::u8string(reinterpret_cast<const char8_t*>(utf8.data()), utf8.size()));
}

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return std::string(reinterpret_cast<const char*>(text.data()), text.size());
}

class TempFolder {
 public:
  TempFolder() {
    root_ = fs::temp_directory_path() / ("qorvane-fs-" + std::to_string(std::random_device()()));
    fs::create_directories(root_);
  }
  ~TempFolder() {
    std::error_code ec;
    fs::remove_all(root_, ec);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::string Folder() const { return Utf8(root_); }

  std::string File(const std::string& name, fs::file_time_type modified) const {
    const fs::path path = root_ / Path(name);
    std::ofstream(path) << name;
    fs::last_write_time(path, modified);
    return Utf8(path);
  }

  std::string SubFolder(const std::string& name) const {
    fs::create_directories(root_ / Path(name));
    return Utf8(root_ / Path(name));
  }

 private:
  fs::path root_;
};

std::map<std::string, FolderEntry> ByName(const std::vector<FolderEntry>& entries) {
  std::map<std::string, FolderEntry> named;
  for (const FolderEntry& entry : entries) {
    EXPECT_TRUE(named.emplace(entry.name, entry).second) << "listed twice: " << entry.name;
  }
  return named;
}

// A whole second in the past, so that every file system keeps it exactly.
fs::file_time_type BaseTime() {
  return std::chrono::time_point_cast<std::chrono::seconds>(fs::file_time_type::clock::now()) - std::chrono::hours(24 * 3);
}

TEST(ListFolder, FlagsEachEntryAndKeepsItsTime) {
  TempFolder temp;
  const auto base = BaseTime();
  temp.File("report1.txt", base);
  temp.File("report2.txt", base + std::chrono::hours(24));
  temp.File("same-time.txt", base);
  temp.File("Bericht-\xC3\xBC\xE2\x82\xAC.txt", base);  // u-umlaut and the euro sign
  temp.SubFolder("sub");

  const auto listed = ListFolder(temp.Folder());
  ASSERT_TRUE(listed);
  const auto entries = ByName(*listed);

  const struct {
    const char* name;
    bool directory;
  } expected[] = {{".", true},           {"..", true},           {"sub", true},
                  {"report1.txt", false}, {"report2.txt", false}, {"same-time.txt", false},
                  {"Bericht-\xC3\xBC\xE2\x82\xAC.txt", false}};
  EXPECT_EQ(entries.size(), std::size(expected));
  for (const auto& e : expected) {
    const auto found = entries.find(e.name);
    ASSERT_NE(found, entries.end()) << e.name;
    EXPECT_EQ(found->second.directory, e.directory) << e.name;
    EXPECT_FALSE(found->second.system) << e.name;
    if (e.name[0] != '.') {
      EXPECT_FALSE(found->second.hidden) << e.name;
    }
  }

  const std::int64_t t1 = entries.at("report1.txt").lastWriteTicks;
  EXPECT_EQ(entries.at("report2.txt").lastWriteTicks - t1, 24 * 3600 * kTicksPerSecond) << "one day later";
  EXPECT_EQ(entries.at("same-time.txt").lastWriteTicks, t1);
  EXPECT_GT(t1, 0);
}

TEST(ListFolder, NothingForWhatIsNotAListableFolder) {
  TempFolder temp;
  const std::string file = temp.File("plain.txt", BaseTime());
  const std::string cases[] = {"", JoinPath(temp.Folder(), "missing"), JoinPath(JoinPath(temp.Folder(), "missing"), "deeper"),
                               file};
  for (const std::string& folder : cases) EXPECT_FALSE(ListFolder(folder)) << "'" << folder << "'";
}

#ifdef _WIN32
TEST(ListFolder, ReportsTheHiddenAndSystemAttributes) {
  TempFolder temp;
  const struct {
    const char* name;
    DWORD attributes;
    bool hidden;
    bool system;
  } cases[] = {
      {"plain.txt", FILE_ATTRIBUTE_NORMAL, false, false},
      {"hidden.txt", FILE_ATTRIBUTE_HIDDEN, true, false},
      {"system.txt", FILE_ATTRIBUTE_SYSTEM, false, true},
      {"both.txt", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM, true, true},
  };
  for (const auto& c : cases) {
    const std::string path = temp.File(c.name, BaseTime());
    ASSERT_TRUE(SetFileAttributesA(path.c_str(), c.attributes)) << c.name;
  }
  const auto listed = ListFolder(temp.Folder());
  ASSERT_TRUE(listed);
  const auto entries = ByName(*listed);
  for (const auto& c : cases) {
    ASSERT_EQ(entries.count(c.name), 1u) << c.name;
    EXPECT_EQ(entries.at(c.name).hidden, c.hidden) << c.name;
    EXPECT_EQ(entries.at(c.name).system, c.system) << c.name;
    EXPECT_FALSE(entries.at(c.name).directory) << c.name;
    SetFileAttributesA(JoinPath(temp.Folder(), c.name).c_str(), FILE_ATTRIBUTE_NORMAL);
  }
}
#else
TEST(ListFolder, CallsDotNamesHiddenAndNothingSystem) {
  TempFolder temp;
  temp.File(".profile", BaseTime());
  temp.File("visible.txt", BaseTime());
  temp.File("not.hidden", BaseTime());
  temp.SubFolder(".cache");
  const auto listed = ListFolder(temp.Folder());
  ASSERT_TRUE(listed);
  const auto entries = ByName(*listed);
  const struct {
    const char* name;
    bool hidden;
    bool directory;
  } cases[] = {{".profile", true, false}, {"visible.txt", false, false}, {"not.hidden", false, false},
               {".cache", true, true},    {".", true, true},             {"..", true, true}};
  EXPECT_EQ(entries.size(), std::size(cases));
  for (const auto& c : cases) {
    ASSERT_EQ(entries.count(c.name), 1u) << c.name;
    EXPECT_EQ(entries.at(c.name).hidden, c.hidden) << c.name;
    EXPECT_EQ(entries.at(c.name).directory, c.directory) << c.name;
    EXPECT_FALSE(entries.at(c.name).system) << c.name;
  }
}

TEST(ListFolder, JudgesALinkByItsTarget) {
  TempFolder temp;
  const std::string target = temp.File("target.txt", BaseTime());
  const std::string folder = temp.SubFolder("dir");
  fs::create_symlink(target, JoinPath(temp.Folder(), "to-file"));
  fs::create_directory_symlink(folder, JoinPath(temp.Folder(), "to-dir"));
  fs::create_symlink(JoinPath(temp.Folder(), "gone"), JoinPath(temp.Folder(), "dangling"));
  const auto listed = ListFolder(temp.Folder() + "/");
  ASSERT_TRUE(listed);
  const auto entries = ByName(*listed);
  ASSERT_EQ(entries.count("to-file"), 1u);
  ASSERT_EQ(entries.count("to-dir"), 1u);
  ASSERT_EQ(entries.count("dangling"), 1u);
  EXPECT_FALSE(entries.at("to-file").directory);
  EXPECT_EQ(entries.at("to-file").lastWriteTicks, entries.at("target.txt").lastWriteTicks);
  EXPECT_TRUE(entries.at("to-dir").directory);
  EXPECT_FALSE(entries.at("dangling").directory);
  EXPECT_TRUE(FileExists(JoinPath(temp.Folder(), "to-file")));
  EXPECT_FALSE(FileExists(JoinPath(temp.Folder(), "dangling")));
}
#endif

TEST(FileExists, OnlyForAnExistingFile) {
  TempFolder temp;
  const std::string file = temp.File("here.txt", BaseTime());
  const std::string unicode = temp.File("\xC3\xA9t\xC3\xA9.txt", BaseTime());
  const std::string folder = temp.SubFolder("folder");
  const struct {
    std::string path;
    bool expected;
  } cases[] = {
      {file, true},
      {unicode, true},
      {folder, false},
      {JoinPath(temp.Folder(), "missing.txt"), false},
      {JoinPath(folder, "here.txt"), false},
      {"", false},
  };
  for (const auto& c : cases) EXPECT_EQ(FileExists(c.path), c.expected) << "'" << c.path << "'";
}

TEST(IsFolderReference, IsTheTrailingSeparator) {
  const struct {
    const char* reference;
    bool expected;
  } cases[] = {
      {"C:\\Reports\\", true},
      {"\\", true},
      {"C:\\Reports", false},
      {"C:\\Reports\\a.txt", false},
      {"", false},
      {"C:\\Reports\\ ", false},
#ifdef _WIN32
      {"C:/Reports/", false},
#else
      {"/home/me/Reports/", true},
      {"/", true},
#endif
  };
  for (const auto& c : cases) EXPECT_EQ(IsFolderReference(c.reference), c.expected) << c.reference;
}

TEST(JoinPath, PutsThePlatformSeparatorBetween) {
  const struct {
    const char* folder;
    const char* name;
    const char* expected;
  } cases[] = {
#ifdef _WIN32
      {"C:\\Reports", "a.txt", "C:\\Reports\\a.txt"},
      {"\\\\server\\share", "b", "\\\\server\\share\\b"},
#else
      {"/home/me/Reports", "a.txt", "/home/me/Reports/a.txt"},
      {"relative", "b", "relative/b"},
#endif
  };
  for (const auto& c : cases) EXPECT_EQ(JoinPath(c.folder, c.name), c.expected) << c.folder;
}

}  // namespace
}  // namespace qorvane
