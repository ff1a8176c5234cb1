// What every dialog says, word for word with its accelerators, what its
// drop-down lists offer and store, and that no two controls a user can see
// at once answer to the same Alt key.
#include <cctype>
#include <functional>
#include <map>

#include "dialogs/frm_attachments.h"
#include "dialogs/frm_once.h"
#include "dialogs/frm_recurrence.h"
#include "support/frm_about.h"
#include "tests/dialogs/dialog_fixture.h"

namespace qorvane::testing {
namespace {

std::unique_ptr<forms::Form> Create(const std::string& form) {
  if (form == "frmOnce") return std::make_unique<frmOnce>();
  if (form == "frmRecurrence") return std::make_unique<frmRecurrence>();
  if (form == "frmAttachments") return std::make_unique<frmAttachments>();
  return std::make_unique<frmAbout>();
}

struct CaptionCase {
  const char* form;
  const char* control;  // "" for the form itself
  const char* caption;
};

class Caption : public ::testing::TestWithParam<CaptionCase> {};

TEST_P(Caption, IsExactlyAsTheUserReadsIt) {
  const auto form = Create(GetParam().form);
  const std::string control = GetParam().control;
  EXPECT_EQ(control.empty() ? form->caption : (*form)[control].caption, GetParam().caption);
}

INSTANTIATE_TEST_SUITE_P(
    Dialogs, Caption,
    ::testing::Values(
        CaptionCase{"frmOnce", "", "Qorvane"},
        CaptionCase{"frmOnce", "Frame3", "Select date and time for the e-mail to be sent."},
        CaptionCase{"frmOnce", "Label4", "&Date:"}, CaptionCase{"frmOnce", "Label3", "&Time:"},
        CaptionCase{"frmOnce", "Frame2", "Recurrence"}, CaptionCase{"frmOnce", "optOnce", "&Once"},
        CaptionCase{"frmOnce", "optRecurrence", "&Recurrence..."}, CaptionCase{"frmOnce", "btnOk", "Qorvane"},
        CaptionCase{"frmOnce", "btnCancel", "Cancel"}, CaptionCase{"frmOnce", "btnAttachments", "Attachments"},
        CaptionCase{"frmOnce", "btnHelp", "&Help"}, CaptionCase{"frmRecurrence", "", "Qorvane Recurrence"},
        CaptionCase{"frmRecurrence", "Frame3", "Qorvane time"}, CaptionCase{"frmRecurrence", "Label10", "S&tart:"},
        CaptionCase{"frmRecurrence", "Frame1", "Recurrence pattern"}, CaptionCase{"frmRecurrence", "optDaily", "Daily"},
        CaptionCase{"frmRecurrence", "optWeekly", "Weekly"}, CaptionCase{"frmRecurrence", "optMonthly", "Monthly"},
        CaptionCase{"frmRecurrence", "optYearly", "Yearly"},
        CaptionCase{"frmRecurrence", "Frame2", "Range of recurrence"},
        CaptionCase{"frmRecurrence", "Label8", "&Start:"}, CaptionCase{"frmRecurrence", "optNoEndDate", "N&o end date"},
        CaptionCase{"frmRecurrence", "optEndAfter", "End a&fter:"},
        CaptionCase{"frmRecurrence", "Label9", "occurrences"}, CaptionCase{"frmRecurrence", "optEndBy", "End &by:"},
        CaptionCase{"frmRecurrence", "btnOK", "Qorvane"}, CaptionCase{"frmRecurrence", "btnCancel", "Cancel"},
        CaptionCase{"frmRecurrence", "btnRemoveRec", "Remove Recurrence"},
        CaptionCase{"frmRecurrence", "btnAttachments", "Attachments"},
        CaptionCase{"frmRecurrence", "optInterval1", "E&very"}, CaptionCase{"frmRecurrence", "Label3", "day(s)"},
        CaptionCase{"frmRecurrence", "optEveryWeekday1", "Every wee&kday"},
        CaptionCase{"frmRecurrence", "Label1", "Recur every"}, CaptionCase{"frmRecurrence", "Label2", "week(s) on:"},
        CaptionCase{"frmRecurrence", "arWeekDays(0)", "Sunday"},
        CaptionCase{"frmRecurrence", "arWeekDays(1)", "Monday"},
        CaptionCase{"frmRecurrence", "arWeekDays(2)", "Tuesday"},
        CaptionCase{"frmRecurrence", "arWeekDays(3)", "Wednesday"},
        CaptionCase{"frmRecurrence", "arWeekDays(4)", "Thursday"},
        CaptionCase{"frmRecurrence", "arWeekDays(5)", "Friday"},
        CaptionCase{"frmRecurrence", "arWeekDays(6)", "Saturday"}, CaptionCase{"frmRecurrence", "Label4", "of every"},
        CaptionCase{"frmRecurrence", "Label5", "month(s)"}, CaptionCase{"frmRecurrence", "Label7", "of every"},
        CaptionCase{"frmRecurrence", "Label6", "month(s)"}, CaptionCase{"frmRecurrence", "optYearly4", "E&very"},
        CaptionCase{"frmAttachments", "Label2", "Attachments:"},
        CaptionCase{"frmAttachments", "btnAddFile", "Add File"},
        CaptionCase{"frmAttachments", "btnAddFolder", "Add Folder"},
        CaptionCase{"frmAttachments", "btnRemove", "Remove"}, CaptionCase{"frmAttachments", "Frame1", "Folder Options"},
        CaptionCase{"frmAttachments", "Label1", "Ignore file(s). When entering more than one file use commas:"},
        CaptionCase{"frmAttachments", "chkIgnore", "Ignore System && Hidden Files"},
        CaptionCase{"frmAttachments", "btnCancel", "Cancel"}, CaptionCase{"frmAbout", "btnHelp", "&Help"},
        CaptionCase{"frmAbout", "btnBugReport", "&Bug Report"}),
    [](const auto& info) {
      std::string name = std::string(info.param.form) + "_" + (*info.param.control ? info.param.control : "Form");
      for (char& c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
      }
      return name;
    });

struct ListCase {
  const char* control;
  std::vector<std::string> items;
  std::vector<long> itemData;
};

class DropDown : public ::testing::TestWithParam<ListCase> {};

TEST_P(DropDown, OffersItsItemsInOrderWithWhatTheyStore) {
  const frmRecurrence form;
  EXPECT_EQ(form[GetParam().control].items, GetParam().items);
  EXPECT_EQ(form[GetParam().control].itemData, GetParam().itemData);
}

const std::vector<std::string> kInstanceItems = {"first", "second", "third", "fourth", "last"};
const std::vector<std::string> kDayItems = {"day",     "weekday",   "weekend day", "sunday", "monday",
                                            "tuesday", "wednesday", "thursday",    "friday", "saturday"};
const std::vector<long> kDayMasks = {127, 62, 65, 1, 2, 4, 8, 16, 32, 64};
const std::vector<std::string> kMonthItems = {"january", "february", "march",     "april",   "may",      "june",
                                              "july",    "august",   "september", "october", "november", "december"};

INSTANTIATE_TEST_SUITE_P(Recurrence, DropDown,
                         ::testing::Values(ListCase{"cboInstance3", kInstanceItems, {}},
                                           ListCase{"cboInstance4", kInstanceItems, {}},
                                           ListCase{"cboDayOfWeekMask3", kDayItems, kDayMasks},
                                           ListCase{"cboDayOfWeekMask4", kDayItems, kDayMasks},
                                           ListCase{"cboMonthOfYear4", kMonthItems, {}},
                                           ListCase{"cboMonthOfYear44", kMonthItems, {}}),
                         [](const auto& info) { return std::string(info.param.control); });

// The accelerator letter of a caption ("&&" is a plain ampersand), or 0.
char Accelerator(const std::string& caption) {
  for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != '&') continue;
    if (caption[i + 1] == '&') {
      ++i;
      continue;
    }
    return static_cast<char>(std::tolower(static_cast<unsigned char>(caption[i + 1])));
  }
  return 0;
}

