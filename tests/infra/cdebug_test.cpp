// The log's lines as a reader of Qorvane.Log sees them.
#include "infra/cdebug.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "tests/support/test_env.h"

namespace qorvane {
namespace {

using testing::ScopedClock;
using testing::ScopedLocale;
using testing::ScopedLogFolder;

class CDebugTest : public ::testing::Test {
 protected:
  ScopedLocale locale_{"en-US"};
  ScopedClock clock_{DateSerialRollOver(2025, 3, 3) + TimeSerial(9, 30, 5)};
  ScopedLogFolder log_;
  static constexpr const char* kStamp = "3/3/2025 9:30:05 AM ";
};

TEST_F(CDebugTest, EntriesHaveTheirFixedShapes) {
  Err.Set(13, "Type mismatch");
  g_debug.OutError("Main.SendMessage");
  g_debug.OutCustomError("Main.X", "custom text");
  g_debug.OutWarning("CMailProps.Equal", "m_RecurrenceType is bad");
  g_debug.OutCall("SendAll", 3, "x");
  g_debug.OutCall("F");
  g_debug.OutCall("G", "12", 1.5, "a b");
  g_debug.Out("silent", 1);
  g_debug.Out1("silent");
  g_debug.Out2("silent");

  const std::vector<std::string> expected = {
      std::string(kStamp) + "Error(13) : Main.SendMessage\tType mismatch",
      std::string(kStamp) + "Error(custom) : Main.X\tcustom text",
      std::string(kStamp) + "Warning : CMailProps.Equal\tm_RecurrenceType is bad",
      std::string(kStamp) + "Call SendAll(3, 'x')",
      std::string(kStamp) + "Call F()",
      std::string(kStamp) + "Call G(12, 1.5, 'a b')",
  };
  EXPECT_EQ(log_.LogLines(), expected);
  EXPECT_NE(log_.LogText().find("\r\n"), std::string::npos);
}

// Text the runtime's IsNumeric takes for a number is written without quotes,
// read with the current locale's separators.
TEST_F(CDebugTest, OutCallQuotesOnlyWhatIsNotNumeric) {
  const struct {
    const char* locale;
    const char* argument;
    const char* written;
  } cases[] = {
      {"en-US", "&H10", "&H10"},   {"en-US", "&O17", "&O17"}, {"en-US", "1,000", "1,000"},
      {"en-US", "1.5", "1.5"},     {"de-DE", "1,5", "1,5"},   {"de-DE", "1.000,5", "1.000,5"},
      {"en-US", "$12", "'$12'"},   {"en-US", "1.2.3", "'1.2.3'"}, {"en-US", "&H", "'&H'"},
  };
  for (const auto& c : cases) {
    ScopedLocale locale(c.locale);
    g_debug.OutCall("F", c.argument);
    const std::string line = log_.LogLines().back();
    EXPECT_EQ(line.substr(line.find("Call ")), std::string("Call F(") + c.written + ")") << c.locale << " " << c.argument;
  }
}

TEST_F(CDebugTest, OutErrorClearsTheErrorState) {
  Err.Set(9, "Subscript out of range");
  g_debug.OutError("X.Y");
  EXPECT_EQ(Err.Number, 0);
  EXPECT_EQ(Err.Description, "");
}

TEST_F(CDebugTest, IndentationGrowsByFourAndNeverGoesNegative) {
  g_debug.PopTab();
  EXPECT_EQ(g_debug.IndentCount(), 0);
  g_debug.PushTab();
  g_debug.PushTab();
  g_debug.OutWarning("W", "m");
  g_debug.PopTab();
  g_debug.PopTab();
  g_debug.PopTab();
  g_debug.OutWarning("W", "m");
  const auto lines = log_.LogLines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], std::string(kStamp) + "        Warning : W\tm");
  EXPECT_EQ(lines[1], std::string(kStamp) + "Warning : W\tm");
}

TEST_F(CDebugTest, AssertLogsThenRaisesTypeMismatch) {
  g_debug.Assert(true, "Main.X", "fine");
  try {
    g_debug.Assert(false, "Main.X", "bad");
    FAIL() << "no error raised";
  } catch (const RuntimeError& e) {
    EXPECT_EQ(e.Number(), 13);
    EXPECT_EQ(e.Description(), "Main.X, assert failed - bad");
  }
  EXPECT_EQ(log_.LogLines(), std::vector<std::string>{std::string(kStamp) + "Error(custom) : Main.X, assert failed\tbad"});
}

