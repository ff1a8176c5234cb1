// Checks, around every test, that the process-wide state of process_state.h
// is as the test found it; a test that leaves a piece changed fails with the
// piece's name and the guard to hold. test_main.cpp installs it.
#pragma once

namespace qorvane::testing {

// Call after InitGoogleTest, before RUN_ALL_TESTS.
void InstallProcessStateCheck();

}  // namespace qorvane::testing
