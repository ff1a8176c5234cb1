// The main of every test executable: GoogleTest with the process-state check
// (a test that leaves process-wide state changed fails), and on POSIX a
// registry file of the run's own, so that no test reaches the user's.
#include <gtest/gtest.h>

#include "tests/support/process_state_check.h"
#include "tests/support/registry_sandbox.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  qorvane::testing::UsePrivateRegistryFile();
  qorvane::testing::InstallProcessStateCheck();
  return RUN_ALL_TESTS();
}
