// Main: the "ScheduleTime" user property.
#include "store/item_props.h"

#include "infra/cdebug.h"
#include "infra/error_trap.h"

namespace Main {

bool SetUserProp(const client::Ref<client::Item>& item, double value) {
  return qorvane::Trap("Main.SetUserProp()", [&] {
    auto properties = item->UserProperties();
    auto property = properties->Find(kScheduleTimeProperty);
    if (property && property->Type() != client::olDateTime) {
      g_debug.Out("Warning: user prop type is not olDateTime");
      property->Delete();
      property = nullptr;
    }
    if (!property) property = properties->Add(kScheduleTimeProperty, client::olDateTime);
    property->Value(qorvane::DateValue{value});
  });
}

bool GetUserProp(const client::Ref<client::Item>& item, double& value) {
  bool found = false;
  // The getter logs under the setter's label; log readers know it by that.
  qorvane::Trap("Main.SetUserProp", [&] {
    auto property = item->UserProperties()->Find(kScheduleTimeProperty);
    if (!property || property->Type() != client::olDateTime) return;
    const qorvane::Variant stored = property->Value();
    value = stored.GetKind() == qorvane::Variant::Kind::Date ? stored.AsDate() : stored.NumericValue().value_or(0.0);
    found = true;
  });
  return found;
}

void DelUserProp(const client::Ref<client::Item>& item) {
  qorvane::Trap("Main.DelUserProp", [&] {
    if (auto property = item->UserProperties()->Find(kScheduleTimeProperty)) property->Delete();
  });
}

}  // namespace Main
