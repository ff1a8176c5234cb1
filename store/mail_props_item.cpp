// CMailProps on a mail item, and its attachment references resolved to files.
#include <string>

#include "base/variant.h"
#include "client/items.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "infra/ignore_list.h"
#include "infra/variant_text.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "schedule/mail_props.h"
#include "store/item_props.h"

namespace {

// The newest file of a folder that neither the ignore list nor the
// system-and-hidden rule excludes; "" when there is none or the folder can't
// be listed. On equal times the file listed first stays.
std::string NewestFileOf(const std::string& folder) {
  const auto entries = qorvane::ListFolder(folder);
  if (!entries) return "";
  const qorvane::FolderEntry* newest = nullptr;
  for (const qorvane::FolderEntry& entry : *entries) {
    // Only files that are both hidden and system are skipped: a file that is
    // merely hidden stays a candidate.
    if (g_IgnoreList.IgnoreSysHiden() && entry.hidden && entry.system) continue;
    if (entry.directory) continue;
    if (g_IgnoreList.Find(entry.name)) continue;
    if (!newest || newest->lastWriteTicks < entry.lastWriteTicks) newest = &entry;
  }
  return newest ? qorvane::JoinPath(folder, newest->name) : "";
}

}  // namespace

bool CMailProps::ReadProps(const client::Ref<client::Item>& oMail) {
  bool complete = true;
  const bool trapped = qorvane::Trap("CMailProps.ReadProps", [&] {
    double scheduleTime = 0.0;
    // A missing "ScheduleTime" is a new item; only a failed read is a failure.
    const bool hasTime = Main::GetUserProp(oMail, scheduleTime);
    if (!hasTime) {
      scheduleTime = DefaultScheduleTime(qorvane::Now());
      if (oMail->UserProperties()->Find(Main::kScheduleTimeProperty)) complete = false;
    }
    m_ScheduleTime = scheduleTime;
    m_IsRecurring = false;
    auto recurrence = oMail->UserProperties()->Find(Main::kRecurrenceProperty);
    if (!recurrence) {
      m_collAttachments = qorvane::AttachmentList{};
      return;
    }
    if (!ReadFromString(qorvane::CStr(recurrence->Value()))) complete = false;
  });
  return trapped && complete;
}

bool CMailProps::WriteProps(const client::Ref<client::Item>& oMail) {
  bool complete = true;
  const bool trapped = qorvane::Trap("CMailProps.WriteProps", [&] {
    if (!Main::SetUserProp(oMail, m_ScheduleTime)) complete = false;
    const std::string line = WriteToString();
    if (line.empty()) complete = false;
    auto properties = oMail->UserProperties();
    auto recurrence = properties->Find(Main::kRecurrenceProperty);
    if (!recurrence) recurrence = properties->Add(Main::kRecurrenceProperty, client::olText);
    recurrence->Value(line);
  });
  return trapped && complete;
}

void CMailProps::ClearProps(const client::Ref<client::Item>& oMail) {
  qorvane::Trap("CMailProps.ClearProps", [&] {
    Main::DelUserProp(oMail);
    if (auto recurrence = oMail->UserProperties()->Find(Main::kRecurrenceProperty)) recurrence->Delete();
  });
}

qorvane::AttachmentList CMailProps::GetResolvedAttachments() {
  qorvane::AttachmentList resolved;
  qorvane::Trap("CMailProps.GetResolvedAttachments", [&] {
    for (const std::string& entry : m_collAttachments) {
      if (!qorvane::IsFolderReference(entry)) {
        if (qorvane::FileExists(entry)) {
          resolved.push_back(entry);
        } else {
          g_debug.OutWarning("CMailProps.GetResolvedAttachments", "FilePath: \"" + entry + "\" not exists");
        }
        continue;
      }
      const std::string newest = NewestFileOf(entry.substr(0, entry.size() - 1));
      if (!newest.empty()) {
        resolved.push_back(newest);
      } else {
        g_debug.OutWarning("CMailProps.GetResolvedAttachments",
                           "FilePath: \"" + entry + "\" not exists or has no files");
      }
    }
  });
  return resolved;
}
