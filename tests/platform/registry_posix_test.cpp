// What only the POSIX registry has: its file. What it looks like, that
// processes writing at the same time lose nothing, that a damaged file is set
// aside and reported while the registry carries on, and what it cannot hold.
// All of registry_tests uses a temporary file, never the user's own.
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/registry.h"
#include "tests/support/process_state.h"

namespace qorvane::registry {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

constexpr Result kKeyDeleted = 1018;
constexpr Result kNoAccess = 998;
constexpr Result kQuotaLimit = 613;
const char* const kOverride = "QORVANE_REGISTRY_FILE";

fs::path MakeTemporaryFolder() {
  const fs::path folder = fs::temp_directory_path() / ("qorvane-registry-" + std::to_string(std::random_device()()));
  fs::create_directories(folder);
  return folder;
}

class TemporaryRegistry : public ::testing::Environment {
  void SetUp() override { setenv(kOverride, (folder_ / "registry.reg").c_str(), 1); }
  void TearDown() override { fs::remove_all(folder_); }
  const fs::path folder_ = MakeTemporaryFolder();
};

[[maybe_unused]] const auto* const g_environment = ::testing::AddGlobalTestEnvironment(new TemporaryRegistry);

std::vector<std::pair<std::string, std::string>> g_reports;
void Capture(const std::string& path, const std::string& reason) { g_reports.emplace_back(path, reason); }

std::string ReadFile(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

Result SetDword(Handle key, const std::string& name, std::uint32_t value) {
  return SetValueEx(key, name, kRegDword, reinterpret_cast<const std::uint8_t*>(&value), sizeof value);
}

std::int64_t Dword(Handle key, const std::string& name) {
  std::uint32_t value = 0;
  std::uint32_t size = sizeof value;
  return QueryValueEx(key, name, nullptr, reinterpret_cast<std::uint8_t*>(&value), &size) == kSuccess ? value : -1;
}

// The path of a key nested depth levels deep, one-letter names.
std::string DeepPath(std::size_t depth) {
  std::string path = "k";
  for (std::size_t i = 1; i < depth; ++i) path += "\\k";
  return path;
}

Handle Create(Handle hive, const std::string& path) {
  Handle key = 0;
  std::uint32_t disposition = 0;
  EXPECT_EQ(CreateKeyEx(hive, path, kKeyAllAccess, key, disposition), kSuccess) << path;
  return key;
}

// Runs body in a child process; Succeeded is true when it ran to the end and said so.
pid_t StartChild(const std::function<bool()>& body) {
  const pid_t pid = fork();
  if (pid == 0) _exit(body() ? 0 : 1);
  return pid;
}

bool Succeeded(pid_t pid) {
  int status = 0;
  return pid > 0 && waitpid(pid, &status, 0) == pid && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Each test gets its own empty folder and file, and captures reports.
class RegistryFile : public ::testing::Test {
 protected:
  ~RegistryFile() override {
    g_reports.clear();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  const fs::path folder_ = MakeTemporaryFolder();
  const fs::path file_ = folder_ / "registry.reg";
  const testing::ScopedEnvironmentVariable override_{kOverride, file_.string()};
  const testing::ScopedCorruptionReporter reporter_{&Capture};
};

TEST_F(RegistryFile, HoldsAllHivesAsRegText) {
  for (const Handle hive : {kCurrentUser, kLocalMachine, kClassesRoot}) CloseKey(Create(hive, "Software\\Q"));
  EXPECT_EQ(ReadFile(file_), "Windows Registry Editor Version 5.00\n\n"
                             "[HKEY_CLASSES_ROOT\\Software\\Q]\n\n"
                             "[HKEY_CURRENT_USER\\Software\\Q]\n\n"
                             "[HKEY_LOCAL_MACHINE\\Software\\Q]\n\n");
}

TEST_F(RegistryFile, DamagedFileIsSetAsideReportedAndReplaced) {
  const std::string header = "Windows Registry Editor Version 5.00\n\n";
  const std::string good = header + "[HKEY_CURRENT_USER\\Software\\Qorvane]\n\"Count\"=dword:0000000a\n";
  const struct { const char* what; std::string text; bool firstCallWrites; } cases[] = {
      {"empty", "", false},  {"binary junk", "\x7f" "ELF\x02\x01\x01\0\0junk"s, false},
      {"cut in the header", "Windows Registry Edi", false}, {"cut in a value", good.substr(0, good.size() - 5), false},
      {"cut at a line end inside hex data", header + "[HKEY_CURRENT_USER\\S]\n\"b\"=hex:01,\\\n", true},
      {"unknown hive", header + "[HKEY_USERS\\S]\n", true}, {"garbage line", good + "}{\n", true},
      {"a key a million levels deep", header + "[HKEY_CURRENT_USER\\" + DeepPath(1000000) + "]\n", false},
      {"larger than the registry may grow", header + ";" + std::string(9 << 20, 'x') + "\n", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    std::ofstream(file_, std::ios::binary) << c.text;
    g_reports.clear();
    Handle key = 0;
    std::uint32_t disposition = 0;
    if (!c.firstCallWrites) {
      EXPECT_EQ(OpenKeyEx(kCurrentUser, "Software\\Qorvane", kKeyRead, key), kFileNotFound);
    }
    ASSERT_EQ(CreateKeyEx(kCurrentUser, "Software\\After", kKeyAllAccess, key, disposition), kSuccess);
    EXPECT_EQ(disposition, kCreatedNewKey) << "starts empty";
    ASSERT_EQ(g_reports.size(), 1u);
    EXPECT_EQ(g_reports[0].first, file_.string());
    EXPECT_NE(g_reports[0].second.find("kept as " + file_.string() + ".bad-"), std::string::npos)
        << g_reports[0].second;
    ASSERT_EQ(SetDword(key, "n", 7), kSuccess);
    EXPECT_EQ(Dword(key, "n"), 7);
    CloseKey(key);
    EXPECT_EQ(g_reports.size(), 1u) << "reported once";
    std::vector<fs::path> aside;
    for (const auto& entry : fs::directory_iterator(folder_)) {
      if (entry.path().filename().string().rfind("registry.reg.bad-", 0) == 0) aside.push_back(entry.path());
    }
    ASSERT_EQ(aside.size(), 1u);
    EXPECT_EQ(ReadFile(aside[0]), c.text) << "kept byte for byte";
    fs::remove(aside[0]);
    fs::remove(file_);
  }
}

TEST_F(RegistryFile, ProcessesWritingAtOnceLoseNothingAndSeeEachOthersDeletes) {
  constexpr std::uint32_t kEach = 200;
  const auto name = [](std::uint32_t w, std::uint32_t i) { return "w" + std::to_string(w) + "-" + std::to_string(i); };
  pid_t writers[2];
  for (std::uint32_t writer = 0; writer < 2; ++writer) {
    writers[writer] = StartChild([&, writer] {
      Handle key = 0;
      std::uint32_t disposition = 0;
      if (CreateKeyEx(kCurrentUser, "Software\\Hammer", kKeyAllAccess, key, disposition) != kSuccess) return false;
      for (std::uint32_t i = 0; i < kEach; ++i) {
        if (SetDword(key, name(writer, i), writer * 1000 + i) != kSuccess) return false;
      }
      return CloseKey(key) == kSuccess;
    });
  }
  for (const pid_t writer : writers) EXPECT_TRUE(Succeeded(writer));
  Handle key = 0;
  ASSERT_EQ(OpenKeyEx(kCurrentUser, "Software\\Hammer", kKeyAllAccess, key), kSuccess);
  std::uint32_t found = 0;
  for (std::uint32_t writer = 0; writer < 2; ++writer) {
    for (std::uint32_t i = 0; i < kEach; ++i) found += Dword(key, name(writer, i)) == writer * 1000 + i;
  }
  EXPECT_EQ(found, 2 * kEach);
  EXPECT_TRUE(g_reports.empty());
  std::vector<std::string> names;  // no temporary file is left behind
  for (const auto& entry : fs::directory_iterator(folder_)) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"registry.reg", "registry.reg.lock"}));
  // A key another process deletes is deleted for the handles open here too.
  ASSERT_TRUE(Succeeded(StartChild([] { return DeleteKey(kCurrentUser, "software\\hammer") == kSuccess; })));
  EXPECT_EQ(SetDword(key, "n", 1), kKeyDeleted);
  EXPECT_EQ(FlushKey(key), kKeyDeleted);
  EXPECT_EQ(CloseKey(key), kSuccess);
}

// The file is line based, so names with line breaks have no place in it;
// null data with a size is advapi32's ERROR_NOACCESS rather than a crash.
// What Windows would not hold (names too long, keys deeper than 512 levels
// from the registry's root) is refused as Windows refuses it, and the file
// does not grow past its bound.
TEST_F(RegistryFile, WhatTheFileCannotHoldIsRefused) {
  const Handle key = Create(kCurrentUser, "Software\\Refused");
  Handle sub = 0;
  std::uint32_t disposition = 0;
  const struct { const char* what; std::function<Result()> call; Result result; } cases[] = {
      {"value name with LF", [&] { return SetDword(key, "a\nb", 1); }, kInvalidParameter},
      {"value name with CR", [&] { return SetDword(key, "a\rb", 1); }, kInvalidParameter},
      {"key name with LF", [&] { return CreateKeyEx(key, "a\nb", kKeyAllAccess, sub, disposition); },
       kInvalidParameter},
      {"key name of 256 characters",
       [&] { return CreateKeyEx(key, std::string(256, 'k'), kKeyAllAccess, sub, disposition); }, kInvalidParameter},
      {"value name of 16384 characters", [&] { return SetDword(key, std::string(16384, 'v'), 1); }, kInvalidParameter},
      {"a key 509 levels below HKEY_CURRENT_USER",
       [&] { return CreateKeyEx(kCurrentUser, DeepPath(509), kKeyAllAccess, sub, disposition); }, kSuccess},
      {"one level more, from the deepest key", [&] { return CreateKeyEx(sub, "k", kKeyAllAccess, sub, disposition); },
       kInvalidParameter},
      {"a million levels", [&] { return CreateKeyEx(key, DeepPath(1000000), kKeyAllAccess, sub, disposition); },
       kInvalidParameter},
      {"data larger than the file may grow",
       [&] { return SetValueEx(key, "big", kRegBinary, std::vector<std::uint8_t>(9 << 20).data(), 9 << 20); },
       kQuotaLimit},
      {"data whose text would make the file too large",
       [&] { return SetValueEx(key, "big", kRegBinary, std::vector<std::uint8_t>(3 << 20).data(), 3 << 20); },
       kQuotaLimit},
      {"null data with a size", [&] { return SetValueEx(key, "x", kRegBinary, nullptr, 4); }, kNoAccess},
      {"null data without a size", [&] { return SetValueEx(key, "x", kRegBinary, nullptr, 0); }, kSuccess},
      {"text after a NUL in the name is not part of it", [&] { return SetDword(key, "cut\0tail"s, 1); }, kSuccess},
  };
  for (const auto& c : cases) EXPECT_EQ(c.call(), c.result) << c.what;
  std::uint32_t size = 0;
  EXPECT_EQ(QueryValueEx(key, "cut", nullptr, nullptr, &size), kSuccess);
  EXPECT_EQ(QueryValueEx(key, "big", nullptr, nullptr, &size), kFileNotFound) << "a refused write leaves nothing";
  EXPECT_EQ(SetDword(key, "after", 2), kSuccess);
  EXPECT_EQ(Dword(key, "after"), 2);
  EXPECT_LT(fs::file_size(file_), 100000u);
  CloseKey(key);
}

// Each call checks the file cheaply instead of reading and comparing all of
// it: listing 16,000 sub-keys one index at a time took 38 s that way.
TEST_F(RegistryFile, EnumeratingManyKeysDoesNotReadTheFileEachTime) {
  constexpr std::uint32_t kCount = 16000;
  std::string text = "Windows Registry Editor Version 5.00\n\n";
  for (std::uint32_t i = 0; i < kCount; ++i) text += "[HKEY_CURRENT_USER\\Many\\sub" + std::to_string(i) + "]\n\n";
  std::ofstream(file_, std::ios::binary) << text;
  Handle key = 0;
  ASSERT_EQ(OpenKeyEx(kCurrentUser, "Many", kKeyRead, key), kSuccess);
  const auto start = std::chrono::steady_clock::now();
  std::uint32_t listed = 0;
  for (char name[256];; ++listed) {
    std::uint32_t length = sizeof name;
    if (EnumKeyEx(key, listed, name, &length) != kSuccess) break;
  }
  EXPECT_EQ(listed, kCount);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  CloseKey(key);
}

// A copy is only trusted while the file's identity, size and times say it
// is current; a same-size rewrite in place within the same clock tick must
// still be seen, as must a change another process makes.
TEST_F(RegistryFile, ChangesMadeBehindTheCopyAreSeen) {
  const std::string header = "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\Seen]\n";
  Handle key = 0;
  for (const char digit : {'1', '2', '3'}) {
    std::fstream(file_, std::ios::binary | std::ios::in | std::ios::out | std::ios::trunc)
        << header << "\"v\"=dword:0000000" << digit << "\n";
    if (!key) {
      ASSERT_EQ(OpenKeyEx(kCurrentUser, "Seen", kKeyAllAccess, key), kSuccess);
    }
    EXPECT_EQ(Dword(key, "v"), digit - '0');
  }
  ASSERT_TRUE(Succeeded(StartChild([] {
    Handle child = 0;
    return OpenKeyEx(kCurrentUser, "Seen", kKeyAllAccess, child) == kSuccess && SetDword(child, "v", 9) == kSuccess;
  })));
  EXPECT_EQ(Dword(key, "v"), 9);
  EXPECT_TRUE(g_reports.empty());
  CloseKey(key);
}

}  // namespace
}  // namespace qorvane::registry
