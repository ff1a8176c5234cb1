// Connect: the main window. Two entries at the end of its Help menu: the
// about box, and the options entry that takes the user to the deferred
// folder and there edits the schedules of the selected mails, one by one or
// all at once. Also the shared routines that edit a schedule in the dialog
// and write it back onto a mail, and the client's ItemSend trace.
#include <vector>

#include "addin/connect.h"
#include "dialogs/dialog_service.h"
#include "dialogs/hand_over.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "platform/message_box.h"
#include "store/folder.h"

using client::Require;

namespace {

constexpr const char* kMenuBar = "Menu Bar";
constexpr long kHelpMenuId = 30010;
constexpr const char* kAboutTag = "KelmoraQorvaneAbout";
constexpr const char* kAboutCaption = "About Qorvane...";
constexpr const char* kOptionsTag = "KelmoraQorvaneOptions";
constexpr const char* kOptionsCaption = "Qorvane";
constexpr const char* kEditManyQuestion =
    "Subsequent show Qorvane props (yes)\r\nSet Qorvane Time to Selected Items(no)";

bool SamePathIgnoringCase(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const auto lower = [](char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; };
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

// The entry with that tag on the bar, added (temporary) when missing; looking
// it up first keeps one entry when a main window is attached again.
client::Ref<client::CommandBarControl> EnsureEntry(const client::Ref<client::CommandBar>& bar, const char* tag,
                                                   const char* caption, bool beginGroup, long style) {
  auto entry = bar->FindControl(client::msoControlButton, 0, tag);
  if (entry) return entry;
  entry = Require(Require(bar->Controls())->Add(client::msoControlButton, 0, true));
  entry->BeginGroup(beginGroup);
  entry->Caption(caption);
  if (style != 0) entry->Style(style);
  entry->Tag(tag);
  return entry;
}

}  // namespace

void Connect::AddAboutMenu(const client::Ref<client::Explorer>& explorer) {
  if (m_UseRibbon) return;
  qorvane::Trap("Connect.AddAboutMenu", [&] {
    const auto menuBar = Require(Require(explorer)->CommandBars())->Item(kMenuBar);
    if (!menuBar) return;
    const auto help = menuBar->FindControl(0, kHelpMenuId, "");
    if (!help) return;
    const auto bar = Require(help->CommandBar());
    m_btnMenuAbout.Set(EnsureEntry(bar, kAboutTag, kAboutCaption, true, 0));
    m_btnOptions.Set(EnsureEntry(bar, kOptionsTag, kOptionsCaption, false, client::msoButtonIconAndCaption));
  });
}

void Connect::m_btnMenuAbout_Click() {
  qorvane::GuardEntry("Connect.m_btnMenuAbout_Click", [] {
    g_debug.Out("m_btnMenuAbout_Click");
    dialogs::CurrentDialogService().ShowAbout();
  });
}

void Connect::RibbonAbout_Click() { m_btnMenuAbout_Click(); }

void Connect::RibbonOptions_Click() { m_btnOptions_Click(); }

void Connect::m_btnOptions_Click() {
  qorvane::GuardEntry("m_btnOptions_Click", [&] {
    const auto explorer = Require(Require(m_app())->ActiveExplorer());
    const auto deferred = Require(Main::GetQorvaneFolder(true));
    // The first press only takes the user to the folder.
    if (!SamePathIgnoringCase(Require(explorer->CurrentFolder())->FolderPath(), deferred->FolderPath())) {
      explorer->CurrentFolder(deferred);
      return;
    }
    // No scheduler pass may send a mail while it is being edited.
    const SchedulerPause pause(*this, 0);
    std::vector<client::Ref<client::Item>> mails;
    const auto selection = Require(explorer->Selection());
    for (long i = 1, count = selection->Count(); i <= count; ++i) {
      auto item = selection->Item(i);
      if (item && item->Class() == client::olMail) mails.push_back(std::move(item));
    }
    if (mails.size() == 1) {
      EditOneItem(mails.front(), explorer);
      return;
    }
    if (mails.empty()) return;
    switch (qorvane::MsgBox(kEditManyQuestion, qorvane::vbYesNoCancel | qorvane::vbQuestion)) {
      case qorvane::vbYes:
        for (const auto& mail : mails) EditOneItem(mail, explorer);
        break;
      case qorvane::vbNo: {
        const auto record = std::make_shared<CMailProps>();
        record->Init();
        if (EditQorvaneProps(record, explorer)) {
          for (const auto& mail : mails) QorvanePropsApply(*record, mail);
        }
        break;
      }
      default:
        break;
    }
  });
}

void Connect::EditOneItem(const client::Ref<client::Item>& item, const client::Ref<client::Explorer>& window) {
  const auto record = std::make_shared<CMailProps>();
  record->ReadProps(item);
  if (EditQorvaneProps(record, window)) QorvanePropsApply(*record, item);
}

bool Connect::EditQorvaneProps(const std::shared_ptr<CMailProps>& record, const client::Ref<client::Explorer>& window) {
  bool confirmed = false;
  qorvane::Trap("Connect.QorvanePropsEdit", [&] {
    g_debug.Out("->EditQorvaneProps");
    const client::WindowRect rect = Require(window)->Rect();
    dialogs::BeginHandOver(record, false, dialogs::DialogRectFromPixels(rect.Left, rect.Top, rect.Width, rect.Height));
    if (!dialogs::ShowScheduleDialog()) return;
    record->SetFirstOccurrence();
    // Confirmed only with its first occurrence in place: a pattern without
    // one would be written as a schedule that can never be sent.
    confirmed = true;
  });
  dialogs::EndHandOver();
  return confirmed;
}

void Connect::QorvanePropsApply(CMailProps& record, const client::Ref<client::Item>& item) {
  constexpr const char* kLabel = "QorvanePropsApply";
  client::Ref<client::MAPIFolder> deferred;
  bool inDeferredFolder = false;
  qorvane::Trap(kLabel, [&] {
    deferred = Require(Main::GetQorvaneFolder(true));
    inDeferredFolder = Require(Require(item)->Parent())->FolderPath() == deferred->FolderPath();
  });
  qorvane::Trap(kLabel, [&] { record.WriteProps(item); });
  qorvane::Trap(kLabel, [&] { Require(item)->Save(); });
  if (!inDeferredFolder) qorvane::Trap(kLabel, [&] { Require(item)->Move(Require(deferred)); });
}

void Connect::m_app_ItemSend(const client::Ref<client::Item>& item, bool& cancel) {
  qorvane::GuardEntry("Connect.m_app_ItemSend", [&] { g_debug.Out("olApp.ItemSend(" + Require(item)->Subject() + ")"); });
}
