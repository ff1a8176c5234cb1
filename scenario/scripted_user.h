// A scripted user at the add-in's dialogs: a form view (platform/form.h)
// that plays queued steps against the form shown, doing what a person's
// clicks and keys do in the Windows dialog, so that every path runs the
// dialogs' own handlers:
//
//   - control steps (scripted_user_step.h): "click btnOK", "type
//     txtOccurrences 5", "set ctlStartDate 2025-03-03", "pick cboInstance3
//     last", "select lvFiles 1,3", "leave txtOccurrences", "close", the
//     answers of the file pickers ("choose C:\Reports\summary.pdf" before
//     "click btnAddFile") and expectations ("expect ctlEndDate 2025-04-04");
//   - decisions (answer.h): "weekly every 1 week on Monday and Friday at 9:30
//     from 2025-03-03, 10 times, OK", "once at 2025-03-03 10:00, OK",
//     "Cancel". When a dialog takes its turn, a decision becomes the control
//     steps a person would take there; a decision for the other schedule
//     dialog first switches to it ("Recurrence..." or "Remove
//     Recurrence").
//
// A step the dialog refuses (a field that keeps the focus with its message,
// a control that is hidden or disabled) is dropped, and so is the rest of
// the decision it came from: the dialog stays open for what is queued next.
// With nothing left in the queue the user closes the dialog with its close
// box, as Cancel. Failed expectations and steps that could not be played
// are collected as problems rather than thrown, since the dialogs run
// inside the add-in's own error traps.
//
// Every dialog shown is recorded with the hand-over it saw.
//
// Lifecycle: owned by a test, the demo or a Session (session.h); installed
// with ScopedFormView while it lives. UI thread only.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "dialogs/dialog_service.h"
#include "dialogs/hand_over.h"
#include "platform/file_picker.h"
#include "platform/form.h"
#include "scenario/answer.h"
#include "scenario/scripted_user_step.h"

namespace scenario {

struct ShownDialog {
  std::string form;  // "frmOnce", "frmRecurrence", "frmAttachments", "frmAbout"
  bool keepOnTop = false;
  DialogRect openerRect;
  double sendTimeShown = 0.0;  // the record's send time as the dialog opened
};

class ScriptedUser final : public qorvane::forms::FormView {
 public:
  // The one entry for a line of a script: a control step or a decision.
  // False (nothing queued) with the reason in error when it does not read.
  bool Queue(std::string_view text, std::string* error = nullptr);
  void Queue(Answer answer);
  void Queue(Step step);
  std::size_t Pending() const noexcept { return queue_.size(); }
  // Forgets what no dialog took.
  void DropPending() noexcept { queue_.clear(); }

  const std::vector<ShownDialog>& Shown() const noexcept { return shown_; }
  std::size_t Count(std::string_view form) const;

  // "frmRecurrence: expect ctlEndDate 2025-04-04: shows 2025-04-11", one a
  // line, in the order they happened.
  const std::vector<std::string>& Problems() const noexcept { return problems_; }

  // Told about each form shown (event "shown"), each step played (its text,
  // with " (refused)" when the dialog refused it) and each close ("closed").
  using Observer = std::function<void(const qorvane::forms::Form&, const std::string& event)>;
  void SetObserver(Observer observer) { observer_ = std::move(observer); }

  void ShowModal(qorvane::forms::Form& form) override;

  // One control step, from its text, played at once against a form that is
  // already loaded (tests of a dialog's logic drive it with this). False
  // when the line does not read, the step could not be played or the dialog
  // refused it; Problems() says which.
  bool Act(qorvane::forms::Form& form, std::string_view step);

 private:
  // The file pickers while a step plays: they answer with the paths chosen
  // so far, in order, and ask the pickers in place before when none is left.
  class ChosenPaths final : public qorvane::FilePickerService {
   public:
    std::string OpenFile(const qorvane::OpenFileRequest& request) override;
    std::string OpenFolder(std::size_t bufferChars) override;
    std::deque<std::string> paths;
    qorvane::FilePickerService* fallback = nullptr;
  };

  struct Entry {
    std::variant<Step, Answer> what;
    int decision = 0;  // the decision a step came from; 0 for a step of its own
  };

  void Record(const qorvane::forms::Form& form);
  void Expand(const Answer& answer, const qorvane::forms::Form& form);
  bool Play(qorvane::forms::Form& form, const Step& step);
  bool PlayStep(qorvane::forms::Form& form, const Step& step);
  void Problem(const qorvane::forms::Form& form, const Step& step, const std::string& what);
  void DropDecision(int decision);
  void Notify(const qorvane::forms::Form& form, const std::string& event) const;

  std::deque<Entry> queue_;
  std::vector<ShownDialog> shown_;
  std::vector<std::string> problems_;
  Observer observer_;
  int decisions_ = 0;
  ChosenPaths chosen_;
};

// Installs a form view for its lifetime and puts back the one before.
class ScopedFormView {
 public:
  explicit ScopedFormView(qorvane::forms::FormView& view);
  ~ScopedFormView();
  ScopedFormView(const ScopedFormView&) = delete;
  ScopedFormView& operator=(const ScopedFormView&) = delete;

 private:
  qorvane::forms::FormView* previous_;
};

// Installs a dialog service for its lifetime and puts back the one before.
class ScopedDialogService {
 public:
  explicit ScopedDialogService(dialogs::DialogService& service);
  ~ScopedDialogService();
  ScopedDialogService(const ScopedDialogService&) = delete;
  ScopedDialogService& operator=(const ScopedDialogService&) = delete;

 private:
  dialogs::DialogService* previous_;
};

}  // namespace scenario
