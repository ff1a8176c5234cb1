// What only the POSIX registry has: its file. Where it lives, what it looks
// like, that processes writing at the same time lose nothing, and that a
// damaged file is set aside and reported while the registry carries on.
//
// This file also points the whole test program at a temporary registry file
// before the first test runs, so the conformance suite never touches the
// user's own settings.
#include <fcntl.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/registry.h"

namespace qorvane::registry {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

constexpr Result kKeyDeleted = 1018;
constexpr Result kNoAccess = 998;
const char* const kOverride = "QORVANE_REGISTRY_FILE";

fs::path MakeTemporaryFolder() {
  const fs::path folder =
      fs::temp_directory_path() / ("qorvane-registry-" + std::to_string(std::random_device()()));
  fs::create_directories(folder);
  return folder;
}

class TemporaryRegistry : public ::testing::Environment {
 public:
  void SetUp() override {
    folder_ = MakeTemporaryFolder();
    setenv(kOverride, (folder_ / "registry.reg").c_str(), 1);
  }
  void TearDown() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

 private:
  fs::path folder_;
};

[[maybe_unused]] const auto* const g_environment = ::testing::AddGlobalTestEnvironment(new TemporaryRegistry);

// Sets or (value null) removes an environment variable for one scope.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const char* value) : name_(name) {
    if (const char* old = getenv(name)) old_ = old, had_ = true;
    value ? setenv(name, value, 1) : unsetenv(name);
  }
  ~ScopedVariable() { had_ ? setenv(name_, old_.c_str(), 1) : unsetenv(name_); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  const char* name_;
  std::string old_;
  bool had_ = false;
};

