// The client's object model bound over IDispatch: every client/ interface
// implemented by late-bound calls on the automation objects of the real
// client (and of the safe-mail library).
//
// Lifecycle: the add-in's connection hands WrapApplication the Application
// object it got from the client; everything else is reached from there. Each
// call that returns an object hands out a new wrapper holding one reference
// to the client's object, released with the last Ref; compare objects by
// what the client says (EntryID, FolderPath), never by wrapper identity.
// Calls run on the client's UI thread in a COM apartment; failures raise
// qorvane::RuntimeError as win/com/error.h numbers them.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include "client/client.h"
#include "win/com/com_ptr.h"

namespace binding {

client::Ref<client::Application> WrapApplication(IDispatch* application);

// Objects the client hands over outside the object model's own calls (an
// event's argument, a test's setup); null for a null object.
client::Ref<client::Item> WrapItem(IDispatch* item);
client::Ref<client::MAPIFolder> WrapFolder(IDispatch* folder);
client::Ref<client::Explorer> WrapExplorer(IDispatch* explorer);
client::Ref<client::Inspector> WrapInspector(IDispatch* inspector);
client::Ref<client::CommandBarControl> WrapControl(IDispatch* control);
client::Ref<client::COMAddIn> WrapAddIn(IDispatch* addIn);

// The add-in's own connection object and the automation object the client
// sees for it (its COM server's). While published, COMAddIn.Object(connection)
// hands the client that face, and COMAddIn.Object() gives the connection
// itself back for it. The face must stay alive until withdrawn.
void PublishAddInObject(const std::shared_ptr<client::AddInConnection>& connection, IDispatch* face);
void WithdrawAddInObject(const client::AddInConnection* connection);

// Every wrapper of this binding is a BoundObject over one client object.
class BoundObject {
 public:
  virtual ~BoundObject() = default;
  virtual IDispatch* Object() const = 0;
};

// The client's object behind a wrapper of this binding; raises 91 for null
// and 13 for an object of another implementation.
qorvane::com::ComPtr<IDispatch> DispatchOf(const void* wrapper, const BoundObject* bound);
template <class T>
qorvane::com::ComPtr<IDispatch> DispatchOf(const client::Ref<T>& wrapper) {
  return DispatchOf(wrapper.get(), dynamic_cast<const BoundObject*>(wrapper.get()));
}

// CreateObject("Redemption.SafeMailItem") by its ProgID: raises 429 when the
// library is not registered or cannot be created.
class ComSafeMailFactory final : public client::SafeMailFactory {
 public:
  client::Ref<client::SafeMailItem> CreateSafeMailItem() override;
};

}  // namespace binding
