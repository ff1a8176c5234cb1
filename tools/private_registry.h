// A private registry for `qorvane demo`: while one lives, every registry call
// of this process (the add-in's settings, "NextOccurence", "SendAndExit")
// reaches a registry of its own instead of the user's, so a demo run neither
// reads nor changes what the installed add-in keeps.
//
// POSIX: a registry file in the given folder ($QORVANE_REGISTRY_FILE for the
// time being). Windows: HKEY_CURRENT_USER redirected (RegOverridePredefKey)
// to a temporary key, deleted again at the end.
//
// Lifecycle: one at a time, made before the first registry call that should
// be private; the process's registry is the user's again once it is gone.
#pragma once

#include <string>

namespace qorvane::tool {

class PrivateRegistry {
 public:
  explicit PrivateRegistry(const std::string& folder);
  ~PrivateRegistry();
  PrivateRegistry(const PrivateRegistry&) = delete;
  PrivateRegistry& operator=(const PrivateRegistry&) = delete;

  // False when the registry could not be made private (nothing was changed).
  bool ok() const noexcept { return ok_; }

 private:
  bool ok_ = false;
  std::string saved_;  // POSIX: the variable's value before; Windows: the key made
  bool hadSaved_ = false;
};

}  // namespace qorvane::tool