std::vector<std::pair<std::string, std::string>> g_reports;
void Capture(const std::string& path, const std::string& reason) { g_reports.emplace_back(path, reason); }

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void WriteFile(const fs::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

std::vector<std::string> FileNames(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

Result SetDword(Handle key, const std::string& name, std::uint32_t value) {
  return SetValueEx(key, name, kRegDword, reinterpret_cast<const std::uint8_t*>(&value), sizeof value);
}

Result SetText(Handle key, const std::string& name, const std::string& text) {
  return SetValueEx(key, name, kRegSz, reinterpret_cast<const std::uint8_t*>(text.c_str()),
                    static_cast<std::uint32_t>(text.size() + 1));
}

Handle CreateUser(const std::string& path) {
  Handle key = 0;
  std::uint32_t disposition = 0;
  EXPECT_EQ(CreateKeyEx(kCurrentUser, path, kKeyAllAccess, key, disposition), kSuccess) << path;
  return key;
}

// Runs body in a child process; true when it ran to the end and said so.
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
  RegistryFile() : folder_(MakeTemporaryFolder()), file_(folder_ / "registry.reg"), override_(kOverride, file_.c_str()) {}
  ~RegistryFile() override {
    SetCorruptionReporter(nullptr);
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  void SetUp() override {
    g_reports.clear();
    SetCorruptionReporter(&Capture);
  }

  fs::path folder_;
  fs::path file_;
  ScopedVariable override_;
};

TEST_F(RegistryFile, HoldsAllHivesAsRegText) {
  const Handle user = CreateUser("Software\\Qorvane");
  ASSERT_EQ(SetText(user, "Folder", "C:\\Mail \"Archive\""), kSuccess);
  ASSERT_EQ(SetDword(user, "Count", 10), kSuccess);
  Handle machine = 0;
  Handle classes = 0;
  std::uint32_t disposition = 0;
  ASSERT_EQ(CreateKeyEx(kLocalMachine, "Software\\Qorvane", kKeyAllAccess, machine, disposition), kSuccess);
  ASSERT_EQ(SetDword(machine, "Installed", 1), kSuccess);
  ASSERT_EQ(CreateKeyEx(kClassesRoot, "Qorvane.Addin", kKeyAllAccess, classes, disposition), kSuccess);
  ASSERT_EQ(SetText(classes, "", "Qorvane"), kSuccess);
  for (const Handle key : {user, machine, classes}) CloseKey(key);
  EXPECT_EQ(ReadFile(file_),
            "Windows Registry Editor Version 5.00\n\n"
            "[HKEY_CLASSES_ROOT\\Qorvane.Addin]\n@=\"Qorvane\"\n\n"
            "[HKEY_CURRENT_USER\\Software]\n\n"
            "[HKEY_CURRENT_USER\\Software\\Qorvane]\n\"Count\"=dword:0000000a\n"
            "\"Folder\"=\"C:\\\\Mail \\\"Archive\\\"\"\n\n"
            "[HKEY_LOCAL_MACHINE\\Software]\n\n"
            "[HKEY_LOCAL_MACHINE\\Software\\Qorvane]\n\"Installed\"=dword:00000001\n\n");
  EXPECT_EQ(FileNames(folder_), (std::vector<std::string>{"registry.reg", "registry.reg.lock"}))
      << "no temporary file is left behind";
}

TEST_F(RegistryFile, FolderIsMadeOnTheFirstWrite) {
  const fs::path deep = folder_ / "a" / "b" / "registry.reg";
  const ScopedVariable override(kOverride, deep.c_str());
  Handle key = 0;
  std::uint32_t size = 0;
  EXPECT_EQ(OpenKeyEx(kCurrentUser, "Software", kKeyRead, key), kFileNotFound);
  EXPECT_EQ(QueryValueEx(kCurrentUser, "x", nullptr, nullptr, &size), kFileNotFound);
  EXPECT_FALSE(fs::exists(folder_ / "a")) << "reading made the folder";
  key = CreateUser("Software\\Qorvane");
  CloseKey(key);
  EXPECT_TRUE(fs::is_regular_file(deep));
}

TEST_F(RegistryFile, DefaultLocationIsTheUsersConfigFolder) {
  const ScopedVariable noOverride(kOverride, nullptr);
  const std::string home = (folder_ / "home").string();
  const std::string xdg = (folder_ / "xdg").string();
  const struct {
    const char* xdgConfigHome;  // null: unset
    std::string expected;
  } cases[] = {
      {xdg.c_str(), xdg + "/qorvane/registry.reg"},
      {nullptr, home + "/.config/qorvane/registry.reg"},
      {"", home + "/.config/qorvane/registry.reg"},
      {"relative/config", home + "/.config/qorvane/registry.reg"},
  };
  const ScopedVariable homeVariable("HOME", home.c_str());
  for (const auto& c : cases) {
    const ScopedVariable xdgVariable("XDG_CONFIG_HOME", c.xdgConfigHome);
    const Handle key = CreateUser("Software\\Where");
    CloseKey(key);
    EXPECT_TRUE(fs::is_regular_file(c.expected)) << c.expected;
    fs::remove(c.expected);
  }
}

TEST_F(RegistryFile, DamagedFileIsSetAsideReportedAndReplaced) {
  const std::string header = "Windows Registry Editor Version 5.00\n\n";
  const std::string good = header + "[HKEY_CURRENT_USER\\Software\\Qorvane]\n\"Count\"=dword:0000000a\n";
  const struct {
    const char* what;
    std::string text;
    bool firstCallWrites;
  } cases[] = {
      {"empty", "", false},
      {"binary junk", "\x7f" "ELF\x02\x01\x01\0\0junk"s, false},
      {"cut in the header", "Windows Registry Edi", false},
      {"cut in a value", good.substr(0, good.size() - 5), false},
      {"cut at a line end inside hex data", header + "[HKEY_CURRENT_USER\\S]\n\"b\"=hex:01,\\\n", true},
      {"unknown hive", header + "[HKEY_USERS\\S]\n", true},
      {"garbage line", good + "}{\n", true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    WriteFile(file_, c.text);
    g_reports.clear();
    Handle key = 0;
    std::uint32_t disposition = 0;
    if (c.firstCallWrites) {
      ASSERT_EQ(CreateKeyEx(kCurrentUser, "Software\\After", kKeyAllAccess, key, disposition), kSuccess);
      EXPECT_EQ(disposition, kCreatedNewKey);
    } else {
      EXPECT_EQ(OpenKeyEx(kCurrentUser, "Software\\Qorvane", kKeyRead, key), kFileNotFound) << "starts empty";
      key = CreateUser("Software\\After");
    }
    ASSERT_EQ(g_reports.size(), 1u);
    EXPECT_EQ(g_reports[0].first, file_.string());
    EXPECT_NE(g_reports[0].second.find("kept as " + file_.string() + ".bad-"), std::string::npos)
        << g_reports[0].second;

    ASSERT_EQ(SetDword(key, "n", 7), kSuccess);
    std::uint32_t value = 0;
    std::uint32_t size = sizeof value;
    EXPECT_EQ(QueryValueEx(key, "n", nullptr, reinterpret_cast<std::uint8_t*>(&value), &size), kSuccess);
    EXPECT_EQ(value, 7u);
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

TEST_F(RegistryFile, DefaultReporterWritesOneLineToStderr) {
  SetCorruptionReporter(nullptr);
  WriteFile(file_, "not a registry\n");
  const fs::path captured = folder_ / "stderr.txt";
  const int saved = dup(2);
  const int sink = open(captured.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  ASSERT_GE(sink, 0);
  dup2(sink, 2);
  close(sink);
  Handle key = 0;
  const Result result = OpenKeyEx(kCurrentUser, "Software", kKeyRead, key);
  dup2(saved, 2);
  close(saved);
  EXPECT_EQ(result, kFileNotFound);
  const std::string line = ReadFile(captured);
  EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << line;
  EXPECT_NE(line.find(file_.string()), std::string::npos) << line;
  EXPECT_NE(line.find("line 1"), std::string::npos) << line;
}

TEST_F(RegistryFile, TwoProcessesWritingAtOnceLoseNothing) {
  constexpr int kWriters = 2;
  constexpr std::uint32_t kEach = 200;
  pid_t writers[kWriters];
  for (int writer = 0; writer < kWriters; ++writer) {
    writers[writer] = StartChild([writer] {
      Handle key = 0;
      std::uint32_t disposition = 0;
      if (CreateKeyEx(kCurrentUser, "Software\\Hammer", kKeyAllAccess, key, disposition) != kSuccess) return false;
      for (std::uint32_t i = 0; i < kEach; ++i) {
        const std::string name = "w" + std::to_string(writer) + "-" + std::to_string(i);
        if (SetDword(key, name, writer * 1000 + i) != kSuccess) return false;
      }
      return CloseKey(key) == kSuccess;
    });
  }
  for (const pid_t writer : writers) EXPECT_TRUE(Succeeded(writer));

  Handle key = 0;
  ASSERT_EQ(OpenKeyEx(kCurrentUser, "Software\\Hammer", kKeyRead, key), kSuccess);
  int found = 0;
  for (int writer = 0; writer < kWriters; ++writer) {
    for (std::uint32_t i = 0; i < kEach; ++i) {
      std::uint32_t value = 0;
      std::uint32_t size = sizeof value;
      const std::string name = "w" + std::to_string(writer) + "-" + std::to_string(i);
      if (QueryValueEx(key, name, nullptr, reinterpret_cast<std::uint8_t*>(&value), &size) == kSuccess &&
          value == writer * 1000 + i) {
        ++found;
      }
    }
  }
  CloseKey(key);
  EXPECT_EQ(found, kWriters * static_cast<int>(kEach));
  EXPECT_TRUE(g_reports.empty());
  EXPECT_EQ(FileNames(folder_), (std::vector<std::string>{"registry.reg", "registry.reg.lock"}));
}

// The parent's last view of the file is older than the child's writes, so
// everything here is read back through the text.
TEST_F(RegistryFile, AnotherProcessReadsBackEveryKindOfValue) {
  std::string everyByte;
  for (int i = 0; i < 256; ++i) everyByte += static_cast<char>(i);
  const struct {
    std::string name;
    std::uint32_t type;
    std::string stored;
  } cases[] = {
      {"text", kRegSz, "hello\0"s},
      {"unterminated", kRegSz, "abc"},
      {"no bytes", kRegSz, ""},
      {"line break", kRegSz, "a\r\nb\0"s},
      {"", kRegSz, "default\0"s},
      {"a=\"b\\c", kRegSz, "x\\\"y\0"s},
      {"[x];y", kRegExpandSz, "%TEMP%\\a\0"s},
      {"Grüße", kRegSz, "Grüße ✓\0"s},
      {"list", 7, "a\0b\0\0"s},
      {"every byte", kRegBinary, everyByte},
      {"dword", kRegDword, "\x0a\0\0\x80"s},
      {"qword", 11, "\1\2\3\4\5\6\7\x08"s},
      {"nothing", kRegNone, ""},
  };
  const pid_t child = StartChild([&] {
    Handle key = 0;
    std::uint32_t disposition = 0;
    if (CreateKeyEx(kCurrentUser, "Software\\Kinds", kKeyAllAccess, key, disposition) != kSuccess) return false;
    for (const auto& c : cases) {
      // A non-zero byte after the data keeps advapi32's terminator rule out of it.
      const std::string buffer = c.stored + "Z";
      if (SetValueEx(key, c.name, c.type, reinterpret_cast<const std::uint8_t*>(buffer.data()),
                     static_cast<std::uint32_t>(c.stored.size())) != kSuccess) {
        return false;
      }
    }
    return true;
  });
  ASSERT_TRUE(Succeeded(child));
  Handle key = 0;
  ASSERT_EQ(OpenKeyEx(kCurrentUser, "software\\kinds", kKeyRead, key), kSuccess);
  for (const auto& c : cases) {
    std::vector<std::uint8_t> buffer(c.stored.size());
    std::uint32_t type = 0;
    std::uint32_t size = static_cast<std::uint32_t>(buffer.size());
    ASSERT_EQ(QueryValueEx(key, c.name, &type, buffer.data(), &size), kSuccess) << c.name;
    EXPECT_EQ(type, c.type) << c.name;
    EXPECT_EQ(std::string(buffer.begin(), buffer.begin() + size), c.stored) << c.name;
  }
  CloseKey(key);
}

TEST_F(RegistryFile, KeyDeletedByAnotherProcessIsDeletedHere) {
  const Handle key = CreateUser("Software\\Shared");
  ASSERT_TRUE(Succeeded(StartChild([] { return DeleteKey(kCurrentUser, "Software\\Shared") == kSuccess; })));
  EXPECT_EQ(SetDword(key, "n", 1), kKeyDeleted);
  EXPECT_EQ(FlushKey(key), kKeyDeleted);
  EXPECT_EQ(CloseKey(key), kSuccess);
}

// The file is line based, so names with line breaks have no place in it;
// null data with a size is advapi32's ERROR_NOACCESS rather than a crash.
TEST_F(RegistryFile, WhatTheFileCannotHoldIsRefused) {
  const Handle key = CreateUser("Software\\Refused");
  Handle sub = 0;
  std::uint32_t disposition = 0;
  const struct {
    const char* what;
    std::function<Result()> call;
    Result result;
  } cases[] = {
      {"value name with LF", [&] { return SetDword(key, "a\nb", 1); }, kInvalidParameter},
      {"value name with CR", [&] { return SetDword(key, "a\rb", 1); }, kInvalidParameter},
      {"key name with LF", [&] { return CreateKeyEx(key, "a\nb", kKeyAllAccess, sub, disposition); },
       kInvalidParameter},
      {"null data with a size", [&] { return SetValueEx(key, "x", kRegBinary, nullptr, 4); }, kNoAccess},
      {"null data without a size", [&] { return SetValueEx(key, "x", kRegBinary, nullptr, 0); }, kSuccess},
      {"text after a NUL in the name is not part of it", [&] { return SetDword(key, "cut\0tail"s, 1); }, kSuccess},
  };
  for (const auto& c : cases) EXPECT_EQ(c.call(), c.result) << c.what;
  std::uint32_t size = 0;
  EXPECT_EQ(QueryValueEx(key, "cut", nullptr, nullptr, &size), kSuccess);
  CloseKey(key);
}

}  // namespace
}  // namespace qorvane::registry
