// A temporary add-in folder and its log for a test; with process_state.h,
// whose guards pin the rest of what the add-in reads from its surroundings
// (the locale, the clock, ...).
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "infra/cdebug.h"
#include "tests/support/process_state.h"

namespace qorvane::testing {

// A fresh temporary add-in folder with its own, empty log, written by a log
// object as on first use; the folder and the log object the test found come
// back at the end.
class ScopedLogFolder {
 public:
  ScopedLogFolder() { g_debug.ResetForTesting(); }
  ~ScopedLogFolder() {
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
  static std::filesystem::path MakeFolder() {
    std::random_device random;
    auto folder = std::filesystem::temp_directory_path() / ("qorvane-test-" + std::to_string(random()));
    std::filesystem::create_directories(folder);
    return folder;
  }

  const std::filesystem::path folder_ = MakeFolder();
  const ScopedDebugLog log_;
  const ScopedAddinFolder addinFolder_{folder_.string()};
};

}  // namespace qorvane::testing
