// The safe-mail stand-in's objects, class factory and registration.
#include "tests/host/safe_mail_class.h"

#include "base/runtime_error.h"
#include "tests/host/host_objects.h"
#include "win/com/query_interface.h"
#include "win/com/unique_handle.h"

namespace host {
namespace {

using Args = com::DispatchArgs;
using V = com::ScopedVariant;

// {741BEEFD-AEC0-4AFF-84AF-4F61D15F5526}
constexpr CLSID kClsid = {0x741BEEFD, 0xAEC0, 0x4AFF, {0x84, 0xAF, 0x4F, 0x61, 0xD1, 0x5F, 0x55, 0x26}};
constexpr wchar_t kClsidText[] = L"{741BEEFD-AEC0-4AFF-84AF-4F61D15F5526}";
constexpr wchar_t kProgId[] = L"Redemption.SafeMailItem";

const MemberTable<client::SafeRecipients> kRecipients = {
    {"Count", [](client::SafeRecipients& r, const Args&) { return V(r.Count()); }},
    {"ResolveAll", [](client::SafeRecipients& r, const Args&) { return V(r.ResolveAll()); }},
};

const MemberTable<client::SafeMailItem> kSafeMail = {
    {"Item", nullptr,
     [](client::SafeMailItem& s, const Args&, const V& value) {
       auto mail = std::dynamic_pointer_cast<client::MailItem>(Unwrap<client::Item>(value));
       if (!mail) qorvane::Raise(qorvane::err::kTypeMismatch);
       s.Item(mail);
     },
     true},
    {"Recipients", [](client::SafeMailItem& s, const Args&) { return Expose(s.Recipients(), kRecipients); }},
    {"Send", [](client::SafeMailItem& s, const Args&) { return s.Send(), NoValue(); }},
};

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(client::SafeMailFactory& factory) : factory_(factory) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return com::QueryInterfaceFrom(iid, object, {{&IID_IUnknown, this}, {&IID_IClassFactory, this}});
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --refs_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    try {
      const V item = Expose(factory_.CreateSafeMailItem(), kSafeMail);
      return item.ToObject()->QueryInterface(iid, object);
    } catch (const qorvane::RuntimeError&) {
      return CLASS_E_CLASSNOTAVAILABLE;
    }
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  client::SafeMailFactory& factory_;
  ULONG refs_ = 0;
};

bool SetDefault(HKEY hive, const std::wstring& path, const wchar_t* value) {
  com::UniqueHkey key;
  if (RegCreateKeyExW(hive, path.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, key.put(), nullptr) != ERROR_SUCCESS)
    return false;
  const auto bytes = static_cast<DWORD>((wcslen(value) + 1) * sizeof(wchar_t));
  return RegSetValueExW(key.get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value), bytes) == ERROR_SUCCESS;
}

}  // namespace

void SafeMailClass::Register() {
  if (cookie_ != 0) return;
  const com::ComPtr<IClassFactory> factory(new ClassFactory(factory_));
  if (FAILED(CoRegisterClassObject(kClsid, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_))) {
    cookie_ = 0;
    qorvane::Raise(qorvane::err::kCannotCreateObject, "Cannot register the safe-mail stand-in");
  }
  CLSID known{};
  if (SUCCEEDED(CLSIDFromProgID(kProgId, &known))) return;  // somebody's keys: use them, leave them
  const std::wstring classes = L"Software\\Classes\\";
  for (HKEY hive : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
    if (SetDefault(hive, classes + kProgId + L"\\CLSID", kClsidText))
      madeKeys_.emplace_back(hive, classes + kProgId);
    if (SetDefault(hive, classes + L"CLSID\\" + kClsidText + L"\\ProgID", kProgId))
      madeKeys_.emplace_back(hive, classes + L"CLSID\\" + kClsidText);
  }
}

void SafeMailClass::Unregister() {
  if (cookie_ != 0) CoRevokeClassObject(cookie_);
  cookie_ = 0;
  for (const auto& [hive, path] : madeKeys_) RegDeleteTreeW(hive, path.c_str());
  madeKeys_.clear();
}

}  // namespace host
