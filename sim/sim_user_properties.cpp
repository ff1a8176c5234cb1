// User properties of items.
#include "sim/sim_user_properties.h"

#include <algorithm>

#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "sim/sim_folder.h"
#include "sim/user_property_value.h"
#include "sim/world.h"

namespace sim {

ItemData& SimUserProperties::Use(const char* member) {
  world_.Enter("UserProperties", member);
  if (item_->deleted || item_->generation != generation_) fault::MovedOrDeleted();
  return *item_;
}

long SimUserProperties::Count() { return static_cast<long>(Use("Count").properties.size()); }

client::Ref<client::UserProperty> SimUserProperties::Item(long index) {
  ItemData& item = Use("Item");
  if (index < 1 || static_cast<std::size_t>(index) > item.properties.size()) fault::OutOfBounds();
  return world_.Hand(std::make_shared<SimUserProperty>(world_, item_, item.properties[static_cast<std::size_t>(index - 1)]));
}

client::Ref<client::UserProperty> SimUserProperties::Find(const std::string& name) {
  ItemData& item = Use("Find");
  const std::string lower = qorvane::LCase(name);
  for (const auto& property : item.properties) {
    if (property->lowerName == lower) return world_.Hand(std::make_shared<SimUserProperty>(world_, item_, property));
  }
  return nullptr;
}

client::Ref<client::UserProperty> SimUserProperties::Add(const std::string& name, long type) {
  ItemData& item = Use("Add");
  if (name.empty() || !IsSupportedPropertyType(type))
    qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  const std::string lower = qorvane::LCase(name);
  for (const auto& property : item.properties) {
    if (property->lowerName == lower)
      qorvane::Raise(fault::kDispatchException, "The property \"" + name + "\" already exists.");
  }
  auto property = std::make_shared<UserPropData>();
  property->name = name;
  property->lowerName = lower;
  property->type = type;
  property->value = DefaultPropertyValue(type);
  item.properties.push_back(property);
  // AddToFolderFields defaults to True: the item's folder learns the field.
  item.folder->AddField(name, type);
  return world_.Hand(std::make_shared<SimUserProperty>(world_, item_, std::move(property)));
}

UserPropData& SimUserProperty::Use(const char* member) {
  world_.Enter("UserProperty", member);
  if (item_->deleted || item_->generation != generation_ || property_->deleted) fault::MovedOrDeleted();
  return *property_;
}

std::string SimUserProperty::Name() { return Use("Name").name; }
long SimUserProperty::Type() { return Use("Type").type; }
qorvane::Variant SimUserProperty::Value() { return Use("Value").value; }

void SimUserProperty::Value(const qorvane::Variant& value) {
  UserPropData& property = Use("Value");
  property.value = ConvertPropertyValue(property.type, value);
}

void SimUserProperty::Delete() {
  UserPropData& property = Use("Delete");
  property.deleted = true;
  auto& list = item_->properties;
  list.erase(std::remove(list.begin(), list.end(), property_), list.end());
}

}  // namespace sim
