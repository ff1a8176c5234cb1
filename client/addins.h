// The add-in connection: what the client calls on an add-in it loads
// (IDTExtensibility2), and the client's list of COM add-ins. See
// client/ref.h for the lifecycle contract.
//
// The client creates the add-in's connection object, calls OnConnection with
// its Application and the add-in's own COMAddIn entry, OnStartupComplete
// once its windows are up, OnBeginShutdown and OnDisconnection when it lets
// the add-in go, and then releases the object. All on its UI thread; an
// add-in lets no error out of these calls.
#pragma once

#include <string>

#include "client/ref.h"

namespace client {

// ext_ConnectMode
inline constexpr long ext_cm_AfterStartup = 0;
inline constexpr long ext_cm_Startup = 1;
// ext_DisconnectMode
inline constexpr long ext_dm_HostShutdown = 0;
inline constexpr long ext_dm_UserClosed = 1;

class AddInConnection {
 public:
  virtual ~AddInConnection() = default;
  virtual void OnConnection(const Ref<Application>& application, long connectMode,
                            const Ref<COMAddIn>& addInInst) = 0;
  virtual void OnDisconnection(long removeMode) = 0;
  virtual void OnAddInsUpdate() = 0;
  virtual void OnStartupComplete() = 0;
  virtual void OnBeginShutdown() = 0;
};

// One entry of the client's COM add-ins list.
class COMAddIn {
 public:
  virtual ~COMAddIn() = default;
  virtual std::string ProgId() = 0;
  virtual std::string Description() = 0;
  // Whether the add-in is loaded now.
  virtual bool Connect() = 0;
  // What the add-in publishes to other automation clients; null when nothing.
  virtual Ref<AddInConnection> Object() = 0;
  virtual void Object(const Ref<AddInConnection>& value) = 0;
};

class COMAddIns {
 public:
  virtual ~COMAddIns() = default;
  virtual long Count() = 0;
  // 1-based.
  virtual Ref<COMAddIn> Item(long index) = 0;
};

}  // namespace client
