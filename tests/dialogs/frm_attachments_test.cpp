// The attachments dialog: the rows it shows for the record's references,
// the pickers it asks, removing and ignoring, and what OK and Cancel keep.
#include "dialogs/frm_attachments.h"

#include "tests/dialogs/dialog_fixture.h"

namespace qorvane::testing {
namespace {

class FrmAttachmentsTest : public DialogTest {
 protected:
  FrmAttachmentsTest() {
    g_IgnoreList.FromString("thumbs.db");
    g_IgnoreList.IgnoreSysHiden(true);
  }

  // Three references, a file, a folder and a file, in the slot.
  std::unique_ptr<frmAttachments> OpenWithThree() {
    CMailProps record;
    record.m_collAttachments = {"C:\\Reports\\summary.pdf", "D:\\Scans\\", "notes.txt"};
    Slot(record);
    return Opened<frmAttachments>();
  }

  static std::string Setting(const char* key) {
    return settings::GetSetting(settings::kAppName, settings::kSettingsSection, key, "(none)");
  }
};

struct DisplayNameCase {
  const char* reference;
  const char* shown;
};

class DisplayName : public ::testing::TestWithParam<DisplayNameCase> {};

TEST_P(DisplayName, IsTheLastPartOrTheFolderMark) {
  EXPECT_EQ(AttachmentDisplayName(GetParam().reference), GetParam().shown) << GetParam().reference;
}

INSTANTIATE_TEST_SUITE_P(References, DisplayName,
                         ::testing::Values(DisplayNameCase{"C:\\Reports\\summary.pdf", "summary.pdf"},
                                           DisplayNameCase{"C:\\Data\\", "<LastModificated>"},
                                           DisplayNameCase{"C:\\Data/", "<LastModificated>"},
                                           DisplayNameCase{"\\\\server\\share\\a b.txt", "a b.txt"},
                                           DisplayNameCase{"C:/mixed\\dir/last.doc", "last.doc"},
                                           DisplayNameCase{"plain.txt", "plain.txt"}, DisplayNameCase{"", ""}));

TEST_F(FrmAttachmentsTest, LoadShowsTheReferencesAndTheIgnoreList) {
  g_IgnoreList.FromString("thumbs.db, desktop.ini");
  g_IgnoreList.IgnoreSysHiden(false);
  const auto form = OpenWithThree();
  EXPECT_EQ(scenario::Picture(*form),
            "[frmAttachments] Qorvane Attachments\n"
            "  Attachments: {summary.pdf | C:\\Reports\\summary.pdf; <LastModificated> | D:\\Scans\\; "
            "notes.txt | notes.txt} <Add File> <Add Folder> <Remove> (off)\n"
            "  Folder Options: Ignore file(s). When entering more than one file use commas: "
            "[thumbs.db, desktop.ini] <Add to Ignore List> [ ]Ignore System & Hidden Files\n"
            "  <OK> <Cancel>");
  EXPECT_EQ((*form)["txtIgnore"].selStart, 22) << "the caret after the list";
  EXPECT_FALSE((*form)["chkIgnore"].checked);
  EXPECT_FALSE(form->topmost);
}

TEST_F(FrmAttachmentsTest, KeepOnTopMakesTheDialogTopmost) {
  Slot(CMailProps{}, DialogRect{}, true);
  const auto form = Opened<frmAttachments>();
  EXPECT_TRUE(form->topmost);
  EXPECT_TRUE((*form)["chkIgnore"].checked);
  EXPECT_EQ(Text(*form, "lvFiles"), "");
}

TEST_F(FrmAttachmentsTest, AddFileAsksForAnyFileAndAddsTheChosenOne) {
  Slot(CMailProps{});
  auto form = Opened<frmAttachments>();
  picker_.files = {"C:\\Reports\\summary.pdf", ""};
  Act(*form, {"click btnAddFile", "click btnAddFile"});
  EXPECT_EQ(Text(*form, "lvFiles"), "summary.pdf | C:\\Reports\\summary.pdf") << "a cancelled picker adds nothing";
  ASSERT_EQ(picker_.requests.size(), 2u);
  EXPECT_EQ(picker_.requests[0].title, "Open File");
  EXPECT_EQ(picker_.requests[0].filterName, "All Files (*.*)");
  EXPECT_EQ(picker_.requests[0].filterPattern, "*.*");
  EXPECT_EQ(picker_.requests[0].bufferChars, 255u);
}

struct FolderCase {
  const char* chosen;
  const char* row;  // "" when nothing is added
};

class AddFolder : public FrmAttachmentsTest, public ::testing::WithParamInterface<FolderCase> {};

TEST_P(AddFolder, EndsTheReferenceWithOneBackslash) {
  Slot(CMailProps{});
  auto form = Opened<frmAttachments>();
  picker_.folders = {GetParam().chosen};
  Act(*form, {"click btnAddFolder"});
  EXPECT_EQ(Text(*form, "lvFiles"), GetParam().row);
  EXPECT_EQ(picker_.folderBuffers, std::vector<std::size_t>{260});
}

INSTANTIATE_TEST_SUITE_P(Folders, AddFolder,
                         ::testing::Values(FolderCase{"C:\\Data", "<LastModificated> | C:\\Data\\"},
                                           FolderCase{"C:\\Data\\", "<LastModificated> | C:\\Data\\"},
                                           FolderCase{"C:\\Data/", "<LastModificated> | C:\\Data\\"},
                                           FolderCase{"\\\\server\\share", "<LastModificated> | \\\\server\\share\\"},
                                           FolderCase{"", ""}));

TEST_F(FrmAttachmentsTest, AFailingPickerIsLoggedAndTheDialogStaysOpen) {
  Slot(CMailProps{});
  auto form = Opened<frmAttachments>();
  picker_.fail = true;
  Act(*form, {"click btnAddFile", "click btnAddFolder"});
  EXPECT_TRUE(log_.LogContains("mFileDialogs.OpenFileDialog")) << log_.LogText();
  EXPECT_TRUE(log_.LogContains("mFileDialogs.OpenFolderDialog")) << log_.LogText();
  EXPECT_EQ(Text(*form, "lvFiles"), "");
  EXPECT_FALSE(form->unloaded);
}

struct RemoveCase {
  const char* name;
  const char* selection;  // as a select step takes it
  const char* left;
};

class Remove : public FrmAttachmentsTest, public ::testing::WithParamInterface<RemoveCase> {};

TEST_P(Remove, TakesEverySelectedRowAndDisablesItself) {
  auto form = OpenWithThree();
  Act(*form, {(std::string("select lvFiles ") + GetParam().selection).c_str(), "expect btnRemove enabled",
              "click btnRemove", "expect btnRemove disabled"});
  EXPECT_EQ(Text(*form, "lvFiles"), GetParam().left);
}

INSTANTIATE_TEST_SUITE_P(Selections, Remove,
                         ::testing::Values(RemoveCase{"FirstAndLast", "1,3", "<LastModificated> | D:\\Scans\\"},
                                           RemoveCase{"FirstTwo", "1,2", "notes.txt | notes.txt"},
                                           RemoveCase{"Middle", "2",
                                                      "summary.pdf | C:\\Reports\\summary.pdf; notes.txt | notes.txt"},
                                           RemoveCase{"All", "1,2,3", ""}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(FrmAttachmentsTest, RemoveIsEnabledOnlyWhileARowIsSelected) {
  auto form = OpenWithThree();
  Act(*form, {"expect btnRemove disabled", "select lvFiles 2", "expect btnRemove enabled", "select lvFiles none",
              "expect btnRemove disabled"});
  EXPECT_TRUE(Refused(*form, "click btnRemove")) << "a disabled button cannot be clicked";
  EXPECT_EQ((*form)["lvFiles"].rows.size(), 3u);
}

struct IgnoreCase {
  const char* name;
  std::vector<const char*> steps;
  const char* shown;
};

class IgnoreList : public FrmAttachmentsTest, public ::testing::WithParamInterface<IgnoreCase> {};

TEST_P(IgnoreList, IsShownNormalisedAndTakenAtOnce) {
  auto form = OpenWithThree();
  for (const char* step : GetParam().steps) Act(*form, {step});
  EXPECT_EQ(Text(*form, "txtIgnore"), GetParam().shown);
  EXPECT_EQ(static_cast<std::size_t>((*form)["txtIgnore"].selStart), std::string(GetParam().shown).size())
      << "the caret after the list";
  EXPECT_EQ(g_IgnoreList.ToString(), GetParam().shown);
  EXPECT_EQ(Setting(settings::kIgnoreList), "(none)") << "only OK saves";
}

INSTANTIATE_TEST_SUITE_P(
    Edits, IgnoreList,
    ::testing::Values(
        IgnoreCase{"Typed",
                   {"type txtIgnore Thumbs.DB,  desktop.ini, thumbs.db", "leave txtIgnore"},
                   "thumbs.db, desktop.ini"},
        IgnoreCase{"EmptyPieces", {"type txtIgnore , ,a.txt,,", "leave txtIgnore"}, "a.txt"},
        IgnoreCase{"Emptied", {"type txtIgnore ", "leave txtIgnore"}, ""},
        IgnoreCase{"SelectedRowAdded", {"select lvFiles 1", "click bntAddIgnore"}, "thumbs.db, summary.pdf"},
        // The typed text counts even before the field was left.
        IgnoreCase{"TypedThenRowAdded",
                   {"type txtIgnore Desktop.INI", "select lvFiles 3", "click bntAddIgnore"},
                   "desktop.ini, notes.txt"},
        IgnoreCase{
            "RowAlreadyListed", {"type txtIgnore notes.txt", "select lvFiles 3", "click bntAddIgnore"}, "notes.txt"},
        IgnoreCase{"NoRowSelected", {"type txtIgnore x", "click bntAddIgnore"}, "x"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(FrmAttachmentsTest, OkStoresTheRowsAndSavesTheIgnoreSettings) {
  auto form = OpenWithThree();
  picker_.files = {"E:\\late.xls"};
  Act(*form, {"select lvFiles 1", "click btnRemove", "click btnAddFile", "type txtIgnore Desktop.ini, THUMBS.DB",
              "uncheck chkIgnore", "click btnOK"});
  EXPECT_TRUE(form->unloaded);
  EXPECT_EQ(record_->m_collAttachments, (AttachmentList{"D:\\Scans\\", "notes.txt", "E:\\late.xls"}));
  EXPECT_EQ(Setting(settings::kIgnoreList), "desktop.ini, thumbs.db");
  EXPECT_EQ(Setting(settings::kIgnoreSysHiden), "0");
  EXPECT_FALSE(g_IgnoreList.IgnoreSysHiden());
  EXPECT_FALSE(g_HandOver.Confirmed()) << "the schedule dialog decides";
}

struct CancelCase {
  const char* name;
  const char* step;
};

class Cancelled : public FrmAttachmentsTest, public ::testing::WithParamInterface<CancelCase> {};

TEST_P(Cancelled, LeavesTheRecordAndTheSettingsAsTheyWere) {
  auto form = OpenWithThree();
  picker_.files = {"E:\\late.xls"};
  Act(*form, {"click btnAddFile", "select lvFiles 1", "click btnRemove", "uncheck chkIgnore", GetParam().step});
  EXPECT_TRUE(form->unloaded);
  EXPECT_EQ(record_->m_collAttachments, (AttachmentList{"C:\\Reports\\summary.pdf", "D:\\Scans\\", "notes.txt"}));
  EXPECT_EQ(Setting(settings::kIgnoreList), "(none)");
  EXPECT_EQ(Setting(settings::kIgnoreSysHiden), "(none)");
  EXPECT_TRUE(g_IgnoreList.IgnoreSysHiden());
}

INSTANTIATE_TEST_SUITE_P(WaysOut, Cancelled,
                         ::testing::Values(CancelCase{"Button", "click btnCancel"}, CancelCase{"Esc", "press esc"},
                                           CancelCase{"CloseBox", "close"}),
                         [](const auto& info) { return std::string(info.param.name); });

// The in-memory list keeps an edit made before Cancel until the next start.
TEST_F(FrmAttachmentsTest, CancelKeepsALeftIgnoreEditInMemoryOnly) {
  auto form = OpenWithThree();
  Act(*form, {"type txtIgnore a.tmp", "leave txtIgnore", "click btnCancel"});
  EXPECT_EQ(g_IgnoreList.ToString(), "a.tmp");
  EXPECT_EQ(Setting(settings::kIgnoreList), "(none)");
}

TEST_F(FrmAttachmentsTest, HelpOpensTheAttachmentsPage) {
  Slot(CMailProps{});
  auto form = Opened<frmAttachments>();
  Act(*form, {"press f1"});
  EXPECT_EQ(shell_.opened,
            std::vector<std::string>{"help " + (log_.Folder() / "Help.chm").string() + "::/dialog_attachments.html"});
}

}  // namespace
}  // namespace qorvane::testing
