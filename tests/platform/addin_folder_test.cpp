// Where the add-in finds its files: the override, its normalisation and the
// platform default.
#include "platform/addin_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

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
    SetAddinFolder(c.given);
    EXPECT_EQ(AddinFolder(), c.folder) << c.given;
  }
  SetAddinFolder("");
}

}  // namespace
}  // namespace qorvane
