// Send/Receive groups.
#include "win/binding/bound_object.h"
#include "win/binding/event_subscriptions.h"

namespace binding {
namespace {

com::DispatchType kSyncObjectsType("SyncObjects");
com::DispatchType kSyncObjectType("SyncObject");

class BoundSyncObject final : public client::SyncObject, public Bound {
 public:
  explicit BoundSyncObject(com::ComPtr<IDispatch> object) : Bound(std::move(object), kSyncObjectType) {}
  std::string Name() override { return Text("Name"); }
  void Start() override { Call("Start"); }
  void Stop() override { Call("Stop"); }
  Ref<client::EventSubscription> Advise(client::SyncObjectEvents* sink) override {
    return binding::Advise(Object(), sink);
  }
};

class BoundSyncObjects final : public client::SyncObjects, public Bound {
 public:
  explicit BoundSyncObjects(com::ComPtr<IDispatch> object) : Bound(std::move(object), kSyncObjectsType) {}
  long Count() override { return Long("Count"); }
  Ref<client::SyncObject> Item(long index) override { return MakeBound<BoundSyncObject>(Get("Item", {index})); }
};

}  // namespace

Ref<client::SyncObjects> BindSyncObjects(const com::ScopedVariant& object) {
  return MakeBound<BoundSyncObjects>(object);
}

}  // namespace binding
