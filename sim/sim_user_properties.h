// The user properties of a simulated item: typed values, found by name
// without regard to case, added once per name, deleted for good.
#pragma once

#include <memory>
#include <string>

#include "client/items.h"
#include "sim/item_data.h"

namespace sim {

class World;

class SimUserProperties final : public client::UserProperties {
 public:
  SimUserProperties(World& world, ItemPtr item)
      : world_(world), item_(std::move(item)), generation_(item_->generation) {}
  long Count() override;
  client::Ref<client::UserProperty> Item(long index) override;
  client::Ref<client::UserProperty> Find(const std::string& name) override;
  client::Ref<client::UserProperty> Add(const std::string& name, long type) override;

 private:
  ItemData& Use(const char* member);

  World& world_;
  ItemPtr item_;
  std::uint64_t generation_;
};

class SimUserProperty final : public client::UserProperty {
 public:
  SimUserProperty(World& world, ItemPtr item, std::shared_ptr<UserPropData> property)
      : world_(world), item_(std::move(item)), generation_(item_->generation), property_(std::move(property)) {}
  std::string Name() override;
  long Type() override;
  qorvane::Variant Value() override;
  void Value(const qorvane::Variant& value) override;
  void Delete() override;

 private:
  UserPropData& Use(const char* member);

  World& world_;
  ItemPtr item_;
  std::uint64_t generation_;
  std::shared_ptr<UserPropData> property_;
};

}  // namespace sim
