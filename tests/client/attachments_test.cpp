// Conformance: attaching files to a mail item.
#include <filesystem>
#include <fstream>
#include <random>

#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

namespace fs = std::filesystem;

template <class F>
class AttachmentsTest : public ClientTest<F> {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() / ("qorvane-attach-" + std::to_string(std::random_device()()));
    fs::create_directories(folder_);
  }
  void TearDown() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  std::string File(const std::string& name) {
    const fs::path path = folder_ / name;
    std::ofstream(path) << "content of " << name;
    return path.string();
  }
  std::string Missing(const std::string& name) { return (folder_ / name).string(); }

  fs::path folder_;
};
TYPED_TEST_SUITE(AttachmentsTest, ClientFixtures);

TYPED_TEST(AttachmentsTest, AttachedFilesKeepOrderNamesAndDisplayNames) {
  struct Case {
    const char* file;
    const char* displayName;
    const char* shownAs;
  };
  const Case cases[] = {{"report.txt", "report.txt", "report.txt"},
                        {"data.csv", "Figures", "Figures"},
                        {"plain.bin", "", "plain.bin"}};
  const auto attachments = this->fixture.AddMail(this->Inbox(), "files", "a@example.com")->Attachments();
  for (const auto& c : cases) attachments->Add(this->File(c.file), c.displayName);
  ASSERT_EQ(attachments->Count(), 3);
  for (long i = 1; i <= 3; ++i) {
    const auto& c = cases[i - 1];
    SCOPED_TRACE(c.file);
    EXPECT_EQ(attachments->Item(i)->FileName(), c.file);
    EXPECT_EQ(attachments->Item(i)->DisplayName(), c.shownAs);
  }
}

TYPED_TEST(AttachmentsTest, MissingFileRaisesAndAttachesNothing) {
  const auto attachments = this->fixture.AddMail(this->Inbox(), "files", "a@example.com")->Attachments();
  for (const std::string& source : {this->Missing("gone.txt"), this->folder_.string(), std::string()}) {
    SCOPED_TRACE(source);
    EXPECT_EQ(ErrorOf([&] { attachments->Add(source, "gone.txt"); }), kFileNotFound);
  }
  EXPECT_EQ(attachments->Count(), 0);
}

TYPED_TEST(AttachmentsTest, AttachmentsTravelWithCopyAndMove) {
  const auto mail = this->fixture.AddMail(this->Inbox(), "files", "a@example.com");
  mail->Attachments()->Add(this->File("a.txt"), "a.txt");
  const auto copy = mail->Copy()->AsMailItem();
  const auto moved = mail->Move(this->Folder(client::olFolderOutbox))->AsMailItem();
  for (const auto& item : {copy, moved}) {
    ASSERT_EQ(item->Attachments()->Count(), 1);
    EXPECT_EQ(item->Attachments()->Item(1)->DisplayName(), "a.txt");
  }
}

}  // namespace
}  // namespace client_conformance
