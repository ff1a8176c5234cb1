// The client's COM add-ins list, and add-in connection objects reached by
// late binding: another add-in's published object, or ours when the client
// hands it back.
//
// COMAddIn.Object holds an automation object. The add-in publishes its
// connection object there, which in C++ is a client::AddInConnection; its
// COM face is what the client must get. The add-in's COM server names that
// face here (PublishAddInObject), so that Object(connection) can hand the
// client the face, and Object() can give the add-in its own connection
// object back instead of a late-bound stranger.
#include <algorithm>
#include <vector>

#include "base/runtime_error.h"
#include "win/binding/bound_object.h"

namespace binding {
namespace {

com::DispatchType kAddInsType("COMAddIns");
com::DispatchType kAddInType("COMAddIn");

struct Published {
  std::weak_ptr<client::AddInConnection> connection;
  const client::AddInConnection* key;
  IDispatch* face;
};

std::vector<Published>& PublishedObjects() {
  static std::vector<Published> published;
  return published;
}

// Whether two interface pointers are one object (COM identity: IUnknown).
bool SameObject(IDispatch* a, IDispatch* b) {
  if (a == b) return true;
  const auto left = com::ComPtr<IDispatch>(a).As<IUnknown>(IID_IUnknown);
  const auto right = com::ComPtr<IDispatch>(b).As<IUnknown>(IID_IUnknown);
  return left && left == right;
}

// Another add-in's connection object, called by name. Its interface is not
// ours to know, so its names are looked up on every call.
class BoundAddInConnection final : public client::AddInConnection, public Bound {
 public:
  explicit BoundAddInConnection(com::ComPtr<IDispatch> object)
      : Bound(std::move(object), com::DispatchType::Unknown()) {}
  void OnConnection(const Ref<client::Application>& application, long connectMode,
                    const Ref<client::COMAddIn>& addInInst) override {
    Call("OnConnection", {ArgumentOf(application), connectMode, ArgumentOf(addInInst), com::ScopedVariant::EmptyArray()});
  }
  void OnDisconnection(long removeMode) override {
    Call("OnDisconnection", {removeMode, com::ScopedVariant::EmptyArray()});
  }
  void OnAddInsUpdate() override { Call("OnAddInsUpdate", {com::ScopedVariant::EmptyArray()}); }
  void OnStartupComplete() override { Call("OnStartupComplete", {com::ScopedVariant::EmptyArray()}); }
  void OnBeginShutdown() override { Call("OnBeginShutdown", {com::ScopedVariant::EmptyArray()}); }
};

class BoundAddIn final : public client::COMAddIn, public Bound {
 public:
  explicit BoundAddIn(com::ComPtr<IDispatch> object) : Bound(std::move(object), kAddInType) {}
  std::string ProgId() override { return Text("ProgId"); }
  std::string Description() override { return Text("Description"); }
  bool Connect() override { return Bool("Connect"); }
  Ref<client::AddInConnection> Object() override {
    const auto object = Get("Object").ToObject();
    if (!object) return nullptr;
    for (const Published& entry : PublishedObjects()) {
      if (SameObject(entry.face, object.get())) {
        if (auto own = entry.connection.lock()) return own;
      }
    }
    return std::make_shared<BoundAddInConnection>(object);
  }
  void Object(const Ref<client::AddInConnection>& value) override { Put("Object", com::ScopedVariant(FaceOf(value))); }

 private:
  // What the client can hold for a connection object: nothing, a bound
  // object's own, or a published face; anything else is not an automation
  // object (13).
  static com::ComPtr<IDispatch> FaceOf(const Ref<client::AddInConnection>& value) {
    if (!value) return nullptr;
    if (const auto* bound = dynamic_cast<const BoundObject*>(value.get())) return com::ComPtr<IDispatch>(bound->Object());
    for (const Published& entry : PublishedObjects()) {
      if (entry.key == value.get()) return com::ComPtr<IDispatch>(entry.face);
    }
    qorvane::Raise(qorvane::err::kTypeMismatch);
  }
};

class BoundAddIns final : public client::COMAddIns, public Bound {
 public:
  explicit BoundAddIns(com::ComPtr<IDispatch> object) : Bound(std::move(object), kAddInsType) {}
  long Count() override { return Long("Count"); }
  Ref<client::COMAddIn> Item(long index) override { return BindAddIn(Get("Item", {index})); }
};

}  // namespace

Ref<client::COMAddIns> BindAddIns(const com::ScopedVariant& object) { return MakeBound<BoundAddIns>(object); }
Ref<client::COMAddIn> BindAddIn(const com::ScopedVariant& object) { return MakeBound<BoundAddIn>(object); }

void PublishAddInObject(const std::shared_ptr<client::AddInConnection>& connection, IDispatch* face) {
  if (!connection || !face) return;
  WithdrawAddInObject(connection.get());
  PublishedObjects().push_back({connection, connection.get(), face});
}

void WithdrawAddInObject(const client::AddInConnection* connection) {
  std::erase_if(PublishedObjects(), [&](const Published& entry) { return entry.key == connection; });
}

}  // namespace binding
