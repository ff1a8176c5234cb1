// The simulated client behind IDispatch, as the real client shows itself to
// a COM add-in: an "Outlook.Application" object whose members, events and
// objects are the simulated client's, and the safe-mail class
// "Redemption.SafeMailItem" registered for the process.
//
// Lifecycle: a test (or a host program that loads the add-in) makes one
// SimHost over a SimClient, on a thread in a COM apartment, and keeps it
// while the add-in runs; destroying it unregisters the safe-mail class.
// Objects handed out stay usable while the SimClient lives.
//
// It counts what callers ask: GetIDsOfNames and Invoke separately, and the
// automation objects made and still alive, for performance and teardown
// checks.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include "client/client.h"
#include "sim/sim_client.h"
#include "tests/host/automation_object.h"
#include "tests/host/safe_mail_class.h"

namespace host {

class SimHost {
 public:
  explicit SimHost(sim::SimClient& client);
  ~SimHost();
  SimHost(const SimHost&) = delete;
  SimHost& operator=(const SimHost&) = delete;

  // A new Application object, as the client passes it to OnConnection.
  com::ComPtr<IDispatch> Application();

  // The automation object over one simulated object (what the client would
  // hand the add-in for it), and back.
  com::ComPtr<IDispatch> Expose(const Ref<client::Item>& item);
  com::ComPtr<IDispatch> Expose(const Ref<client::Explorer>& explorer);
  com::ComPtr<IDispatch> Expose(const Ref<client::Inspector>& inspector);
  template <class Target>
  static Ref<Target> SimObjectOf(IDispatch* object) {
    return Unwrap<Target>(object);
  }

  // Installs or uninstalls the safe-mail library, for the simulated client
  // and for COM (error 429 on creation when uninstalled).
  void SetSafeMailInstalled(bool installed);

  static const HostCounts& Calls() { return Counts(); }
  static void ResetCalls();

 private:
  sim::SimClient& client_;
  SafeMailClass safeMail_;
};

}  // namespace host
