// Main: the session's memory of mails the scheduler could not send.
//
// A deferred mail that cannot be sent (its schedule can't be read, its
// pattern has no further occurrence) stays in the folder and is found due on
// every tick, once a minute for the whole session. The log should say so once
// per mail and cause, not every minute: this remembers, by the item's
// EntryID and the cause, what was already said. It is forgotten when the
// add-in is unloaded, and for one mail as soon as that mail is sent again.
// UI thread only.
#pragma once

#include <string>

namespace Main {

// True the first time in this session that this mail is held back for this
// cause (the caller then logs it); false when it was already said.
bool FirstNoticeOfUnsent(const std::string& entryId, const std::string& cause);

// Whether FirstNoticeOfUnsent already had this mail and cause.
bool HasNoticeOfUnsent(const std::string& entryId, const std::string& cause);

// The mail was sent or handled: a later failure is news again.
void ForgetUnsent(const std::string& entryId);

// Test support: the empty memory of a freshly loaded add-in.
void ResetUnsentNoticesForTesting();

}  // namespace Main
