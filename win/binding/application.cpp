// Application and NameSpace, and the binding's entry points.
#include "base/runtime_error.h"
#include "win/binding/bound_object.h"
#include "win/binding/event_subscriptions.h"
#include "win/binding/send_keys.h"

namespace binding {
namespace {

com::DispatchType kApplicationType("Application");
com::DispatchType kNameSpaceType("NameSpace");

class BoundApplication final : public client::Application, public Bound {
 public:
  explicit BoundApplication(com::ComPtr<IDispatch> object) : Bound(std::move(object), kApplicationType) {}
  std::string Version() override { return Text("Version"); }
  Ref<client::NameSpace> GetNamespace(const std::string& type) override {
    return BindNameSpace(Get("GetNamespace", {type}));
  }
  Ref<client::NameSpace> Session() override { return BindNameSpace(Get("Session")); }
  Ref<client::Explorers> Explorers() override { return BindExplorers(Get("Explorers")); }
  Ref<client::Inspectors> Inspectors() override { return BindInspectors(Get("Inspectors")); }
  Ref<client::Explorer> ActiveExplorer() override { return BindExplorer(Get("ActiveExplorer")); }
  Ref<client::Inspector> ActiveInspector() override { return BindInspector(Get("ActiveInspector")); }
  Ref<client::Item> CreateItem(long itemType) override { return BindItem(Get("CreateItem", {itemType})); }
  Ref<client::EventSubscription> Advise(client::ApplicationEvents* sink) override {
    return binding::Advise(Object(), sink);
  }
  Ref<client::COMAddIns> COMAddIns() override { return BindAddIns(Get("COMAddIns")); }
  // The object model has no keystrokes: they go to whichever window has the
  // focus, as the runtime's SendKeys sends them.
  void SendKeys(const std::string& keys) override { SendKeysToForeground(keys); }
};

class BoundNameSpace final : public client::NameSpace, public Bound {
 public:
  explicit BoundNameSpace(com::ComPtr<IDispatch> object) : Bound(std::move(object), kNameSpaceType) {}
  Ref<client::MAPIFolder> GetDefaultFolder(long folderType) override {
    return BindFolder(Get("GetDefaultFolder", {folderType}));
  }
  Ref<client::SyncObjects> SyncObjects() override { return BindSyncObjects(Get("SyncObjects")); }
};

}  // namespace

Ref<client::NameSpace> BindNameSpace(const com::ScopedVariant& object) { return MakeBound<BoundNameSpace>(object); }

client::Ref<client::Application> WrapApplication(IDispatch* application) {
  return MakeBound<BoundApplication>(com::ScopedVariant(application));
}

client::Ref<client::Item> WrapItem(IDispatch* item) { return BindItem(com::ScopedVariant(item)); }
client::Ref<client::MAPIFolder> WrapFolder(IDispatch* folder) { return BindFolder(com::ScopedVariant(folder)); }
client::Ref<client::Explorer> WrapExplorer(IDispatch* explorer) { return BindExplorer(com::ScopedVariant(explorer)); }
client::Ref<client::Inspector> WrapInspector(IDispatch* inspector) {
  return BindInspector(com::ScopedVariant(inspector));
}
client::Ref<client::CommandBarControl> WrapControl(IDispatch* control) {
  return BindControl(com::ScopedVariant(control));
}
client::Ref<client::COMAddIn> WrapAddIn(IDispatch* addIn) { return BindAddIn(com::ScopedVariant(addIn)); }

com::ComPtr<IDispatch> DispatchOf(const void* wrapper, const BoundObject* bound) {
  if (!wrapper) qorvane::Raise(qorvane::err::kObjectNotSet);
  if (!bound) qorvane::Raise(qorvane::err::kTypeMismatch);
  return com::ComPtr<IDispatch>(bound->Object());
}

}  // namespace binding
