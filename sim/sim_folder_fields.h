// A simulated folder's fields (Folder.UserDefinedProperties).
#pragma once

#include <memory>
#include <string>

#include "client/folders.h"

namespace sim {

class World;
class SimFolder;

class SimUserDefinedProperties final : public client::UserDefinedProperties {
 public:
  SimUserDefinedProperties(World& world, std::shared_ptr<SimFolder> folder)
      : world_(world), folder_(std::move(folder)) {}
  long Count() override;
  client::Ref<client::UserDefinedProperty> Item(long index) override;
  client::Ref<client::UserDefinedProperty> Find(const std::string& name) override;
  client::Ref<client::UserDefinedProperty> Add(const std::string& name, long type) override;

 private:
  World& world_;
  std::shared_ptr<SimFolder> folder_;
};

class SimUserDefinedProperty final : public client::UserDefinedProperty {
 public:
  SimUserDefinedProperty(World& world, std::shared_ptr<SimFolder> folder, std::string lowerName)
      : world_(world), folder_(std::move(folder)), lowerName_(std::move(lowerName)) {}
  std::string Name() override;
  long Type() override;
  void Delete() override;

 private:
  World& world_;
  std::shared_ptr<SimFolder> folder_;
  std::string lowerName_;
};

}  // namespace sim
