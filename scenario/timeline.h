// The timeline of a story as it plays: one line per event with the virtual
// time, what the person did, and under it what followed (dialogs, message
// boxes and their answers, mails joining or leaving the deferred folder, each
// copy sent with its time, To and attachments, Send/Receive runs, the
// registry's "NextOccurence", new lines of the add-in's log, the client
// closing). A timer tick is shown when it did something, and the first one
// after each start always. Each dialog is drawn as it opens (its form
// picture, form_picture.h), followed by what the person did in it.
//
//   Mon 2025-03-24 09:15:01  Tick
//                              sent "Call me back" to anna@example.com
//                              "Call me back" leaves "Qorvane"
//
// Lifecycle: observes one Player (player.h) over one Session; writes to the
// stream it is given.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "scenario/client_picture.h"
#include "scenario/player.h"

namespace scenario {

class Timeline final : public PlayObserver {
 public:
  Timeline(Session& session, std::ostream& out);
  ~Timeline() override;
  Timeline(const Timeline&) = delete;
  Timeline& operator=(const Timeline&) = delete;

  void BeforeStep(const ScriptStep& step) override;
  void AfterStep(const ScriptStep& step) override;
  void BeforeTick(double due) override;
  void AfterTick() override;
  void Failed(int line, const std::string& what) override;

  // What a step says as the person's action; empty for a line that shows
  // nothing by itself (wait, expect) or that is shown with the next action
  // (dialog and message box answers, attachments picked).
  static std::string Describe(const ScriptStep& step);

 private:
  // Prints what changed since the last picture, under a head line when
  // anything did (or always, with force).
  void Report(const std::string& head, bool force);
  // Told by the scripted user: a form shown, a control step, a form closed.
  void OnDialog(const qorvane::forms::Form& form, const std::string& event);
  void FlushDialogSteps();

  Session& session_;
  std::ostream& out_;
  ClientPicture before_;
  std::vector<std::string> prepared_;  // answers and picks waiting for the next action
  std::vector<std::string> failures_;  // shown under the step they belong to
  bool firstTickPending_ = false;
  std::vector<std::string> dialogLines_;  // pictures and steps since the last report
  std::vector<std::string> dialogSteps_;  // the steps in the dialog shown last
};

}  // namespace scenario
