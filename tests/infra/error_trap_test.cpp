// Traps: what lands in the log, what the caller gets back, and that nothing
// escapes an entry point.
#include "infra/error_trap.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "base/runtime_error.h"
#include "tests/support/test_env.h"

namespace qorvane {
namespace {

using testing::ScopedLocale;
using testing::ScopedLogFolder;

TEST(ErrorTrap, MapsWhatTheBodyThrowsToRuntimeNumbers) {
  const struct {
    const char* label;
    void (*body)();
    const char* expected;
  } cases[] = {
      {"Main.A", [] { Raise(err::kCannotCreateObject); }, "Error(429) : Main.A\tActiveX component can't create object"},
      {"Main.B", [] { Raise(-2147467259, "Unspecified error"); }, "Error(-2147467259) : Main.B\tUnspecified error"},
      {"Main.C", [] { throw std::out_of_range("vector"); }, "Error(9) : Main.C\tSubscript out of range"},
      {"Main.D", [] { throw std::runtime_error("boom"); }, "Error(51) : Main.D\tboom"},
      {"Main.E", [] { throw 42; }, "Error(51) : Main.E\tInternal error"},
  };
  for (const auto& c : cases) {
    ScopedLocale locale("en-US");
    ScopedLogFolder log;
    EXPECT_FALSE(Trap(c.label, c.body));
    const auto lines = log.LogLines();
    ASSERT_EQ(lines.size(), 1u) << c.label;
    EXPECT_NE(lines[0].find(c.expected), std::string::npos) << lines[0];
    EXPECT_EQ(Err.Number, 0) << "OutError leaves the state clean";
  }
}

TEST(ErrorTrap, SuccessWritesNothing) {
  ScopedLogFolder log;
  int runs = 0;
  EXPECT_TRUE(Trap("Main.Ok", [&] { ++runs; }));
  EXPECT_EQ(runs, 1);
  EXPECT_TRUE(log.LogText().empty());
}

TEST(ErrorTrap, ALogFailureReachesTheCallerButNotPastAnEntryPoint) {
  ScopedLogFolder log;
  const testing::ScopedErr err;  // the entry point keeps the log's failure in Err
  SetAddinFolder((log.Folder() / "no" / "such").string());
  EXPECT_THROW(Trap("Inner", [] { Raise(5); }), RuntimeError);
  EXPECT_FALSE(GuardEntry("Entry", [] { Trap("Inner", [] { Raise(5); }); }));
}

TEST(ErrorTrap, IgnoreErrorsKeepsTheErrorForALaterCheck) {
  ScopedLogFolder log;
  EXPECT_FALSE(IgnoreErrors([] { Raise(91); }));
  EXPECT_EQ(Err.Number, 91);
  Err.Clear();
  EXPECT_TRUE(log.LogText().empty());
}

}  // namespace
}  // namespace qorvane
