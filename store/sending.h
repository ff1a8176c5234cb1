// Main: the sending pipeline. The scheduler hands every due item of the
// deferred folder to SendMessage; a recurring item sends one copy per due
// occurrence and stays with its next send time, the last occurrence (and a
// one-time item) sends the item itself. Sending goes through the safe-mail
// library so that the client shows no security prompt.
#pragma once

#include <string>

#include "client/items.h"
#include "schedule/mail_props.h"

namespace Main {

// Sends what is due of one scheduled item at now. An item open in a window is
// left alone (the next tick tries again). A send time the user edited is
// honoured; a mail that cannot be sent (its schedule unreadable, its pattern
// going nowhere) stays as it is and is logged once for the session.
void SendMessage(const client::Ref<client::MailItem>& item, double now);

// Clears the schedule from the item, moves it to the Outbox, attaches the
// schedule's files and sends it.
void MoveAndSendMessage(const client::Ref<client::MailItem>& item, double sendTime, CMailProps& props);

// The text after the last "\" (a "/" counts as "\"); the whole path without one.
std::string FileNameOfPath(const std::string& path);

// True when the mail has recipients and all of them resolve; otherwise tells
// the user why and returns false.
bool CheckRecipients(const client::Ref<client::MailItem>& item);

inline constexpr const char* kNoRecipientsMessage =
    "There must be at least one name or distribution list in the To, Cc, or Bcc box.";
inline constexpr const char* kUnresolvedRecipientsMessage = "Microsoft Outlook can't recognize one or more recipients!";

}  // namespace Main