TEST_F(CDebugTest, OutCallWithoutValuesRaisesSubscriptOutOfRange) {
  try {
    g_debug.OutCallValues({});
    FAIL();
  } catch (const RuntimeError& e) {
    EXPECT_EQ(e.Number(), 9);
  }
}

TEST_F(CDebugTest, TimersNestUpToTenAndIgnoreExtraCalls) {
  g_debug.EndTimer("none running");
  EXPECT_EQ(g_debug.TimerCount(), 0);
  for (int i = 0; i < 11; ++i) g_debug.StartTimer();
  EXPECT_EQ(g_debug.TimerCount(), 10);
  g_debug.EndTimer("inner");
  EXPECT_EQ(g_debug.TimerCount(), 9);
  while (g_debug.TimerCount() > 0) g_debug.EndTimer("t");
  EXPECT_FALSE(std::filesystem::exists(log_.LogPath()));  // timings are traces: silent
}

TEST_F(CDebugTest, DebugTargetWithoutBitTwoWritesNothing) {
  EXPECT_EQ(g_debug.DebugTarget(), 2);
  EXPECT_EQ(g_debug.DebugLevel(), 2);
  g_debug.DebugTarget(1);
  g_debug.OutWarning("W", "m");
  EXPECT_FALSE(std::filesystem::exists(log_.LogPath()));
  g_debug.DebugTarget(2);
}

TEST(CDebugTrim, LogAboveTheLimitIsDeletedAtStartUp) {
  for (const std::uintmax_t size : {CDebug::kTrimSize, CDebug::kTrimSize + 1}) {
    ScopedLocale locale("en-US");
    ScopedLogFolder log;
    {
      std::ofstream file(log.LogPath(), std::ios::binary);
      file << std::string(size, 'x');
    }
    g_debug.OutWarning("W", "m");
    const std::uintmax_t after = std::filesystem::file_size(log.LogPath());
    if (size > CDebug::kTrimSize)
      EXPECT_LT(after, 100u) << "a log of " << size << " bytes must be dropped";
    else
      EXPECT_GT(after, size) << "a log of " << size << " bytes must be kept";
  }
}

TEST(CDebugFailure, AnUnwritableLogRaisesIntoTheCaller) {
  ScopedLocale locale("en-US");
  ScopedLogFolder log;
  SetAddinFolder((log.Folder() / "missing" / "deeper").string());
  try {
    g_debug.OutWarning("W", "m");
    FAIL();
  } catch (const RuntimeError& e) {
    EXPECT_EQ(e.Number(), err::kPathFileAccess);
  }
}

TEST(CDebugFailure, AWriteFailureHandlerIsToldInsteadAndCanBeTakenBack) {
  ScopedLocale locale("en-US");
  ScopedLogFolder log;
  const std::string folder = (log.Folder() / "missing").string();
  SetAddinFolder(folder);
  std::vector<std::string> told;
  EXPECT_FALSE(g_debug.SetWriteFailureHandler([&](const std::string& path) { told.push_back(path); }));
  EXPECT_NO_THROW(g_debug.OutWarning("W", "m"));
  EXPECT_NO_THROW(g_debug.OutCustomError("E", "m"));
  EXPECT_EQ(told, std::vector<std::string>(2, folder + PathSeparator() + CDebug::kLogFileName));

  EXPECT_TRUE(g_debug.SetWriteFailureHandler(nullptr)) << "the handler set before comes back";
  EXPECT_THROW(g_debug.OutWarning("W", "m"), RuntimeError);
  SetAddinFolder(log.Folder().string());
  g_debug.SetWriteFailureHandler([&](const std::string& path) { told.push_back(path); });
  g_debug.OutWarning("W", "written");
  g_debug.SetWriteFailureHandler(nullptr);
  EXPECT_EQ(told.size(), 2u) << "a log that can be written is written";
  EXPECT_TRUE(log.LogContains("Warning : W\twritten"));
}

}  // namespace
}  // namespace qorvane
