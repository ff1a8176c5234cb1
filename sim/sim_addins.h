// The simulated client's COM add-ins: the list Application.COMAddIns shows
// (each add-in's ProgId, Description and whether it is loaded), and for a
// loaded one its connection object and the object it published.
#pragma once

#include <memory>
#include <string>

#include "client/addins.h"

namespace sim {

class World;

class SimCOMAddIn final : public client::COMAddIn {
 public:
  SimCOMAddIn(World& world, std::string progId, std::string description)
      : progId(std::move(progId)), description(std::move(description)), world_(world) {}
  std::string ProgId() override;
  std::string Description() override;
  bool Connect() override;
  client::Ref<client::AddInConnection> Object() override;
  void Object(const client::Ref<client::AddInConnection>& value) override;

  const std::string progId;
  const std::string description;
  bool connected = false;
  client::Ref<client::AddInConnection> connection;  // held while loaded
  client::Ref<client::AddInConnection> object;

 private:
  World& world_;
};

class SimCOMAddIns final : public client::COMAddIns {
 public:
  explicit SimCOMAddIns(World& world) : world_(world) {}
  long Count() override;
  client::Ref<client::COMAddIn> Item(long index) override;

 private:
  World& world_;
};

}  // namespace sim
