// A scripted user for the add-in's dialogs: a DialogService that answers
// each schedule dialog with the next queued answer (answer.h), doing to the
// record in the hand-over slot what the dialog does for that decision:
//
//  frmOnce, OK: the picked date and time on a whole minute becomes the send
//  time and the result flag is set. A pattern answer picks "Recurrence..."
//  first: the shown time is kept as the send time and frmRecurrence takes
//  over with the answer.
//  frmRecurrence: on opening, a record not yet recurring gets the dialog's
//  defaults (weekly on the send time's weekday from its date, its time of
//  day, no end; the end date kept in step with ten occurrences). OK runs the
//  dialog's store routine: type, interval, mask, day, instance, month, start
//  date, start time with seconds 0, end date, occurrences or the no-end flag,
//  with the dialog's checks and messages (through the message box service);
//  on success the record recurs and the result flag is set. A refused answer
//  leaves the dialog open for the next queued answer. A once answer presses
//  "Remove Recurrence" first and frmOnce takes over.
//  Cancel, or no answer left: the dialog closes and the flag stays False.
//
// Every dialog shown is recorded with the hand-over it saw, for tests.
//
// Lifecycle: owned by a test, the demo or a Session (session.h); installed
// with dialogs::SetDialogService while it lives. UI thread only.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/dialog_service.h"
#include "dialogs/hand_over.h"
#include "scenario/answer.h"

namespace scenario {

struct ShownDialog {
  std::string form;  // "frmOnce", "frmRecurrence", "frmAbout"
  bool keepOnTop = false;
  DialogRect openerRect;
  double sendTimeShown = 0.0;  // the record's send time as the dialog opened
};

class ScriptedUser final : public dialogs::DialogService {
 public:
  void Queue(Answer answer);
  // Parses and queues the line; false (nothing queued) with the reason in
  // error when it does not read.
  bool Queue(std::string_view text, std::string* error = nullptr);
  std::size_t Pending() const noexcept { return answers_.size(); }
  // Forgets the answers no dialog took.
  void DropPending() noexcept { answers_.clear(); }

  const std::vector<ShownDialog>& Shown() const noexcept { return shown_; }
  std::size_t Count(std::string_view form) const;

  void ShowOnce() override;
  void ShowRecurrence() override;
  void ShowAbout() override;

 private:
  void Record(const char* form);

  std::deque<Answer> answers_;
  std::vector<ShownDialog> shown_;
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
