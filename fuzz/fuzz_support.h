// What every fuzz target needs around the code it feeds: a way to call an
// input a finding, and a private scratch folder for the files a target makes.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

#include "infra/cdebug.h"
#include "platform/addin_folder.h"

namespace qorvane::fuzz {

// Reports what went wrong and aborts, so that libFuzzer keeps the input as a
// crash artifact.
[[noreturn]] inline void Fail(const std::string& what) {
  std::fprintf(stderr, "fuzz check failed: %s\n", what.c_str());
  std::abort();
}

inline void Check(bool condition, const std::string& what) {
  if (!condition) Fail(what);
}

// A folder of this process's own, on a memory file system when there is one
// (the registry syncs every file it writes), removed when the process ends.
inline const std::filesystem::path& ScratchFolder() {
  static const std::filesystem::path folder = [] {
    std::error_code ec;
    std::filesystem::path base = "/dev/shm";
    if (!std::filesystem::is_directory(base, ec)) base = std::filesystem::temp_directory_path();
    std::random_device random;
    std::filesystem::path made = base / ("qorvane-fuzz-" + std::to_string(random()));
    std::filesystem::create_directories(made);
    std::atexit([] {
      std::error_code ignored;
      std::filesystem::remove_all(ScratchFolder(), ignored);
    });
    return made;
  }();
  return folder;
}

// The add-in folder in the scratch folder and the log switched off: targets
// log on nearly every input, and the log file is not what they test.
inline void QuietLog() {
  SetAddinFolder(ScratchFolder().string());
  g_debug.DebugTarget(0);
}

// The POSIX registry file, in the scratch folder.
inline std::filesystem::path ScratchRegistryFile() { return ScratchFolder() / "registry.reg"; }

// Makes the registry use ScratchRegistryFile(); call before its first use.
inline void UseScratchRegistry() { setenv("QORVANE_REGISTRY_FILE", ScratchRegistryFile().c_str(), 1); }

// Removes the registry file and what the registry keeps beside it (its lock,
// a file set aside as unreadable), so that a run starts from none.
inline void RemoveScratchRegistry() {
  std::error_code ec;
  for (const auto& entry : std::filesystem::directory_iterator(ScratchFolder(), ec)) {
    if (entry.path().filename().string().rfind("registry.reg", 0) == 0) std::filesystem::remove(entry.path(), ec);
  }
}

}  // namespace qorvane::fuzz
