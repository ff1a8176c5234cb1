// The attachments dialog's controls and handlers.
#include "dialogs/frm_attachments.h"

#include <algorithm>

#include "base/runtime_text.h"
#include "base/utf8_text.h"
#include "dialogs/file_dialogs.h"
#include "dialogs/schedule_dialog.h"
#include "infra/error_trap.h"
#include "infra/ignore_list.h"
#include "support/help.h"

using qorvane::forms::ControlKind;
using qorvane::forms::ListRow;

namespace {

constexpr const char* kFolderName = "<LastModificated>";

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

}  // namespace

std::string AttachmentDisplayName(std::string_view reference) {
  if (!reference.empty() && IsSeparator(reference.back())) return kFolderName;
  const std::size_t last = reference.find_last_of("\\/");
  return std::string(last == std::string_view::npos ? reference : reference.substr(last + 1));
}

frmAttachments::frmAttachments() {
  name = "frmAttachments";
  caption = "Qorvane Attachments";
  // Design size in twips; the Windows view replaces it with its template's.
  rect.width = 6960;
  rect.height = 5160;
  Add(ControlKind::Label, "Label2", "Attachments:");
  auto& files = Add(ControlKind::ListView, "lvFiles");
  files.columns = {"Name", "Path"};
  files.columnWidths = {2000, 4400};
  Add(ControlKind::Button, "btnAddFile", "Add File");
  Add(ControlKind::Button, "btnAddFolder", "Add Folder");
  Add(ControlKind::Button, "btnRemove", "Remove");
  Add(ControlKind::Group, "Frame1", "Folder Options");
  Add(ControlKind::Label, "Label1", "Ignore file(s). When entering more than one file use commas:", "Frame1");
  Add(ControlKind::TextBox, "txtIgnore", "", "Frame1");
  Add(ControlKind::Button, "bntAddIgnore", "Add to Ignore List", "Frame1");
  Add(ControlKind::CheckBox, "chkIgnore", "Ignore System && Hidden Files", "Frame1");
  Add(ControlKind::Button, "btnOK", "OK");
  Add(ControlKind::Button, "btnCancel", "Cancel").causesValidation = false;
  defaultButton = "btnOK";
  cancelButton = "btnCancel";
}

void frmAttachments::ShowOverHandOver() {
  frmAttachments form;
  qorvane::forms::ShowModal(form);
}

void frmAttachments::AddRow(const std::string& reference) {
  ListRow row;
  row.cells = {AttachmentDisplayName(reference), reference};
  (*this)["lvFiles"].rows.push_back(std::move(row));
}

// The ignore list as its text, the caret after it.
void frmAttachments::ShowIgnoreList() {
  auto& ignore = (*this)["txtIgnore"];
  ignore.text = g_IgnoreList.ToString();
  ignore.selStart = static_cast<int>(qorvane::TextLength(ignore.text));
}

void frmAttachments::Load() {
  qorvane::Trap("frmAttachments.Form_Load", [&] {
    for (const std::string& reference : dialogs::EditedRecord().m_collAttachments) AddRow(reference);
    (*this)["btnRemove"].enabled = false;
    ShowIgnoreList();
    (*this)["chkIgnore"].checked = g_IgnoreList.IgnoreSysHiden();
    if (g_HandOver.m_OnTop) topmost = true;
  });
}

void frmAttachments::Click(std::string_view controlName) {
  qorvane::Trap("frmAttachments." + std::string(controlName) + "_Click", [&] {
    if (controlName == "btnAddFile") {
      const std::string file = mFileDialogs::OpenFileDialog();
      if (!file.empty()) AddRow(file);
    } else if (controlName == "btnAddFolder") {
      btnAddFolder_Click();
    } else if (controlName == "btnRemove") {
      btnRemove_Click();
    } else if (controlName == "lvFiles") {
      const auto& rows = (*this)["lvFiles"].rows;
      (*this)["btnRemove"].enabled = std::any_of(rows.begin(), rows.end(), [](const ListRow& row) { return row.selected; });
    } else if (controlName == "bntAddIgnore") {
      bntAddIgnore_Click();
    } else if (controlName == "btnOK") {
      btnOK_Click();
    } else if (controlName == "btnCancel") {
      unloaded = true;
    }
  });
}

// A folder reference ends with exactly one "\".
void frmAttachments::btnAddFolder_Click() {
  std::string folder = mFileDialogs::OpenFolderDialog();
  if (folder.empty()) return;
  while (!folder.empty() && IsSeparator(folder.back())) folder.pop_back();
  AddRow(folder + "\\");
}

void frmAttachments::btnRemove_Click() {
  auto& rows = (*this)["lvFiles"].rows;
  for (std::size_t i = rows.size(); i-- > 0;) {
    if (rows[i].selected) rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(i));
  }
  (*this)["btnRemove"].enabled = false;
}

void frmAttachments::bntAddIgnore_Click() {
  const auto& rows = (*this)["lvFiles"].rows;
  const auto selected = std::find_if(rows.begin(), rows.end(), [](const ListRow& row) { return row.selected; });
  if (selected == rows.end()) return;
  g_IgnoreList.FromString((*this)["txtIgnore"].text);
  g_IgnoreList.Add(qorvane::Trim(selected->cells.at(0)));
  ShowIgnoreList();
}

bool frmAttachments::Validate(std::string_view controlName) {
  if (controlName != "txtIgnore") return true;
  qorvane::Trap("frmAttachments.txtIgnore_Validate", [&] {
    g_IgnoreList.FromString((*this)["txtIgnore"].text);
    ShowIgnoreList();
  });
  return true;
}

void frmAttachments::btnOK_Click() {
  qorvane::AttachmentList references;
  for (const ListRow& row : (*this)["lvFiles"].rows) references.push_back(row.cells.at(1));
  dialogs::EditedRecord().m_collAttachments = std::move(references);
  g_IgnoreList.FromString((*this)["txtIgnore"].text);
  g_IgnoreList.IgnoreSysHiden((*this)["chkIgnore"].checked);
  g_IgnoreList.Save();
  unloaded = true;
}

void frmAttachments::Help() { support::ShowHelp(support::HelpTopic::Attachments); }
