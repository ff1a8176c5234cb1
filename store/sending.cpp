// Main: the sending pipeline.
#include "store/sending.h"

#include <algorithm>
#include <vector>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "client/application.h"
#include "client/folders.h"
#include "client/safe_mail.h"
#include "client/windows.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "platform/locale.h"
#include "platform/message_box.h"

namespace Main {
namespace {

// Application-defined error numbers (the runtime's vbObjectError range).
constexpr std::int32_t kScheduleNotRead = -2147221504 + 1;
constexpr std::int32_t kScheduleInconsistent = -2147221504 + 2;
constexpr std::int32_t kScheduleNotSaved = -2147221504 + 3;

// Is the item shown in an open compose or read window? Each window is asked
// with errors ignored: a window that fails to answer does not stop a send.
bool IsOpenInAnInspector(const client::Ref<client::MailItem>& item) {
  bool open = false;
  qorvane::IgnoreErrors([&] {
    auto inspectors = client::CurrentApplication()->Inspectors();
    const long count = inspectors->Count();
    if (count == 0) return;
    const std::string entryId = item->EntryID();
    for (long i = 1; i <= count && !open; ++i) {
      qorvane::IgnoreErrors([&] {
        if (inspectors->Item(i)->CurrentItem()->EntryID() == entryId) open = true;
      });
    }
  });
  qorvane::Err.Clear();
  return open;
}

// Writes the advanced schedule onto the item and saves it, and makes sure it
// reads back as written. Otherwise the schedule the item had is put back and
// the pass sends nothing, so the next pass starts from a whole schedule.
void SaveAdvancedSchedule(const client::Ref<client::MailItem>& item, CMailProps& advanced, const CMailProps& original) {
  bool saved = advanced.WriteProps(item);
  if (saved) saved = qorvane::IgnoreErrors([&] { item->Save(); });
  if (saved) {
    CMailProps check;
    saved = check.ReadProps(item) && check.Equal(advanced);
  }
  if (saved) return;
  CMailProps restore = original;
  restore.WriteProps(item);
  qorvane::IgnoreErrors([&] { item->Save(); });
  qorvane::Raise(kScheduleNotSaved, "the next send time could not be saved; nothing sent this time");
}

}  // namespace

void SendMessage(const client::Ref<client::MailItem>& item, double now) {
  qorvane::Trap("Main.SendMessage", [&] {
    if (IsOpenInAnInspector(item)) {
      g_debug.Out("cant send becose inspector is opened");
      return;
    }
    CMailProps props;
    // Acting on half a schedule could send an occurrence twice or end a
    // series early; the item waits for the next pass instead.
    if (!props.ReadProps(item)) qorvane::Raise(kScheduleNotRead, "the schedule could not be read; not sent this time");
    if (!props.m_IsRecurring) {
      MoveAndSendMessage(item, props.m_ScheduleTime, props);
      return;
    }
    if (qorvane::DatePart(props.m_ScheduleTime) != props.m_PatternStartDate)
      qorvane::Raise(kScheduleInconsistent, "the next send time and the pattern disagree; not sent");
    const CMailProps original = props;
    // Every occurrence missed while the client was closed goes out now, one
    // copy each, in time order.
    std::vector<double> due;
    bool ended = false;
    do {
      due.push_back(props.m_ScheduleTime);
      if (!props.SetNextOccurrence()) {
        ended = true;
        break;
      }
    } while (now >= props.m_ScheduleTime);
    // The original keeps its next send time before any copy leaves, so that
    // a failure while sending never sends an occurrence twice.
    if (!ended) SaveAdvancedSchedule(item, props, original);
    for (std::size_t i = 0; i < due.size(); ++i) {
      if (i + 1 == due.size() && ended) {
        MoveAndSendMessage(item, due[i], props);
      } else {
        auto copy = item->Copy()->AsMailItem();
        MoveAndSendMessage(copy, due[i], props);
      }
    }
  });
}

void MoveAndSendMessage(const client::Ref<client::MailItem>& item, double sendTime, CMailProps& props) {
  qorvane::Trap("Main.MoveAndSendMessage", [&] {
    props.ClearProps(item);
    auto outbox = client::CurrentApplication()->GetNamespace("MAPI")->GetDefaultFolder(client::olFolderOutbox);
    auto moved = item->Move(outbox)->AsMailItem();
    for (const std::string& path : props.GetResolvedAttachments()) {
      g_debug.Out("Attaching: " + path);
      moved->Attachments()->Add(path, FileNameOfPath(path));
    }
    g_debug.Out("SendMail Subject = '" + moved->Subject() + "'",
                "SendMail Timer = '" + qorvane::CurrentLocale().FormatGeneralDate(sendTime) + "'");
    auto safe = client::CurrentSafeMailFactory().CreateSafeMailItem();
    safe->Item(moved);
    safe->Send();
  });
}

std::string FileNameOfPath(const std::string& path) {
  std::string normalised = path;
  std::replace(normalised.begin(), normalised.end(), '/', '\\');
  const std::size_t slash = normalised.rfind('\\');
  return slash == std::string::npos ? normalised : normalised.substr(slash + 1);
}

bool CheckRecipients(const client::Ref<client::MailItem>& item) {
  bool ok = false;
  qorvane::Trap("Main.CheckRecipients", [&] {
    auto safe = client::CurrentSafeMailFactory().CreateSafeMailItem();
    safe->Item(item);
    auto recipients = safe->Recipients();
    if (recipients->Count() == 0) {
      qorvane::MsgBox(kNoRecipientsMessage, qorvane::vbOKOnly | qorvane::vbExclamation);
      return;
    }
    if (!recipients->ResolveAll()) {
      qorvane::MsgBox(kUnresolvedRecipientsMessage, qorvane::vbOKOnly | qorvane::vbExclamation);
      return;
    }
    ok = true;
  });
  return ok;
}

}  // namespace Main
