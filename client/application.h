// The client application and its session. See client/ref.h for the
// lifecycle contract.
#pragma once

#include <string>

#include "client/ref.h"

namespace client {

// Events of the application (ApplicationEvents_11).
class ApplicationEvents {
 public:
  virtual ~ApplicationEvents() = default;
  virtual void ItemSend(const Ref<client::Item>& item, bool& cancel) {}
};

class Application {
 public:
  virtual ~Application() = default;
  // Dotted version, "16.0.17928.20114".
  virtual std::string Version() = 0;
  // Only "MAPI" is known.
  virtual Ref<NameSpace> GetNamespace(const std::string& type) = 0;
  virtual Ref<NameSpace> Session() = 0;
  virtual Ref<client::Explorers> Explorers() = 0;
  virtual Ref<client::Inspectors> Inspectors() = 0;
  // Null when there is none.
  virtual Ref<Explorer> ActiveExplorer() = 0;
  virtual Ref<Inspector> ActiveInspector() = 0;
  // olMailItem or olAppointmentItem; a new unsaved item.
  virtual Ref<client::Item> CreateItem(long itemType) = 0;
  virtual Ref<EventSubscription> Advise(ApplicationEvents* sink) = 0;
  // The client's COM add-ins, loaded or not.
  virtual Ref<client::COMAddIns> COMAddIns() { RaiseNotSupported(); }
  // Keystrokes to the client's foreground window, in the runtime's SendKeys
  // notation ("%{F9}" is Alt+F9).
  virtual void SendKeys(const std::string& keys) { RaiseNotSupported(); }
};

class NameSpace {
 public:
  virtual ~NameSpace() = default;
  virtual Ref<MAPIFolder> GetDefaultFolder(long folderType) = 0;
  virtual Ref<client::SyncObjects> SyncObjects() = 0;
};

// The add-in's connection to one client: set when the client connects the
// add-in, reset when it lets go. Logic reaches the client only through it.
Ref<Application> CurrentApplication();
void SetCurrentApplication(Ref<Application> application);

}  // namespace client
