// The dialogs' logic under test, without a window: a record in the hand-over
// slot, the locale, log, screen and settings pinned, the message boxes, the
// shell and the file pickers recorded, and a scripted user to act on a form
// as a person does (the same steps a script uses).
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "dialogs/hand_over.h"
#include "infra/ignore_list.h"
#include "infra/settings.h"
#include "platform/file_picker.h"
#include "platform/message_box.h"
#include "platform/screen_metrics.h"
#include "platform/shell.h"
#include "scenario/form_picture.h"
#include "scenario/scripted_user.h"
#include "schedule/first_dow.h"
#include "schedule/mail_props.h"
#include "tests/support/registry_sandbox.h"
#include "tests/support/test_env.h"

namespace qorvane::testing {

inline double At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return DateSerialRollOver(year, month, day) + TimeSerial(hour, minute, second);
}

class RecordedBoxes final : public MessageBoxService {
 public:
  long Show(const std::string& prompt, long buttons, const std::string& title) override {
    prompts.push_back(prompt);
    this->buttons.push_back(buttons);
    titles.push_back(title);
    return answer;
  }
  std::vector<std::string> prompts;
  std::vector<long> buttons;
  std::vector<std::string> titles;
  long answer = vbOK;
};

// What would have been opened: "help <file>::/<page>" or "open <target>".
class RecordingShell final : public ShellService {
 public:
  bool Open(const std::string& target) override {
    opened.push_back("open " + target);
    return true;
  }
  bool ShowHelpTopic(const std::string& helpFile, const std::string& page) override {
    opened.push_back("help " + helpFile + "::/" + page);
    return true;
  }
  std::vector<std::string> opened;
};

// Answers the pickers with queued paths ("" cancels); with `fail`, the
// dialog itself fails.
class AnsweringPicker final : public FilePickerService {
 public:
  std::string OpenFile(const OpenFileRequest& request) override {
    requests.push_back(request);
    if (fail) Raise(err::kInvalidCall, "the dialog failed");
    return Next(files);
  }
  std::string OpenFolder(std::size_t bufferChars) override {
    folderBuffers.push_back(bufferChars);
    if (fail) Raise(err::kInvalidCall, "the dialog failed");
    return Next(folders);
  }
  std::deque<std::string> files;
  std::deque<std::string> folders;
  std::vector<OpenFileRequest> requests;
  std::vector<std::size_t> folderBuffers;
  bool fail = false;

 private:
  static std::string Next(std::deque<std::string>& answers) {
    if (answers.empty()) return {};
    std::string next = answers.front();
    answers.pop_front();
    return next;
  }
};

class DialogTest : public ::testing::Test {
 protected:
  DialogTest() : savedHandOver_(g_HandOver), savedIgnoreList_(g_IgnoreList), savedFirstDOW_(FirstDOW()) {
    SetMessageBox(&boxes_);
    SetShell(&shell_);
    SetFilePicker(&picker_);
    SetScreenMetrics(&screen_);
    SetFirstDOW(1);
  }
  ~DialogTest() override {
    SetMessageBox(nullptr);
    SetShell(nullptr);
    SetFilePicker(nullptr);
    SetScreenMetrics(nullptr);
    SetFirstDOW(savedFirstDOW_);
    g_HandOver = savedHandOver_;
    g_IgnoreList = savedIgnoreList_;
  }

  // The record goes into the slot as an opener puts it there.
  std::shared_ptr<CMailProps> Slot(const CMailProps& record, DialogRect opener = {7200, 3600, 9000, 7200},
                                   bool keepOnTop = false) {
    record_ = std::make_shared<CMailProps>(record);
    dialogs::BeginHandOver(record_, keepOnTop, opener);
    return record_;
  }

  // A form created and loaded as the view shows it.
  template <class Form>
  std::unique_ptr<Form> Opened() {
    auto form = std::make_unique<Form>();
    form->Load();
    return form;
  }

  // Steps played on the form; a step that fails the test (refused, or an
  // expectation not met) names itself.
  void Act(forms::Form& form, std::initializer_list<const char*> steps) {
    for (const char* step : steps) {
      const std::size_t problems = user_.Problems().size();
      EXPECT_TRUE(user_.Act(form, step)) << step << "\n" << scenario::Picture(form);
      if (user_.Problems().size() > problems) ADD_FAILURE() << user_.Problems().back();
    }
  }
  // One step the dialog is expected to refuse.
  bool Refused(forms::Form& form, const char* step) { return !user_.Act(form, step); }

  std::string Text(const forms::Form& form, const char* control) { return scenario::ShownValue(form[control]); }

  ScopedLocale locale_{"en-US"};
  ScopedLogFolder log_;
  ScopedRegistryKeys registry_{{settings::StoreKeyPath(settings::kAppName, settings::kSettingsSection)}};
  RecordedBoxes boxes_;
  RecordingShell shell_;
  AnsweringPicker picker_;
  ScreenMetrics screen_{15.0, 15.0, 28800.0, 16200.0};
  scenario::ScriptedUser user_;
  std::shared_ptr<CMailProps> record_;

 private:
  DialogHandOver savedHandOver_;
  CIgnoreList savedIgnoreList_;
  int savedFirstDOW_;
};

}  // namespace qorvane::testing
