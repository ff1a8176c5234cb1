// Where the add-in finds its files: the override, its normalisation and the
// platform default.
#include "platform/addin_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace qorvane {
namespace {

// Clears the override whatever a test did.
class AddinFolderTest : public ::testing::Test {
 protected:
  void TearDown() override { SetAddinFolder(""); }
};

TEST_F(AddinFolderTest, DefaultIsAnExistingFolderWithoutTrailingSeparator) {
  const std::string folder = AddinFolder();
  ASSERT_FALSE(folder.empty());
  EXPECT_NE(folder.back(), PathSeparator()[0]);
  EXPECT_TRUE(std::filesystem::is_directory(folder)) << folder;
}

TEST_F(AddinFolderTest, OverrideWinsWithoutTrailingSeparators) {
  const struct {
    const char* given;
    const char* folder;
  } cases[] = {
      {"/tmp/qorvane", "/tmp/qorvane"},   {"/tmp/qorvane/", "/tmp/qorvane"},
      {"/tmp/qorvane//", "/tmp/qorvane"}, {"C:\\Addin\\", "C:\\Addin"},
      {"relative", "relative"},           {"/", "/"},
  };
  for (const auto& c : cases) {
    SetAddinFolder(c.given);
    EXPECT_EQ(AddinFolder(), c.folder) << c.given;
  }
}

TEST_F(AddinFolderTest, EmptyOverrideRestoresTheDefault) {
  const std::string original = AddinFolder();
  SetAddinFolder("/somewhere/else");
  ASSERT_EQ(AddinFolder(), "/somewhere/else");
  SetAddinFolder("");
  EXPECT_EQ(AddinFolder(), original);
}

}  // namespace
}  // namespace qorvane
