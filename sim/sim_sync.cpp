// Send/Receive runs.
#include "sim/sim_sync.h"

#include "base/runtime_error.h"
#include "sim/world.h"

namespace sim {

std::string SimSyncObject::Name() {
  world_.Enter("SyncObject", "Name");
  return "All Accounts";
}

void SimSyncObject::Start() {
  world_.Enter("SyncObject", "Start");
  Begin();
}

void SimSyncObject::Stop() {
  world_.Enter("SyncObject", "Stop");
  Finish();
}

client::Ref<client::EventSubscription> SimSyncObject::Advise(client::SyncObjectEvents* sink) {
  world_.Enter("SyncObject", "Advise");
  return world_.Hand(events_.Advise(sink));
}

void SimSyncObject::Begin() {
  ++starts;
  if (running) return;  // a second start joins the run under way
  running = true;
  events_.Raise([](client::SyncObjectEvents& sink) { sink.SyncStart(); });
  events_.Raise([](client::SyncObjectEvents& sink) { sink.Progress(1, "Sending and receiving", 0, 1); });
  if (!finishLater) Finish();
}

void SimSyncObject::Finish() {
  if (!running) return;
  running = false;
  events_.Raise([](client::SyncObjectEvents& sink) { sink.Progress(0, "Completed", 1, 1); });
  events_.Raise([](client::SyncObjectEvents& sink) { sink.SyncEnd(); });
}

void SimSyncObject::Fail(long code, const std::string& description) {
  events_.Raise([&](client::SyncObjectEvents& sink) { sink.OnError(code, description); });
}

long SimSyncObjects::Count() {
  world_.Enter("SyncObjects", "Count");
  return 1;
}

client::Ref<client::SyncObject> SimSyncObjects::Item(long index) {
  world_.Enter("SyncObjects", "Item");
  if (index != 1) fault::OutOfBounds();
  return world_.Hand(world_.syncObject);
}

}  // namespace sim
