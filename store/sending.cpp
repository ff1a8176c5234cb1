// Main: the sending pipeline.
#include "store/sending.h"

#include <algorithm>
#include <functional>
#include <string>
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
#include "store/sending_notices.h"
#include "store/sending_schedule.h"

namespace Main {
namespace {

// Application-defined error numbers (the runtime's vbObjectError range).
constexpr std::int32_t kScheduleNotSaved = -2147221504 + 3;
constexpr std::int32_t kMailHeldBack = -2147221504 + 4;

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

// An item property read for the log or the session memory, "" when the
// client does not answer.
template <class Read>
std::string Quietly(Read&& read) {
  std::string text;
  qorvane::IgnoreErrors([&] { text = read(); });
  qorvane::Err.Clear();
  return text;
}

// A mail that cannot be sent stays where it is. The log says so the first
// time for each cause and schedule, not on every tick that finds it due.
// `cause` names what is wrong together with a digest of the schedule as read,
// so that an edited schedule is judged afresh.
void HoldBack(const client::Ref<client::MailItem>& item, const std::string& entryId, const std::string& cause,
              const std::string& details) {
  if (!FirstNoticeOfUnsent(entryId, cause)) return;
  const std::string subject = Quietly([&] { return item->Subject(); });
  qorvane::Raise(kMailHeldBack, "'" + subject + "' is not sent: " + details);
}

std::string CauseKey(const char* cause, const DueSchedule& due) {
  const std::size_t digest =
      std::hash<std::string>{}(due.savedLine.value_or("") + "|" + std::to_string(due.savedTime));
  return std::string(cause) + "|" + std::to_string(digest);
}

// Writes the advanced schedule onto the item and saves it, and makes sure it
// reads back as written. Otherwise the properties the item had are put back
// as they were and the pass sends nothing, so the next pass starts from a
// whole schedule.
void SaveAdvancedSchedule(const client::Ref<client::MailItem>& item, CMailProps& advanced, const DueSchedule& before) {
  bool saved = advanced.WriteProps(item);
  if (saved) saved = qorvane::IgnoreErrors([&] { item->Save(); });
  if (saved) {
    CMailProps check;
    saved = check.ReadProps(item) && check.Equal(advanced);
  }
  if (saved) return;
  RestoreSchedule(item, before);
  qorvane::IgnoreErrors([&] { item->Save(); });
  qorvane::Raise(kScheduleNotSaved, "the next send time could not be saved; nothing sent this time");
}

// The occurrences due by now, from the record's send time on, and the record
// advanced past them.
struct CatchUp {
  std::vector<double> times;  // in time order
  bool ended = false;         // the last is the series' last send
  std::string stuck;          // why the pattern could not move on, if it could not
};

// Every occurrence missed while the client was closed is due now, one copy
// each. Each advance moves the send time strictly forward, so the loop ends;
// a damaged pattern that has nowhere to move stops it, and the send time it
// could not leave stays with the record, unsent.
CatchUp CatchUpTo(CMailProps& props, double now, bool fromSendTime) {
  CatchUp due;
  do {
    const double time = props.m_ScheduleTime;
    bool moved = false;
    try {
      moved = fromSendTime ? props.SetNextOccurrenceAfter(time) : props.SetNextOccurrence();
    } catch (const qorvane::RuntimeError& e) {
      due.stuck = e.Description();
      break;
    }
    fromSendTime = false;
    due.times.push_back(time);
    if (!moved) {
      due.ended = true;
      break;
    }
  } while (now >= props.m_ScheduleTime);
  return due;
}

}  // namespace

void SendMessage(const client::Ref<client::MailItem>& item, double now) {
  qorvane::Trap("Main.SendMessage", [&] {
    if (IsOpenInAnInspector(item)) {
      g_debug.Out("cant send becose inspector is opened");
      return;
    }
    DueSchedule read = ReadDueSchedule(item);
    const std::string entryId = Quietly([&] { return item->EntryID(); });
    if (!read.cause.empty()) return HoldBack(item, entryId, CauseKey(read.cause.c_str(), read), read.details);
    CMailProps& props = read.props;
    if (!props.m_IsRecurring) {
      ForgetUnsent(entryId);
      MoveAndSendMessage(item, props.m_ScheduleTime, props);
      return;
    }
    // A pattern already found to go nowhere from this very schedule would
    // only be walked again to the same end.
    const std::string stuckKey = CauseKey("pattern ends", read);
    if (HasNoticeOfUnsent(entryId, stuckKey)) return;

    const CatchUp due = CatchUpTo(props, now, read.anchoredOnSendTime);
    if (due.times.empty()) {
      return HoldBack(item, entryId, stuckKey,
                      "its pattern has no occurrence after " +
                          qorvane::CurrentLocale().FormatGeneralDate(props.m_ScheduleTime) + " (" + due.stuck + ")");
    }
    // The original keeps its next send time before any copy leaves, so that
    // a failure while sending never sends an occurrence twice.
    if (!due.ended) SaveAdvancedSchedule(item, props, read);
    ForgetUnsent(entryId);
    for (std::size_t i = 0; i < due.times.size(); ++i) {
      if (i + 1 == due.times.size() && due.ended) {
        MoveAndSendMessage(item, due.times[i], props);
      } else {
        auto copy = item->Copy()->AsMailItem();
        MoveAndSendMessage(copy, due.times[i], props);
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
