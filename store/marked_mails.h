// mSpecial: mails marked in the Inbox ("MoveToQorvane") are moved into the
// deferred folder when the add-in starts, so that another program can hand a
// mail over to the add-in by marking it.
#pragma once

#include "client/items.h"

namespace mSpecial {

inline constexpr const char* kMarkProperty = "MoveToQorvane";

// Marks an item (once).
void SpecialAdd(const client::Ref<client::Item>& item);

// Moves every marked mail of the Inbox into the deferred folder, in the
// Inbox's order, taking the mark off. Creates the folder only when there is
// something to move.
void SpecialDo();

}  // namespace mSpecial
