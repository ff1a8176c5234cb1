// frmAttachments: the files and folders sent with a scheduled mail, by
// reference (nothing is copied; folder references stand for their newest
// file when the mail goes out), and the ignore list that folder references
// skip. It edits the attachment list of the record in the hand-over slot and
// the program-wide ignore list.
//
// Controls, in tab order (name, kind, caption; container):
//   Label2        label      "Attachments:"
//   lvFiles       list view  columns "Name", "Path"; one row a reference
//   btnAddFile    button     "Add File"
//   btnAddFolder  button     "Add Folder"
//   btnRemove     button     "Remove"              (enabled with a row selected)
//   Frame1        group      "Folder Options"
//   Label1        label      "Ignore file(s). When entering more than one file use commas:"  Frame1
//   txtIgnore     text       the ignore list       Frame1
//   bntAddIgnore  button     "Add to Ignore List"  Frame1
//   chkIgnore     check      "Ignore System && Hidden Files"  Frame1
//   btnOK         button     "OK"                  (Enter)
//   btnCancel     button     "Cancel"              (Esc; no validation)
//
// Leaving txtIgnore puts its names into the ignore list at once (shown back
// normalised); only OK saves the list to the settings, together with the
// attachment list and the hidden-files choice.
//
// Lifecycle: shown modally over a schedule dialog (ShowOverHandOver). UI
// thread only.
#pragma once

#include <string>
#include <string_view>

#include "platform/form.h"

// The name a reference shows in the list: the part after its last "\" (or
// "/"), "<LastModificated>" for a folder reference, a text without either
// whole.
std::string AttachmentDisplayName(std::string_view reference);

class frmAttachments final : public qorvane::forms::Form {
 public:
  frmAttachments();

  void Load() override;
  void Click(std::string_view controlName) override;
  bool Validate(std::string_view controlName) override;
  void Help() override;

  // Shows the dialog modally over the record in the hand-over slot.
  static void ShowOverHandOver();

 private:
  void AddRow(const std::string& reference);
  void ShowIgnoreList();
  void btnAddFolder_Click();
  void btnRemove_Click();
  void bntAddIgnore_Click();
  void btnOK_Click();
};
