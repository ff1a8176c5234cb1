// A COM add-in's connection object as the simulated client holds it: the
// client's calls go to the add-in object through _IDTExtensibility2's vtable
// when it has that interface (as the client calls a loaded add-in), else by
// name over IDispatch (an object another add-in published), with the
// simulated objects handed over as the host's automation objects.
//
// A call the add-in answers with a failed HRESULT raises it here, so a test
// sees any failure that would have reached the client.
//
// Lifecycle: made over the add-in's object, which it holds until released.
// One thread, in a COM apartment.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include "client/addins.h"
#include "win/com/com_ptr.h"

namespace host {

class ComAddIn final : public client::AddInConnection {
 public:
  explicit ComAddIn(qorvane::com::ComPtr<IDispatch> object);

  IDispatch* Object() const { return object_.get(); }

  void OnConnection(const client::Ref<client::Application>& application, long connectMode,
                    const client::Ref<client::COMAddIn>& addInInst) override;
  void OnDisconnection(long removeMode) override;
  void OnAddInsUpdate() override;
  void OnStartupComplete() override;
  void OnBeginShutdown() override;

 private:
  qorvane::com::ComPtr<IDispatch> object_;
};

}  // namespace host
