// The deferred folder, its view and its shortcut.
#include "store/folder.h"

#include <memory>
#include <string>

#include "base/need.h"
#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "client/application.h"
#include "client/windows.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "platform/message_box.h"
#include "store/item_props.h"
#include "store/named_property.h"
#include "store/xml.h"

namespace Main {

bool g_ViewChecked = false;
bool g_BlockerReported = false;

namespace {

constexpr const char* kDisplayTo = "urn:schemas:httpmail:displayto";
constexpr const char* kFromName = "urn:schemas:httpmail:fromname";

using qorvane::Need;

// Views with user columns by XML appeared with version 10 ("10.0" and on, all
// starting with "1"); version 9 has none of this, so it gets no view at all.
bool ViewsSupported() {
  const std::string version = Need(client::CurrentApplication())->Version();
  return !version.empty() && version.front() == '1';
}

// The client refuses a folder whose name differs from a sibling's only in
// case, so a "qorvane" of the user's keeps ours from being made. Asking
// again every minute would only fail again; the user can fix it, and is told
// how once a session.
void ReportBlockingFolder(const client::Ref<client::MAPIFolder>& blocker) {
  if (g_BlockerReported) return;
  g_BlockerReported = true;
  const std::string name = blocker->Name();
  const std::string path = GetFolderPath(blocker);
  const std::string ours = kQorvaneFolderName;
  g_debug.OutWarning("Main.GetQorvaneFolder", "the folder \"" + path + "\" keeps the folder \"" + ours +
                                                  "\" from being created; the user was asked to rename it");
  qorvane::MsgBox("Qorvane cannot create its folder \"" + ours + "\", because the folder \"" + path +
                      "\" is in the way: Outlook does not allow two folders side by side whose names differ only "
                      "in upper and lower case.\n\nPlease rename the folder \"" + name + "\" (for example to \"" +
                      name + " old\"), then restart Outlook. Until then Qorvane cannot keep mails to send later.",
                  qorvane::vbOKOnly | qorvane::vbExclamation);
}

}  // namespace

client::Ref<client::MAPIFolder> GetQorvaneFolder(bool create) {
  client::Ref<client::MAPIFolder> result;
  qorvane::Trap("Main.GetQorvaneFolder", [&] {
    const auto app = Need(client::CurrentApplication());
    const auto inbox = Need(Need(app->GetNamespace("MAPI"))->GetDefaultFolder(client::olFolderInbox));
    const auto root = Need(inbox->Parent());
    const auto folders = Need(root->Folders());
    client::Ref<client::MAPIFolder> blocker;
    for (long i = 1; i <= folders->Count(); ++i) {
      const auto folder = Need(folders->Item(i));
      // Case matters: a "qorvane" of the user's own is not ours.
      const std::string name = folder->Name();
      if (name != kQorvaneFolderName) {
        if (!blocker && qorvane::EqualsIgnoringCase(name, kQorvaneFolderName)) blocker = folder;
        continue;
      }
      if (folder->Class() == client::olFolder) {
        if (!g_ViewChecked) {
          UpdateView(folder);
          g_ViewChecked = true;
        }
        result = folder;
      } else {
        qorvane::MsgBox(std::string("Qorvane has encountered an error. ") + kQorvaneFolderName +
                            " folder already exists and it is not compatible with mail items.",
                        qorvane::vbOKOnly);
      }
      return;
    }
    // A folder made now gets its view made now; nothing is left to check.
    g_ViewChecked = true;
    if (!create) return;
    if (blocker) return ReportBlockingFolder(blocker);
    // Drafts' item type keeps the waiting mails unsent, editable drafts.
    const auto folder = folders->Add(kQorvaneFolderName, client::olFolderDrafts);
    CustomizeView(folder);
    result = folder;
  });
  return result;
}

bool UpdateView(const client::Ref<client::MAPIFolder>& folder) {
  return qorvane::Trap("Main.UpdateView", [&] {
    if (!ViewsSupported()) return;
    client::Ref<client::View> view;
    // A folder without the view (the user deleted it) is not a failure: it
    // is made below.
    qorvane::IgnoreErrors([&] { view = Need(Need(folder)->Views())->Item(kQorvaneViewName); });
    qorvane::Err.Clear();
    if (view) {
      const std::string nextOccurrence = Main::NamedPropertyUrl(Main::kScheduleTimeProperty);
      const bool hasTo = Xml::ColumnExists(view, kDisplayTo);
      const bool hasFrom = Xml::ColumnExists(view, kFromName);
      const bool hasNext = Xml::ColumnExists(view, nextOccurrence);
      bool changed = false;
      if (!hasTo) {
        Xml::AddTableViewUserColumn(view, "To", kDisplayTo, "string", "", hasFrom ? kFromName : "", 0);
        changed = true;
      }
      if (hasFrom) {
        Xml::RemoveColumn(view, kFromName);
        changed = true;
      }
      if (!hasNext) {
        Xml::AddUserPropColumn(view, Main::kScheduleTimeProperty, "datetime", "Next Occurrence", "", 100);
        changed = true;
      }
      if (changed) view->Apply();
    }
    // Makes the view when it was missing; otherwise the add fails, which is
    // logged and expected.
    CustomizeView(folder);
  });
}

bool CustomizeView(const client::Ref<client::MAPIFolder>& folder) {
  return qorvane::Trap("Main.CustomizeView", [&] {
    if (!ViewsSupported()) return;
    const auto view = Need(Need(folder)->Views())
                          ->Add(kQorvaneViewName, client::olTableView, client::olViewSaveOptionThisFolderEveryone);
    // The recipients take the sender's place: every mail in here is the
    // user's own, so the sender says nothing.
    Xml::AddTableViewUserColumn(view, "To", kDisplayTo, "string", "", kFromName, 0);
    Xml::RemoveColumn(view, kFromName);
    Xml::AddUserPropColumn(view, Main::kScheduleTimeProperty, "datetime", "Next Occurrence", "", 100);
    Need(view)->Apply();
  });
}

bool AddShortcutFolder(const client::Ref<client::MAPIFolder>& folder) {
  return qorvane::Trap("Main.AddShortcutFolder", [&] {
    if (!folder) return;
    const auto explorer = Need(client::CurrentApplication())->ActiveExplorer();
    if (!explorer) return;
    const auto pane = Need(explorer->Panes())->Item("OutlookBar");
    if (!pane || pane->Class() != client::olOutlookBarPane) return;
    const auto group = Need(pane->Groups())->Item("Shortcuts");
    if (!group || group->Class() != client::olOutlookBarGroup) return;
    const auto shortcuts = Need(group->Shortcuts());
    const std::string name = folder->Name();
    // Removing shifts the later shortcuts down one place, so the index only
    // moves on past a shortcut that stays.
    for (long i = 1; i <= shortcuts->Count();) {
      const auto shortcut = Need(shortcuts->Item(i));
      if (shortcut->Class() == client::olOutlookBarShortcut && shortcut->Name() == name) {
        shortcuts->Remove(i);
      } else {
        ++i;
      }
    }
    shortcuts->Add(folder, name);
  });
}

std::string GetFolderPath(const client::Ref<client::MAPIFolder>& folder) {
  std::string path;
  qorvane::Trap("Main.GetFolderPath", [&] {
    client::Ref<client::MAPIFolder> current = folder;
    for (;;) {
      const std::string name = Need(current)->Name();
      path = path.empty() ? name : name + "\\" + path;
      // Above the store root there is the session, not a folder.
      auto parent = current->Parent();
      if (!parent || parent->Class() != client::olFolder) break;
      current = std::move(parent);
    }
  });
  return path;
}

void ResetFolderSessionForTesting() {
  g_ViewChecked = false;
  g_BlockerReported = false;
}

}  // namespace Main
