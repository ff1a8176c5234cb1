// A stand-in for the safe-mail library: the class "Redemption.SafeMailItem"
// registered for this process, whose objects send through the simulated
// client's safe-mail factory.
//
// Registration: CoRegisterClassObject for the class, plus the ProgID and
// CLSID keys that CLSIDFromProgID reads (under HKLM\Software\Classes, the
// only classes wine's COM reads, and HKCU\Software\Classes for Windows),
// made only where no such class is registered already and removed again.
#pragma once

#include <windows.h>
#include <objbase.h>

#include <string>
#include <vector>

#include "client/safe_mail.h"

namespace host {

class SafeMailClass {
 public:
  explicit SafeMailClass(client::SafeMailFactory& factory) : factory_(factory) {}
  SafeMailClass(const SafeMailClass&) = delete;
  SafeMailClass& operator=(const SafeMailClass&) = delete;
  ~SafeMailClass() { Unregister(); }

  // Installs or uninstalls the class for the process.
  void Register();
  void Unregister();
  bool Registered() const { return cookie_ != 0; }

 private:
  client::SafeMailFactory& factory_;
  DWORD cookie_ = 0;
  // The keys this class made, to remove: (hive, path below it).
  std::vector<std::pair<HKEY, std::wstring>> madeKeys_;
};

}  // namespace host
