// Main: the sending pipeline.
#include "store/sending.h"

#include <algorithm>
#include <vector>

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

// Is the item shown in an open compose or read window? Each window is asked
// with errors ignored: a window that fails to answer does not stop a send.
bool IsOpenInAnInspector(const client::Ref<client::MailItem>& item) {
  bool open = false;
  qorvane::IgnoreErrors([&] {
    const std::string entryId = item->EntryID();
    auto inspectors = client::CurrentApplication()->Inspectors();
    const long count = inspectors->Count();
    for (long i = 1; i <= count && !open; ++i) {
      qorvane::IgnoreErrors([&] {
        if (inspectors->Item(i)->CurrentItem()->EntryID() == entryId) open = true;
      });
    }
  });
  qorvane::Err.Clear();
  return open;
}

}  // namespace

void SendMessage(const client::Ref<client::MailItem>& item, double now) {
  qorvane::Trap("Main.SendMessage", [&] {
    if (IsOpenInAnInspector(item)) {
      g_debug.Out("cant send becose inspector is opened");
      return;
    }
    CMailProps props;
    props.ReadProps(item);
    if (!props.m_IsRecurring) {
      MoveAndSendMessage(item, props.m_ScheduleTime, props);
      return;
    }
    // Every occurrence missed while the client was closed goes out now, one
    // copy each, in time order.
    std::vector<double> due;
    bool ended = false;
    do {
      const double t = props.m_ScheduleTime;
      due.push_back(t);
      if (!props.SetNextOccurrence()) {
        ended = true;
        break;
      }
    } while (now >= props.m_ScheduleTime);
    // The original keeps its next send time before any copy leaves, so a
    // failure while sending never sends an occurrence twice.
    if (!ended) {
      props.WriteProps(item);
      item->Save();
    }
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
