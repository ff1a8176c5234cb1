// Application (with ItemSend) and NameSpace.
#include "base/runtime_error.h"
#include "tests/host/host_objects.h"

namespace host {
namespace {

using Args = com::DispatchArgs;
constexpr long olApplication = 0;
constexpr long olNamespace = 1;

const MemberTable<client::NameSpace> kNameSpace = {
    {"Class", [](auto&, auto&) { return com::ScopedVariant(olNamespace); }},
    {"GetDefaultFolder", [](client::NameSpace& s, const Args& a) { return ExposeFolder(s.GetDefaultFolder(a.Long(0))); }},
    {"SyncObjects", [](client::NameSpace& s, const Args&) { return ExposeSyncObjects(s.SyncObjects()); }},
};

const MemberTable<client::Application> kApplication = {
    {"Class", [](auto&, auto&) { return com::ScopedVariant(olApplication); }},
    {"Version", [](client::Application& a, const Args&) { return com::ScopedVariant(a.Version()); }},
    {"GetNamespace", [](client::Application& a, const Args& args) { return ExposeNameSpace(a.GetNamespace(args.Text(0))); }},
    {"Session", [](client::Application& a, const Args&) { return ExposeNameSpace(a.Session()); }},
    {"Explorers", [](client::Application& a, const Args&) { return ExposeExplorers(a.Explorers()); }},
    {"Inspectors", [](client::Application& a, const Args&) { return ExposeInspectors(a.Inspectors()); }},
    {"ActiveExplorer", [](client::Application& a, const Args&) { return ExposeExplorer(a.ActiveExplorer()); }},
    {"ActiveInspector", [](client::Application& a, const Args&) { return ExposeInspector(a.ActiveInspector()); }},
    {"CreateItem", [](client::Application& a, const Args& args) { return ExposeItem(a.CreateItem(args.Long(0))); }},
    {"COMAddIns", [](client::Application& a, const Args&) { return ExposeAddIns(a.COMAddIns()); }},
};

class HostApplication final : public EventSource<client::Application, client::ApplicationEvents> {
 public:
  explicit HostApplication(Ref<client::Application> application)
      : EventSource(std::move(application), kApplication, events::kApplication) {}

  void ItemSend(const Ref<client::Item>& item, bool& cancel) override {
    VARIANT_BOOL flag = cancel ? VARIANT_TRUE : VARIANT_FALSE;
    RaiseEvent(0xF002, {ExposeItem(item), com::ScopedVariant::BoolRef(&flag)});
    cancel = flag != VARIANT_FALSE;
  }
};

}  // namespace

Ref<client::Application>& HostedApplication() {
  static Ref<client::Application> application;
  return application;
}

com::ScopedVariant ExposeApplication(const Ref<client::Application>& application) {
  return ExposeAs<HostApplication>(application);
}

com::ScopedVariant ExposeNameSpace(const Ref<client::NameSpace>& session) { return Expose(session, kNameSpace); }

}  // namespace host
