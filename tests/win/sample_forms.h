// Forms with the controls, kinds and captions of the add-in's four dialogs,
// whose handlers only record what they were told: the Win32 view's tests and
// the screenshot program drive the real templates with them, apart from the
// dialogs' own logic.
//
// Defaults: Load fills the controls as the dialogs open; a click on btnOk,
// btnOK or btnCancel unloads; Enter and Esc press them as in the dialogs; the recurrence form's pattern options show
// their page alone. A test adds to or replaces these through the hooks.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/form.h"

namespace qorvane::testing {

class SampleForm : public forms::Form {
 public:
  // "Load", "Click btnOk", "Change ctlDate", "Validate txtInterval1", "QueryClose".
  std::vector<std::string> calls;
  // The active control as each handler saw it, parallel to calls.
  std::vector<std::string> activeAtCall;

  std::function<void(SampleForm&)> onLoad;
  std::function<void(SampleForm&, std::string_view)> onClick;
  std::function<void(SampleForm&, std::string_view)> onChange;
  std::function<bool(SampleForm&, std::string_view)> onValidate;

  forms::Control& Add(std::string name, forms::ControlKind kind, std::string container, std::string caption = {});
  // Shows one of the recurrence form's pages and hides the other three.
  void ShowPage(std::string_view page);
  // How many times a call was recorded.
  int Count(std::string_view call) const;
  // The calls without the validations (every focus move between controls validates).
  std::vector<std::string> Actions() const;
  // The active control when a call was first recorded.
  std::string ActiveAt(std::string_view call) const;

  void Load() override;
  void Click(std::string_view controlName) override;
  void Change(std::string_view controlName) override;
  bool Validate(std::string_view controlName) override;
  void QueryClose() override;
  void Help() override;

  // The buttons Enter and Esc press; a Cancel apart from OK does not validate.
  void SetButtons(std::string ok, std::string cancel);

 private:
  void Record(std::string call);
  std::function<void(SampleForm&)> fill_;
  friend std::unique_ptr<SampleForm> SampleOnce();
  friend std::unique_ptr<SampleForm> SampleRecurrence();
  friend std::unique_ptr<SampleForm> SampleAttachments();
  friend std::unique_ptr<SampleForm> SampleAbout();
};

// Monday 3 March 2025, 9:30.
inline constexpr double kSampleSendTime = 45719.0 + 9.5 / 24.0;

std::unique_ptr<SampleForm> SampleOnce();
std::unique_ptr<SampleForm> SampleRecurrence();
std::unique_ptr<SampleForm> SampleAttachments();
std::unique_ptr<SampleForm> SampleAbout();
// By form name: "frmOnce", "frmRecurrence", "frmAttachments", "frmAbout".
std::unique_ptr<SampleForm> SampleByName(std::string_view formName);

}  // namespace qorvane::testing
