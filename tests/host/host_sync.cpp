// Send/Receive groups and their events.
#include "tests/host/host_objects.h"

namespace host {
namespace {

using Args = com::DispatchArgs;
using V = com::ScopedVariant;

const MemberTable<client::SyncObject> kSyncObject = {
    {"Name", [](client::SyncObject& s, const Args&) { return V(s.Name()); }},
    {"Start", [](client::SyncObject& s, const Args&) { return s.Start(), NoValue(); }},
    {"Stop", [](client::SyncObject& s, const Args&) { return s.Stop(), NoValue(); }},
};

class HostSyncObject final : public EventSource<client::SyncObject, client::SyncObjectEvents> {
 public:
  explicit HostSyncObject(Ref<client::SyncObject> sync)
      : EventSource(std::move(sync), kSyncObject, events::kSyncObject) {}
  void SyncStart() override { RaiseEvent(0xF001, {}); }
  void Progress(long state, const std::string& description, long value, long max) override {
    RaiseEvent(0xF002, {V(state), V(description), V(value), V(max)});
  }
  void OnError(long code, const std::string& description) override { RaiseEvent(0xF003, {V(code), V(description)}); }
  void SyncEnd() override { RaiseEvent(0xF004, {}); }
};

const MemberTable<client::SyncObjects> kSyncObjects = {
    {"Count", [](client::SyncObjects& s, const Args&) { return V(s.Count()); }},
    {"Item", [](client::SyncObjects& s, const Args& a) {
       return ExposeAs<HostSyncObject>(s.Item(a.Long(0)));
     }},
};

}  // namespace

com::ScopedVariant ExposeSyncObjects(const Ref<client::SyncObjects>& syncObjects) {
  return Expose(syncObjects, kSyncObjects);
}

}  // namespace host
