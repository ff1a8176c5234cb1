// The views of a simulated folder. A view keeps its XML exactly as it was
// last set, and counts how often it was saved and applied so that tests can
// tell whether the add-in made its change visible.
#pragma once

#include <memory>
#include <string>

#include "client/folders.h"

namespace sim {

class World;
class SimFolder;

// The XML the client gives a new view of the type (olTableView: the usual
// table columns of a mail folder); raises for a type it does not know.
std::string NewViewXml(const std::string& name, long viewType);
// The views every new folder starts with.
void AddDefaultViews(SimFolder& folder);

class SimView final : public client::View {
 public:
  SimView(World& world, std::string name, std::string xml)
      : world_(world), name_(std::move(name)), xml_(std::move(xml)) {}

  std::string Name() override;
  std::string XML() override;
  void XML(const std::string& value) override;
  void Save() override;
  void Apply() override;

  const std::string& ViewName() const { return name_; }
  int Applied() const { return applied_; }
  int Saved() const { return saved_; }

 private:
  World& world_;
  std::string name_;
  std::string xml_;
  int applied_ = 0;
  int saved_ = 0;
};

class SimViews final : public client::Views {
 public:
  SimViews(World& world, std::shared_ptr<SimFolder> folder) : world_(world), folder_(std::move(folder)) {}
  long Count() override;
  client::Ref<client::View> Item(const std::string& name) override;
  client::Ref<client::View> Add(const std::string& name, long viewType, long saveOption) override;

 private:
  World& world_;
  std::shared_ptr<SimFolder> folder_;
};

}  // namespace sim
