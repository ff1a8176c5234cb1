// Folder fields of the simulated store.
#include "sim/sim_folder_fields.h"

#include <algorithm>

#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "sim/sim_folder.h"
#include "sim/user_property_value.h"
#include "sim/world.h"

namespace sim {

long SimUserDefinedProperties::Count() {
  world_.Enter("UserDefinedProperties", "Count");
  return static_cast<long>(folder_->fields.size());
}

client::Ref<client::UserDefinedProperty> SimUserDefinedProperties::Item(long index) {
  world_.Enter("UserDefinedProperties", "Item");
  if (index < 1 || static_cast<std::size_t>(index) > folder_->fields.size()) fault::OutOfBounds();
  return world_.Hand(std::make_shared<SimUserDefinedProperty>(
      world_, folder_, folder_->fields[static_cast<std::size_t>(index - 1)].lowerName));
}

client::Ref<client::UserDefinedProperty> SimUserDefinedProperties::Find(const std::string& name) {
  world_.Enter("UserDefinedProperties", "Find");
  const std::string lower = qorvane::LCase(name);
  if (!folder_->FindField(lower)) return nullptr;
  return world_.Hand(std::make_shared<SimUserDefinedProperty>(world_, folder_, lower));
}

client::Ref<client::UserDefinedProperty> SimUserDefinedProperties::Add(const std::string& name, long type) {
  world_.Enter("UserDefinedProperties", "Add");
  if (name.empty() || !IsSupportedPropertyType(type)) qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  const std::string lower = qorvane::LCase(name);
  if (folder_->FindField(lower))
    qorvane::Raise(fault::kDispatchException, "The property \"" + name + "\" already exists.");
  folder_->AddField(name, type);
  return world_.Hand(std::make_shared<SimUserDefinedProperty>(world_, folder_, lower));
}

std::string SimUserDefinedProperty::Name() {
  world_.Enter("UserDefinedProperty", "Name");
  const auto* field = folder_->FindField(lowerName_);
  if (!field) fault::MovedOrDeleted();
  return field->name;
}

long SimUserDefinedProperty::Type() {
  world_.Enter("UserDefinedProperty", "Type");
  const auto* field = folder_->FindField(lowerName_);
  if (!field) fault::MovedOrDeleted();
  return field->type;
}

void SimUserDefinedProperty::Delete() {
  world_.Enter("UserDefinedProperty", "Delete");
  auto& fields = folder_->fields;
  std::erase_if(fields, [&](const SimFolder::Field& field) { return field.lowerName == lowerName_; });
}

}  // namespace sim
