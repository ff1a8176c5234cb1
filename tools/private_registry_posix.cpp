// A private registry on POSIX: a registry file of its own.
#include "tools/private_registry.h"

#include <stdlib.h>

namespace qorvane::tool {

namespace {
constexpr const char* kVariable = "QORVANE_REGISTRY_FILE";
}  // namespace

PrivateRegistry::PrivateRegistry(const std::string& folder) {
  if (const char* before = getenv(kVariable)) {
    saved_ = before;
    hadSaved_ = true;
  }
  ok_ = setenv(kVariable, (folder + "/registry.reg").c_str(), 1) == 0;
}

PrivateRegistry::~PrivateRegistry() {
  if (!ok_) return;
  if (hadSaved_) {
    setenv(kVariable, saved_.c_str(), 1);
  } else {
    unsetenv(kVariable);
  }
}

}  // namespace qorvane::tool
