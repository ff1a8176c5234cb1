// Where the add-in finds its files: the override, its normalisation and the
// platform default.
#include "platform/addin_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/process_state.h"

namespace qorvane {
namespace {

TEST(AddinFolder, OverrideWinsWithoutTrailingSeparatorsAndEmptyRestoresTheDefault) {
  const std::string standard = AddinFolder();
  ASSERT_FALSE(standard.empty());
  EXPECT_NE(standard.back(), PathSeparator()[0]);
  EXPECT_TRUE(std::filesystem::is_directory(standard)) << standard;
  const struct { const char* given; std::string folder; } cases[] = {
      {"/tmp/qorvane", "/tmp/qorvane"}, {"/tmp/qorvane/", "/tmp/qorvane"}, {"/tmp/qorvane//", "/tmp/qorvane"},
      {"C:\\Addin\\", "C:\\Addin"},     {"relative", "relative"},          {"/", "/"},
      {"", standard},
  };
  for (const auto& c : cases) {
    const testing::ScopedAddinFolder folder(c.given);
    EXPECT_EQ(AddinFolder(), c.folder) << c.given;
    EXPECT_EQ(AddinFolderOverride(), c.folder == standard ? "" : c.folder) << c.given;
  }
}

}  // namespace
}  // namespace qorvane
