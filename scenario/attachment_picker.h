// The files and folders a person attaches in a schedule dialog, for stories
// and tests: the references picked with Pick are added to the schedule when
// the person confirms the next schedule dialog, as the attachments dialog
// adds them to the record in the hand-over slot. A folder reference ends
// with the path separator and stands for the folder's newest file when the
// mail is sent.
//
// It sits in front of whatever dialog service is current (the scripted user)
// and hands every dialog on to it; a dialog that hands over to the other one
// (one-time to recurrence) counts as one confirmation. Nothing is added on
// Cancel; the player drops picks left over once the action that opened the
// dialog is done.
//
// Lifecycle: installs itself as the current dialog service while it lives
// and puts the one before back. UI thread only.
#pragma once

#include <string>
#include <vector>

#include "dialogs/dialog_service.h"

namespace scenario {

class AttachmentPicker final : public dialogs::DialogService {
 public:
  AttachmentPicker();
  ~AttachmentPicker() override;
  AttachmentPicker(const AttachmentPicker&) = delete;
  AttachmentPicker& operator=(const AttachmentPicker&) = delete;

  void Pick(std::vector<std::string> references);
  std::size_t Pending() const noexcept { return pending_.size(); }
  // Forgets the picks: the dialog they were meant for has closed.
  void Drop() noexcept { pending_.clear(); }

  void ShowOnce() override;
  void ShowRecurrence() override;
  void ShowAbout() override;

 private:
  template <class Show>
  void Around(Show&& show);

  dialogs::DialogService& inner_;
  std::vector<std::string> pending_;
  int depth_ = 0;
};

}  // namespace scenario
