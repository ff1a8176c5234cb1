// The simulated client's Send/Receive group "All Accounts". Start counts a
// run and raises SyncStart; the run ends at once (SyncEnd in the same call)
// unless the test holds it open to end it later, as a slow server would.
#pragma once

#include <memory>
#include <string>

#include "client/sync_objects.h"
#include "sim/event_sinks.h"

namespace sim {

class World;

class SimSyncObject final : public client::SyncObject {
 public:
  explicit SimSyncObject(World& world) : world_(world) {}
  std::string Name() override;
  void Start() override;
  void Stop() override;
  client::Ref<client::EventSubscription> Advise(client::SyncObjectEvents* sink) override;

  // A run as the client starts it (Start, or the Send/Receive button).
  void Begin();
  void Finish();
  void Fail(long code, const std::string& description);

  int starts = 0;
  bool running = false;
  bool finishLater = false;

 private:
  World& world_;
  EventSinks<client::SyncObjectEvents> events_;
};

class SimSyncObjects final : public client::SyncObjects {
 public:
  explicit SimSyncObjects(World& world) : world_(world) {}
  long Count() override;
  client::Ref<client::SyncObject> Item(long index) override;

 private:
  World& world_;
};

}  // namespace sim
