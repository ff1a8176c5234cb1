// Test fixtures that pin what the add-in reads from its surroundings: the
// add-in folder (and so the log file), the locale and the clock.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "infra/cdebug.h"
#include "platform/addin_folder.h"
#include "platform/clock.h"
#include "platform/locale.h"

namespace qorvane::testing {

// A fresh temporary add-in folder with its own, empty log.
class ScopedLogFolder {
 public:
  ScopedLogFolder() {
    std::random_device random;
    folder_ = std::filesystem::temp_directory_path() / ("qorvane-test-" + std::to_string(random()));
    std::filesystem::create_directories(folder_);
    SetAddinFolder(folder_.string());
    g_debug.ResetForTesting();
  }
  ~ScopedLogFolder() {
    SetAddinFolder("");
    g_debug.ResetForTesting();
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
  }
  ScopedLogFolder(const ScopedLogFolder&) = delete;
  ScopedLogFolder& operator=(const ScopedLogFolder&) = delete;

  const std::filesystem::path& Folder() const { return folder_; }
  std::filesystem::path LogPath() const { return folder_ / CDebug::kLogFileName; }

  std::string LogText() const {
    std::ifstream file(LogPath(), std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }

  // The log's lines without their CR LF.
  std::vector<std::string> LogLines() const {
    std::vector<std::string> lines;
    std::istringstream text(LogText());
    for (std::string line; std::getline(text, line);) {
      if (!line.empty() && line.back() == '\r') line.pop_back();
      lines.push_back(line);
    }
    return lines;
  }

  bool LogContains(const std::string& part) const { return LogText().find(part) != std::string::npos; }

 private:
  std::filesystem::path folder_;
};

class ScopedLocale {
 public:
  explicit ScopedLocale(const char* name) { ok_ = SelectLocale(name); }
  ~ScopedLocale() { SelectUserLocale(); }
  ScopedLocale(const ScopedLocale&) = delete;
  ScopedLocale& operator=(const ScopedLocale&) = delete;
  bool ok() const { return ok_; }

 private:
  bool ok_;
};

class ScopedClock {
 public:
  explicit ScopedClock(double now) : clock_(now) { SetClock(&clock_); }
  ~ScopedClock() { SetClock(nullptr); }
  ScopedClock(const ScopedClock&) = delete;
  ScopedClock& operator=(const ScopedClock&) = delete;
  void Set(double now) { clock_.Set(now); }

 private:
  FixedClock clock_;
};

}  // namespace qorvane::testing
