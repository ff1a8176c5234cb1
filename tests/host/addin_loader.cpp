// The client's add-in list and loading an add-in's DLL by hand.
#include "tests/host/addin_loader.h"

#include "base/runtime_error.h"
#include "win/com/error.h"
#include "win/com/unique_handle.h"

namespace host {
namespace {

using qorvane::com::UniqueHkey;

UniqueHkey OpenKey(HKEY hive, const std::wstring& path) {
  UniqueHkey key;
  if (RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ, key.put()) != ERROR_SUCCESS) key.Reset();
  return key;
}

// A string value (name null: the default); nothing when missing or not text.
std::optional<std::wstring> ReadText(HKEY key, const wchar_t* name) {
  DWORD type = 0;
  DWORD bytes = 0;
  if (RegQueryValueExW(key, name, nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS) return std::nullopt;
  if (type != REG_SZ && type != REG_EXPAND_SZ) return std::nullopt;
  std::wstring text(bytes / sizeof(wchar_t) + 1, L'\0');
  if (RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()), &bytes) != ERROR_SUCCESS)
    return std::nullopt;
  text.resize(bytes / sizeof(wchar_t));
  while (!text.empty() && text.back() == L'\0') text.pop_back();
  return text;
}

DWORD ReadNumber(HKEY key, const wchar_t* name) {
  DWORD value = 0;
  DWORD bytes = sizeof value;
  DWORD type = 0;
  if (RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(&value), &bytes) != ERROR_SUCCESS ||
      type != REG_DWORD)
    return 0;
  return value;
}

std::optional<ClassEntry> FindClassIn(HKEY hive, const std::wstring& progId) {
  const std::wstring classes = L"Software\\Classes\\";
  const UniqueHkey progKey = OpenKey(hive, classes + progId + L"\\CLSID");
  if (!progKey) return std::nullopt;
  const auto clsidText = ReadText(progKey.get(), nullptr);
  ClassEntry entry;
  if (!clsidText || FAILED(CLSIDFromString(clsidText->c_str(), &entry.clsid))) return std::nullopt;
  const UniqueHkey server = OpenKey(hive, classes + L"CLSID\\" + *clsidText + L"\\InprocServer32");
  if (!server) return std::nullopt;
  entry.server = ReadText(server.get(), nullptr).value_or(L"");
  entry.threadingModel = ReadText(server.get(), L"ThreadingModel").value_or(L"");
  entry.perUser = hive == HKEY_CURRENT_USER;
  if (entry.server.empty()) return std::nullopt;
  return entry;
}

// An exported function of the module; null when it has none. The detour
// through void (*)() is the way to say the cast is meant.
template <class Function>
Function ExportOf(HMODULE module, const char* name) {
  return module ? reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(module, name))) : nullptr;
}

}  // namespace

std::vector<AddInEntry> RegisteredAddIns() {
  std::vector<AddInEntry> entries;
  const UniqueHkey list = OpenKey(HKEY_CURRENT_USER, kClientAddInsKey);
  if (!list) return entries;
  for (DWORD index = 0;; ++index) {
    wchar_t name[256];
    DWORD length = 256;
    if (RegEnumKeyExW(list.get(), index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    const UniqueHkey key = OpenKey(list.get(), name);
    if (!key) continue;
    entries.push_back({name, ReadText(key.get(), L"FriendlyName").value_or(L""),
                       ReadText(key.get(), L"Description").value_or(L""), ReadNumber(key.get(), L"LoadBehavior")});
  }
  return entries;
}

std::optional<ClassEntry> FindClass(const std::wstring& progId) {
  if (auto entry = FindClassIn(HKEY_CURRENT_USER, progId)) return entry;
  return FindClassIn(HKEY_LOCAL_MACHINE, progId);
}

AddInModule::AddInModule(const ClassEntry& entry) : entry_(entry) {
  module_ = LoadLibraryW(entry.server.c_str());
  if (!module_) qorvane::com::RaiseHresult(HRESULT_FROM_WIN32(GetLastError()));
}

AddInModule::~AddInModule() { Free(); }

qorvane::com::ComPtr<IDispatch> AddInModule::CreateObject() {
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const auto get = ExportOf<GetClassObject>(module_, "DllGetClassObject");
  if (!get) qorvane::com::RaiseHresult(CO_E_ERRORINDLL);
  qorvane::com::ComPtr<IClassFactory> factory;
  qorvane::com::CheckHresult(get(entry_.clsid, IID_IClassFactory, reinterpret_cast<void**>(factory.put())));
  qorvane::com::ComPtr<IDispatch> object;
  qorvane::com::CheckHresult(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(object.put())));
  return object;
}

bool AddInModule::CanUnloadNow() const {
  using CanUnload = HRESULT(STDAPICALLTYPE*)();
  const auto can = ExportOf<CanUnload>(module_, "DllCanUnloadNow");
  return can && can() == S_OK;
}

void AddInModule::Free() {
  if (module_) FreeLibrary(module_);
  module_ = nullptr;
}

}  // namespace host
