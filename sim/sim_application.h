// The simulated client's Application and its MAPI session.
#pragma once

#include "client/application.h"

namespace sim {

class World;

class SimApplication final : public client::Application {
 public:
  explicit SimApplication(World& world) : world_(world) {}
  std::string Version() override;
  client::Ref<client::NameSpace> GetNamespace(const std::string& type) override;
  client::Ref<client::NameSpace> Session() override;
  client::Ref<client::Explorers> Explorers() override;
  client::Ref<client::Inspectors> Inspectors() override;
  client::Ref<client::Explorer> ActiveExplorer() override;
  client::Ref<client::Inspector> ActiveInspector() override;
  client::Ref<client::Item> CreateItem(long itemType) override;
  client::Ref<client::EventSubscription> Advise(client::ApplicationEvents* sink) override;
  client::Ref<client::COMAddIns> COMAddIns() override;
  void SendKeys(const std::string& keys) override;

 private:
  World& world_;
};

class SimNameSpace final : public client::NameSpace {
 public:
  explicit SimNameSpace(World& world) : world_(world) {}
  client::Ref<client::MAPIFolder> GetDefaultFolder(long folderType) override;
  client::Ref<client::SyncObjects> SyncObjects() override;

 private:
  World& world_;
};

}  // namespace sim
