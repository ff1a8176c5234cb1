// The class factory of "Qorvane.Connect", handed out by DllGetClassObject.
// Each object it makes is a new ConnectObject; LockServer keeps the module
// loaded. Lifecycle: reference counted, counts as one of the module's
// objects while it lives. Apartment-threaded.
#pragma once

#include <windows.h>
#include <unknwn.h>

namespace addin_com {

// The factory, answering iid (IClassFactory or IUnknown) for the caller.
HRESULT GetConnectClassFactory(REFIID iid, void** object) noexcept;

}  // namespace addin_com
