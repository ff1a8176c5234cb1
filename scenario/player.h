// Plays a story script (script.h) against a Session: each line is what the
// person, the client or the clock does, in order; `wait` moves the virtual
// clock on and delivers the client's timers one due time after the other,
// so that the add-in's ticks run as they would in the client.
//
// The player looks at the client only offstage (sim_client.h), so the calls
// a fault campaign counts and fails are the add-in's own. When the client's
// last window closes (the person closed it, or the add-in did in
// send-and-exit mode), the client exits as the real one does.
//
// A line that cannot be carried out (a window that is not open, a button the
// add-in did not add) and an expectation that does not hold are failures:
// each is reported with its line, and the story goes on.
//
// Lifecycle: one Player per Session and story, on the session's thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "scenario/attachment_picker.h"
#include "scenario/script.h"
#include "scenario/session.h"

namespace scenario {

// Told what happens while a story plays: the timeline prints it, a fault
// campaign checks it.
class PlayObserver {
 public:
  virtual ~PlayObserver() = default;
  virtual void BeforeStep(const ScriptStep&) {}
  virtual void AfterStep(const ScriptStep&) {}
  // Around one delivery of the timers due at `due` (the clock reads `due`,
  // rounded up to the second, when the timers run).
  virtual void BeforeTick(double due) {}
  virtual void AfterTick() {}
  // A line that could not be carried out or an expectation that does not
  // hold; line 0 for what is found at the end of the story.
  virtual void Failed(int line, const std::string& what) {}
};

struct PlayOptions {
  // What "{files}" stands for in paths and dialog lines; the caller makes and
  // removes the folder.
  std::string filesFolder;
  // The story stops there: later lines are not played, and time runs on to
  // that point after the last line played.
  std::optional<double> endAt;
};

struct PlayResult {
  std::size_t stepsPlayed = 0;
  std::size_t expectationsChecked = 0;
  std::size_t ticks = 0;
  bool cut = false;                   // endAt came before the story's end
  std::vector<std::string> failures;  // "line 12: ..."
  bool Passed() const { return failures.empty(); }
};

class Player {
 public:
  Player(Session& session, PlayOptions options);
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  // Not owned; null for none.
  void SetObserver(PlayObserver* observer) { observer_ = observer; }
  // What only playing can tell is wrong with the script before anything is
  // played: a dialog line the scripted user cannot read.
  std::optional<ScriptError> Check(const Script& script) const;
  PlayResult Play(const Script& script);

  // "{files}" replaced by the files folder.
  std::string Expand(const std::string& written) const;
  // Expanded, relative to the files folder unless absolute, and on Windows
  // with '/' written as '\'.
  std::string Path(const std::string& written) const;

 private:
  bool Running() const;
  void NeedRunning(const char* what) const;
  void RunTimersUntil(double until);
  void ExitWhenNoWindowIsLeft();
  // After an action that may open a dialog: the answers and picks written
  // for it are for its dialogs only, so what is left over is dropped (and is
  // a failure when the action opened no dialog at all), never handed to the
  // next mail's dialog.
  void DropLeftovers(const ScriptStep& step, std::size_t dialogsBefore);
  client::Ref<client::Explorer> ActiveMainWindow();
  void Fail(int line, const std::string& what);
  // What is wrong, or empty when the expectation holds (expectations.cpp).
  std::string Check(const ExpectStep& expect);

  void Do(const ScriptStep&, const ClockStep&);
  void Do(const ScriptStep&, const FileStep&);
  void Do(const ScriptStep&, const TouchStep&);
  void Do(const ScriptStep&, const RegistryStep&);
  void Do(const ScriptStep&, const UnresolvableStep&);
  void Do(const ScriptStep&, const SyncStep&);
  void Do(const ScriptStep&, const StartStep&);
  void Do(const ScriptStep&, const QuitStep&);
  void Do(const ScriptStep&, const MainWindowStep&);
  void Do(const ScriptStep&, const WaitStep&);
  void Do(const ScriptStep&, const ComposeStep&);
  void Do(const ScriptStep&, const EditStep&);
  void Do(const ScriptStep&, const WindowStep&);
  void Do(const ScriptStep&, const PressStep&);
  void Do(const ScriptStep&, const AttachStep&);
  void Do(const ScriptStep&, const DialogStep&);
  void Do(const ScriptStep&, const AnswerStep&);
  void Do(const ScriptStep&, const SelectStep&);
  void Do(const ScriptStep&, const ClickStep&);
  void Do(const ScriptStep&, const ExpectStep&);

  Session& session_;
  PlayOptions options_;
  PlayObserver* observer_ = nullptr;
  AttachmentPicker picker_;
  PlayResult result_;
  bool hadMainWindow_ = false;
  std::string lastWindowSubject_;    // the window "press Qorvane" means when no subject is given
  std::size_t messagesChecked_ = 0;  // message boxes an expectation has looked at
  std::size_t dialogsChecked_ = 0;   // dialogs an expectation has looked at
};

}  // namespace scenario
