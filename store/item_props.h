// Main: the "ScheduleTime" user property that holds an item's next send time
// (and drives the deferred folder's "Next Occurrence" column), and the name
// of the property beside it that holds the recurrence line.
#pragma once

#include "client/items.h"

namespace Main {

inline constexpr const char* kScheduleTimeProperty = "ScheduleTime";
inline constexpr const char* kRecurrenceProperty = "QorvaneRecurrence";

// Sets "ScheduleTime" as a date-time property; a property of another type is
// replaced, never converted. The caller saves the item. False after a
// (logged) failure.
bool SetUserProp(const client::Ref<client::Item>& item, double value);
// Reads "ScheduleTime" into value when it exists and is a date-time; false
// (value untouched) otherwise.
bool GetUserProp(const client::Ref<client::Item>& item, double& value);
void DelUserProp(const client::Ref<client::Item>& item);

}  // namespace Main
