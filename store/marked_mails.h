// mSpecial: mails marked in the Inbox ("MoveToQorvane") are moved into the
// deferred folder when the add-in starts, so that another program can hand a
// mail over to the add-in by marking it. The add-in marks a mail itself when
// it is scheduled while the client has no main window; closing its compose
// window saves it in Drafts, so Drafts is looked at too.
#pragma once

#include "client/items.h"

namespace mSpecial {

inline constexpr const char* kMarkProperty = "MoveToQorvane";

// Marks an item (once).
void SpecialAdd(const client::Ref<client::Item>& item);

// Moves every marked mail of the Inbox, then of Drafts, into the deferred
// folder, in each folder's order, taking the mark off. Creates the folder
// only when there is something to move.
void SpecialDo();

}  // namespace mSpecial
