// The client's COM add-ins list (Application.COMAddIns), its entries, and
// what an entry's Object holds.
//
// An entry's Object is an automation object. One a COM add-in published
// (its own IDispatch) is kept in the simulated entry as a ComAddIn and given
// back as that same IDispatch; a connection object of the simulated client's
// own world (a test's C++ add-in) is shown as an automation object whose
// members are _IDTExtensibility2's, by their DISPIDs 1..5.
#include "base/runtime_error.h"
#include "tests/host/com_addin.h"
#include "tests/host/host_objects.h"

namespace host {
namespace {

using Args = com::DispatchArgs;
using V = com::ScopedVariant;
using Connection = client::AddInConnection;

const MemberTable<Connection> kConnection = {
    {"OnConnection", [](Connection& c, const Args& a) {
       return c.OnConnection(Unwrap<client::Application>(a.At(0)), a.Long(1), Unwrap<client::COMAddIn>(a.At(2))),
              NoValue();
     }},
    {"OnDisconnection", [](Connection& c, const Args& a) { return c.OnDisconnection(a.Long(0)), NoValue(); }},
    {"OnAddInsUpdate", [](Connection& c, const Args&) { return c.OnAddInsUpdate(), NoValue(); }},
    {"OnStartupComplete", [](Connection& c, const Args&) { return c.OnStartupComplete(), NoValue(); }},
    {"OnBeginShutdown", [](Connection& c, const Args&) { return c.OnBeginShutdown(), NoValue(); }},
};

V ExposeConnection(const Ref<Connection>& connection) {
  if (const auto* com = dynamic_cast<const ComAddIn*>(connection.get())) return V(com->Object());
  return Expose(connection, kConnection);
}

Ref<Connection> ConnectionOf(const V& value) {
  const auto object = value.ToObject();
  if (!object) return nullptr;
  try {
    return Unwrap<Connection>(object.get());
  } catch (const qorvane::RuntimeError&) {
    return std::make_shared<ComAddIn>(object);  // not one of ours: an add-in's own
  }
}

const MemberTable<client::COMAddIn> kAddIn = {
    {"ProgId", [](client::COMAddIn& a, const Args&) { return V(a.ProgId()); }},
    {"Description", [](client::COMAddIn& a, const Args&) { return V(a.Description()); }},
    {"Connect", [](client::COMAddIn& a, const Args&) { return V(a.Connect()); }},
    {"Object", [](client::COMAddIn& a, const Args&) { return ExposeConnection(a.Object()); },
     [](client::COMAddIn& a, const Args&, const V& value) { a.Object(ConnectionOf(value)); }},
};

const MemberTable<client::COMAddIns> kAddIns = {
    {"Count", [](client::COMAddIns& a, const Args&) { return V(a.Count()); }},
    {"Item", [](client::COMAddIns& a, const Args& args) { return ExposeAddIn(a.Item(args.Long(0))); }},
};

}  // namespace

com::ScopedVariant ExposeAddIns(const Ref<client::COMAddIns>& addIns) { return Expose(addIns, kAddIns); }
com::ScopedVariant ExposeAddIn(const Ref<client::COMAddIn>& addIn) { return Expose(addIn, kAddIn); }

}  // namespace host
