// Looking at the simulated client as a person would.
#include "scenario/client_picture.h"

#include <fstream>
#include <initializer_list>

#include "base/runtime_error.h"
#include "infra/cdebug.h"
#include "infra/settings.h"
#include "platform/locale.h"
#include "store/folder.h"
#include "store/item_props.h"

namespace scenario {
namespace {

constexpr long kHelpMenuId = 30010;

// The text of the first of `tags` found inside [from, to) of xml.
std::string TextOf(const std::string& xml, std::size_t from, std::size_t to, std::initializer_list<const char*> tags) {
  for (const char* tag : tags) {
    const std::string open = std::string("<") + tag + ">";
    const std::string close = std::string("</") + tag + ">";
    const std::size_t at = xml.find(open, from);
    if (at >= to) continue;
    const std::size_t end = xml.find(close, at);
    if (end >= to) continue;
    return xml.substr(at + open.size(), end - at - open.size());
  }
  return {};
}

// The headings of the view's columns as the user sees them: a column's
// userheading when it has one (a user property's column), else its heading
// (written "Heading" by the add-in's own columns).
// Columns added later sit after the sort order, so the whole text is read.
std::vector<std::string> ColumnHeadings(const std::string& xml) {
  std::vector<std::string> headings;
  for (std::size_t at = xml.find("<column>"); at != std::string::npos; at = xml.find("<column>", at + 1)) {
    const std::size_t end = xml.find("</column>", at);
    if (end == std::string::npos) break;
    const std::string heading = TextOf(xml, at, end, {"userheading", "heading", "Heading"});
    if (!heading.empty()) headings.push_back(heading);
  }
  return headings;
}

}  // namespace

std::string StateName(const Session& session) {
  if (!session.AddIn()) return "stopped";
  switch (session.AddIn()->State()) {
    case ConnectionState::Attached: return "attached";
    case ConnectionState::WaitingForMainWindow: return "waiting";
    case ConnectionState::Detached: return "detached";
    case ConnectionState::Closed: return "closed";
    default: return "connected";
  }
}

std::vector<std::string> LogLines() {
  std::vector<std::string> lines;
  std::ifstream file(g_debug.LogFilePath(), std::ios::binary);
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(std::move(line));
  }
  return lines;
}

ClientPicture TakePicture(Session& session) {
  ClientPicture picture;
  sim::SimClient& client = session.Client();
  picture.state = StateName(session);
  picture.sent = client.SendLog().size();
  picture.messages = client.MessageBoxes().size();
  picture.dialogs = session.User().Shown().size();
  picture.sendReceiveRuns = client.SyncStarts();
  picture.sendReceiveOpen = client.SyncRunning();
  picture.nextOccurence = qorvane::settings::ReadOwnString(qorvane::settings::kNextOccurence);
  picture.log = LogLines();
  const auto folder = session.DeferredFolder();
  const sim::SimClient::Offstage offstage(client);
  const auto app = client.Application();
  picture.mainWindows = app->Explorers()->Count();
  const auto inspectors = app->Inspectors();
  for (long i = 1, count = inspectors->Count(); i <= count; ++i) {
    const auto item = inspectors->Item(i)->CurrentItem();
    picture.windows.push_back(item ? item->Subject() : std::string());
  }
  if (!folder) return picture;
  picture.deferredFolder = true;
  const auto items = folder->Items();
  for (long i = 1, count = items->Count(); i <= count; ++i) {
    const auto item = items->Item(i);
    WaitingMail mail;
    mail.entryId = item->EntryID();
    mail.subject = item->Subject();
    if (const auto asMail = item->AsMailItem()) mail.to = asMail->To();
    double next = 0.0;
    if (Main::GetUserProp(item, next)) mail.next = next;
    picture.waiting.push_back(std::move(mail));
  }
  return picture;
}

std::optional<FolderView> DeferredFolderView(Session& session) {
  const auto folder = session.DeferredFolder();
  if (!folder) return std::nullopt;
  const ClientPicture picture = TakePicture(session);
  FolderView view;
  view.name = Main::kQorvaneViewName;
  {
    const sim::SimClient::Offstage offstage(session.Client());
    try {
      if (const auto shown = folder->Views()->Item(Main::kQorvaneViewName)) view.headings = ColumnHeadings(shown->XML());
    } catch (const qorvane::RuntimeError&) {
      view.name.clear();  // the folder has no view of that name
    }
  }
  for (const WaitingMail& mail : picture.waiting) {
    view.rows.push_back({mail.to, mail.subject,
                         mail.next ? qorvane::CurrentLocale().FormatGeneralDate(*mail.next) : std::string()});
  }
  return view;
}

std::string AttachmentSummary(Session& session) {
  const auto folder = session.DeferredFolder();
  if (!folder) return "no deferred folder";
  const sim::SimClient::Offstage offstage(session.Client());
  std::string summary = "folder \"" + folder->Name() + "\"";
  try {
    if (const auto view = folder->Views()->Item(Main::kQorvaneViewName)) summary += " with its view \"" + view->Name() + "\"";
  } catch (const qorvane::RuntimeError&) {
    summary += " without its view";
  }
  const auto explorer = session.Client().Application()->ActiveExplorer();
  if (!explorer) return summary;
  bool shortcut = false;
  try {
    const auto pane = explorer->Panes()->Item("OutlookBar");
    const auto group = pane ? pane->Groups()->Item("Shortcuts") : nullptr;
    const auto shortcuts = group ? group->Shortcuts() : nullptr;
    for (long i = 1, count = shortcuts ? shortcuts->Count() : 0; i <= count; ++i)
      shortcut = shortcut || shortcuts->Item(i)->Name() == folder->Name();
  } catch (const qorvane::RuntimeError&) {
  }
  summary += shortcut ? ", its shortcut on the navigation bar" : ", no shortcut";
  std::vector<std::string> entries;
  try {
    const auto menuBar = explorer->CommandBars()->Item("Menu Bar");
    const auto help = menuBar ? menuBar->FindControl(0, kHelpMenuId, "") : nullptr;
    const auto controls = help ? help->CommandBar()->Controls() : nullptr;
    for (long i = 1, count = controls ? controls->Count() : 0; i <= count; ++i) {
      const auto entry = controls->Item(i);
      if (entry->Tag().rfind("KelmoraQorvane", 0) == 0) entries.push_back("\"" + entry->Caption() + "\"");
    }
  } catch (const qorvane::RuntimeError&) {
  }
  if (entries.empty()) return summary + ", no Help-menu entries";
  summary += ", Help menu ";
  for (std::size_t i = 0; i < entries.size(); ++i) summary += (i == 0 ? "" : i + 1 == entries.size() ? " and " : ", ") + entries[i];
  return summary;
}

}  // namespace scenario