TEST(AcceleratorOf, ReadsTheMarkedLetterAndSkipsDoubledAmpersands) {
  EXPECT_EQ(Accelerator("End a&fter:"), 'f');
  EXPECT_EQ(Accelerator("Ignore System && Hidden Files"), 0);
  EXPECT_EQ(Accelerator("A && &B"), 'b');
  EXPECT_EQ(Accelerator("Cancel"), 0);
}

class Accelerators : public DialogTest, public ::testing::WithParamInterface<const char*> {};

// Each pattern page is looked at on its own, with the controls around it.
TEST_P(Accelerators, AreUniqueAmongTheControlsShownTogether) {
  CMailProps record;
  record.m_ScheduleTime = At(2025, 3, 5, 14, 5, 30);
  Slot(record);
  auto form = Create(GetParam());
  form->Load();
  const std::vector<std::string> pages =
      form->Has("optDaily") ? std::vector<std::string>{"optDaily", "optWeekly", "optMonthly", "optYearly"}
                            : std::vector<std::string>{""};
  for (const std::string& page : pages) {
    if (!page.empty()) Act(*form, {("click " + page).c_str()});
    std::map<char, std::string> taken;
    for (const forms::Control& control : form->controls) {
      const char key = Accelerator(control.caption);
      if (key == 0 || !form->Shown(control.name)) continue;
      const auto [at, added] = taken.emplace(key, control.name);
      EXPECT_TRUE(added) << page << ": '" << key << "' on " << at->second << " and " << control.name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Dialogs, Accelerators,
                         ::testing::Values("frmOnce", "frmRecurrence", "frmAttachments", "frmAbout"));

}  // namespace
}  // namespace qorvane::testing
