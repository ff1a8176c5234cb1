// Keeps registry tests away from the user's own settings.
//
// On POSIX the whole process uses a registry file in a temporary folder (set
// before the first registry call). Under wine the real registry of the test
// prefix is used, so each test deletes the keys it touches before and after.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "infra/cwinreg.h"

namespace qorvane::testing {

inline void UsePrivateRegistryFile() {
#ifndef _WIN32
  static const std::string path = [] {
    std::random_device random;
    const auto folder = std::filesystem::temp_directory_path() / ("qorvane-reg-" + std::to_string(random()));
    std::filesystem::create_directories(folder);
    return (folder / "registry.reg").string();
  }();
  setenv("QORVANE_REGISTRY_FILE", path.c_str(), 1);
#endif
}

// Deletes HKCU keys (with everything below them) on construction and on
// destruction.
class ScopedRegistryKeys {
 public:
  explicit ScopedRegistryKeys(std::vector<std::string> keys) : keys_(std::move(keys)) {
    UsePrivateRegistryFile();
    Clean();
  }
  ~ScopedRegistryKeys() { Clean(); }
  ScopedRegistryKeys(const ScopedRegistryKeys&) = delete;
  ScopedRegistryKeys& operator=(const ScopedRegistryKeys&) = delete;

 private:
  void Clean() {
    for (const std::string& key : keys_) {
      const std::size_t slash = key.rfind('\\');
      CWinReg parent;
      if (parent.InitForAllAccess(CWinReg::HKEY_CURRENT_USER, key.substr(0, slash), false))
        parent.DeleteKeyRec(key.substr(slash + 1));
    }
  }
  std::vector<std::string> keys_;
};

}  // namespace qorvane::testing
