// The host program's client: a mail client for the add-in DLL, as Outlook is
// one. The simulated client stands behind IDispatch (SimHost); the add-ins
// are the ones registered for the user, loaded from their DLLs the way the
// client loads them, and driven through their real interfaces:
//   Start  a main window opens (unless told otherwise); every add-in with
//          LoadBehavior 3 is created by its ProgID and connected
//          (OnConnection, ext_cm_Startup); a client that shows ribbons asks
//          each for its main window's ribbon; then OnStartupComplete
//   run    a real message loop: the add-ins' timers fire, keys typed into
//          the client's window arrive
//   Stop   the client shuts down (main windows close, OnBeginShutdown,
//          OnDisconnection), lets go of every add-in object, then asks each
//          DLL whether it may unload and frees it
//
// The simulated client's clock and time zone are the machine's at start, so
// that what the add-in computes on the real clock matches the store.
//
// Lifecycle: one at a time, on a thread in a COM apartment; objects it hands
// out are to be released before Stop (or its destruction).
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "sim/sim_client.h"
#include "tests/host/addin_loader.h"
#include "tests/host/client_window.h"
#include "tests/host/sim_host.h"

namespace host {

struct HostOptions {
  sim::SimOptions client = ClientOnThisMachine();
  bool mainWindow = true;
  // A client of version 14 on: it asks every add-in for its ribbons.
  bool askForRibbon = false;

  // Version 16, the machine's clock and time zone.
  static sim::SimOptions ClientOnThisMachine();
};

// What the add-ins' start-up cost the client: from the first OnConnection to
// the end of the last OnStartupComplete; loading the DLLs and creating the
// objects before is timed apart.
struct StartupCost {
  double loadMilliseconds = 0.0;
  double milliseconds = 0.0;
  std::int64_t invokes = 0;        // IDispatch::Invoke on the client's objects
  std::int64_t getIdsOfNames = 0;  // IDispatch::GetIDsOfNames on them
};

class HostOutlook {
 public:
  explicit HostOutlook(HostOptions options = {});
  ~HostOutlook();
  HostOutlook(const HostOutlook&) = delete;
  HostOutlook& operator=(const HostOutlook&) = delete;

  sim::SimClient& Client() { return client_; }
  SimHost& Host() { return host_; }

  void Start();
  void Stop();
  bool Running() const { return running_; }
  const StartupCost& Startup() const { return startup_; }
  // The ProgIDs of the add-ins loaded at start, in load order.
  std::vector<std::wstring> LoadedAddIns() const;
  // The connection object of a loaded add-in (null when not loaded).
  IDispatch* AddInObject(const std::wstring& progId) const;

  // The user opens a compose window on a new mail in Drafts; the first one
  // makes a ribbon client ask for the compose window's ribbon.
  struct Composed {
    client::Ref<client::MailItem> mail;
    client::Ref<client::Inspector> window;
  };
  Composed ComposeMail(const std::string& subject, const std::string& to = "someone@example.com");

  // What an add-in answered when asked for a ribbon ("" for none, or when
  // it was not asked).
  std::string RibbonXml(const std::wstring& progId, const std::string& ribbonId) const;
  // The user presses a ribbon button of the add-in: its onAction callback,
  // looked up by name on the add-in's IDispatch, is called with the control
  // (Id, Context = the window, Tag). Raises when the markup has no such
  // button or the add-in does not answer its callback.
  void ClickRibbonButton(const std::wstring& progId, const std::string& ribbonId, const std::string& buttonId,
                         IDispatch* context);

  // The client's message loop until done() or the time is up.
  bool RunUntil(const std::function<bool()>& done, DWORD timeoutMs);

  // After Stop: whether every DLL said it could unload, and the automation
  // objects the host made that are still held by anyone.
  bool AllModulesUnloadable() const { return allUnloadable_; }
  std::int64_t ObjectsStillHeld() const;

 private:
  struct LoadedAddIn {
    std::wstring progId;
    std::string description;
    std::unique_ptr<AddInModule> module;
    qorvane::com::ComPtr<IDispatch> object;
    std::map<std::string, std::string> ribbons;  // ribbon id -> markup
  };

  void AskForRibbon(LoadedAddIn& addIn, const std::string& ribbonId);

  HostOptions options_;
  sim::SimClient client_;
  SimHost host_{client_};
  std::unique_ptr<ClientWindow> window_;
  std::vector<LoadedAddIn> addIns_;
  std::int64_t objectsBefore_ = 0;
  StartupCost startup_;
  bool running_ = false;
  bool askedCompose_ = false;
  bool allUnloadable_ = false;
};

}  // namespace host
