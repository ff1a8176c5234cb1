// Finding and loading COM add-ins the way the client does at start-up: the
// entries of HKCU\Software\Microsoft\Office\Outlook\Addins, and for one to
// load, its class by ProgID, its DLL, its class object and a new object.
//
// The class is looked up per user first (HKCU\Software\Classes) and then
// for the machine (HKLM\Software\Classes), as Windows merges them for the
// client; wine's COM reads only the machine's, so the host does the lookup
// and the DLL's DllGetClassObject call itself instead of CoCreateInstance.
//
// Lifecycle: an AddInModule keeps its DLL loaded until Free (or its
// destruction); objects made from it must be released before. UI thread,
// in a COM apartment.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <optional>
#include <string>
#include <vector>

#include "win/com/com_ptr.h"

namespace host {

inline constexpr wchar_t kClientAddInsKey[] = L"Software\\Microsoft\\Office\\Outlook\\Addins";

// One entry of the client's add-in list.
struct AddInEntry {
  std::wstring progId;
  std::wstring friendlyName;
  std::wstring description;
  DWORD loadBehavior = 0;
};

// Every entry, in the registry's order; values missing read as empty or 0.
std::vector<AddInEntry> RegisteredAddIns();

// A class as registration describes it.
struct ClassEntry {
  CLSID clsid{};
  std::wstring server;          // InprocServer32's default value
  std::wstring threadingModel;  // InprocServer32's ThreadingModel
  bool perUser = false;         // found under HKCU
};

// The class of a ProgID, per user first; nothing when neither knows it.
std::optional<ClassEntry> FindClass(const std::wstring& progId);

class AddInModule {
 public:
  // Loads the class's DLL; raises (a RuntimeError with the HRESULT) when it
  // cannot be loaded or has no DllGetClassObject.
  explicit AddInModule(const ClassEntry& entry);
  ~AddInModule();
  AddInModule(const AddInModule&) = delete;
  AddInModule& operator=(const AddInModule&) = delete;

  // A new object of the class, through its class factory (raises as above).
  qorvane::com::ComPtr<IDispatch> CreateObject();
  // What the DLL's DllCanUnloadNow says: true for S_OK.
  bool CanUnloadNow() const;
  // Frees the DLL; the module is loaded no more afterwards.
  void Free();
  bool Loaded() const { return module_ != nullptr; }

 private:
  ClassEntry entry_;
  HMODULE module_ = nullptr;
};

}  // namespace host
