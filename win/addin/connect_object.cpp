// The add-in's COM object: its interfaces, members by name, and the entry
// guard every call from the client runs under.
#include "win/addin/connect_object.h"

#include <new>
#include <string>
#include <string_view>

#include "addin/connect.h"
#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "client/safe_mail.h"
#include "infra/error_trap.h"
#include "infra/settings.h"
#include "win/addin/module.h"
#include "win/addin/ribbon_xml.h"
#include "win/binding/binding.h"
#include "win/com/bstr.h"
#include "win/com/dispatch_args.h"
#include "win/com/query_interface.h"
#include "win/com/unique_handle.h"
#include "win/com/variant.h"
#include "win/com/wide_text.h"

namespace addin_com {
namespace {

namespace com = qorvane::com;

// The client's major version from which it shows the add-in's ribbon.
constexpr int kFirstRibbonVersion = 14;

// Connect's members by DISPID: _IDTExtensibility2's own, what the add-in
// publishes, and the ribbon's callbacks.
enum MemberId : DISPID {
  kNoExplorer = 101,
  kSendAndExit,
  kApp,
  kSendAll,
  kOnInspectorTimer,
  kOnTimer,
  kOnExitTimer,
  kRibbonQorvane = 201,
  kRibbonOptions,
  kRibbonAbout,
};

struct NamedMember {
  const char* name;
  DISPID id;
};

constexpr NamedMember kMembers[] = {
    {"OnConnection", office::kOnConnection},
    {"OnDisconnection", office::kOnDisconnection},
    {"OnAddInsUpdate", office::kOnAddInsUpdate},
    {"OnStartupComplete", office::kOnStartupComplete},
    {"OnBeginShutdown", office::kOnBeginShutdown},
    {"m_NoExplorer", kNoExplorer},
    {"m_bSendAndExit", kSendAndExit},
    {"m_app", kApp},
    {"SendAll", kSendAll},
    {"OnInspectorTimer", kOnInspectorTimer},
    {"OnTimer", kOnTimer},
    {"OnExitTimer", kOnExitTimer},
    {addin_ribbon::kOnQorvane, kRibbonQorvane},
    {addin_ribbon::kOnOptions, kRibbonOptions},
    {addin_ribbon::kOnAbout, kRibbonAbout},
};

constexpr const char* kGetCustomUIName = "GetCustomUI";

DISPID IdOfName(std::string_view name) {
  for (const NamedMember& member : kMembers) {
    if (qorvane::EqualsIgnoringCase(member.name, name)) return member.id;
  }
  return DISPID_UNKNOWN;
}

bool IsMember(DISPID id) {
  for (const NamedMember& member : kMembers) {
    if (member.id == id) return true;
  }
  return false;
}

bool IsExtensibility(DISPID id) { return id >= office::kOnConnection && id <= office::kOnBeginShutdown; }

// Names asked one at a time; named arguments are not known.
HRESULT AnswerNames(LPOLESTR* names, UINT count, DISPID* ids, DISPID (*lookup)(std::string_view)) {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  ids[0] = lookup(qorvane::Utf8FromWide(names[0]));
  for (UINT i = 1; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

// Every entry from the client: in the DLL's activation context, so that a
// dialog it shows gets the common controls of the DLL's manifest, and under
// a guard that logs whatever fails. The client always hears S_OK.
template <class Body>
HRESULT Entry(const char* label, Body&& body) noexcept {
  try {
    const com::ActivationScope context(addin_module::ActivationContext());
    qorvane::GuardEntry(label, std::forward<Body>(body));
  } catch (...) {
  }
  return S_OK;
}

client::SafeMailFactory& SafeMail() {
  static binding::ComSafeMailFactory factory;
  return factory;
}

int MajorVersion(const std::string& major) {
  int value = 0;
  for (char c : major) {
    if (c < '0' || c > '9' || value > 1000) return 0;
    value = value * 10 + (c - '0');
  }
  return value;
}

// An argument the caller may leave out.
com::ComPtr<IDispatch> ObjectArg(const com::DispatchArgs& args, std::size_t index) {
  return args.Has(index) ? args.Object(index) : nullptr;
}
long LongArg(const com::DispatchArgs& args, std::size_t index) { return args.Has(index) ? args.Long(index) : 0; }

}  // namespace

HRESULT ConnectObject::Create(REFIID iid, void** object) noexcept {
  if (!object) return E_POINTER;
  *object = nullptr;
  ConnectObject* made = nullptr;
  // What the connection needs first: nothing may escape into the client.
  Entry("Connect.Class_Initialize", [&] { made = new ConnectObject(); });
  if (!made) return E_OUTOFMEMORY;
  made->AddRef();
  const HRESULT hr = made->QueryInterface(iid, object);
  made->Release();
  return hr;
}

ConnectObject::ConnectObject() : connect_(Connect::Create()) { addin_module::ObjectCreated(); }

ConnectObject::~ConnectObject() {
  Entry("Connect.Class_Terminate", [&] {
    binding::WithdrawAddInObject(connect_.get());
    connect_.reset();
    client::SetSafeMailFactory(nullptr);
  });
  addin_module::ObjectDestroyed();
}

HRESULT ConnectObject::QueryInterface(REFIID iid, void** object) {
  IDispatch* self = this;
  return com::QueryInterfaceFrom(iid, object,
                                 {{&IID_IUnknown, self},
                                  {&IID_IDispatch, self},
                                  {&office::IID_IDTExtensibility2, self},
                                  {&office::IID_IRibbonExtensibility, &ribbon_}});
}

ULONG ConnectObject::AddRef() { return ++refs_; }

ULONG ConnectObject::Release() {
  const ULONG left = --refs_;
  if (left == 0) delete this;
  return left;
}

HRESULT ConnectObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT ConnectObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return E_NOTIMPL;
}

HRESULT ConnectObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  return AnswerNames(names, count, ids, &IdOfName);
}

HRESULT ConnectObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO*,
                              UINT*) {
  if (result) VariantInit(result);
  if (!IsMember(id)) return DISP_E_MEMBERNOTFOUND;
  DISPPARAMS none{};
  const com::DispatchArgs args(params ? *params : none);
  const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  com::ScopedVariant value;
  const auto custom = static_cast<SAFEARRAY**>(nullptr);
  switch (id) {
    case office::kOnConnection:
      return OnConnection(ObjectArg(args, 0).get(), static_cast<int>(LongArg(args, 1)), ObjectArg(args, 2).get(),
                          custom);
    case office::kOnDisconnection: return OnDisconnection(static_cast<int>(LongArg(args, 0)), custom);
    case office::kOnAddInsUpdate: return OnAddInsUpdate(custom);
    case office::kOnStartupComplete: return OnStartupComplete(custom);
    case office::kOnBeginShutdown: return OnBeginShutdown(custom);
    default: break;
  }
  Entry("Connect.Invoke", [&] {
    Connect& connect = *connect_;
    switch (id) {
      case kNoExplorer:
        if (put) connect.m_NoExplorer = args.PutValue().ToBool();
        else value = com::ScopedVariant(connect.m_NoExplorer);
        break;
      case kSendAndExit:
        if (put) connect.m_bSendAndExit = args.PutValue().ToBool();
        else value = com::ScopedVariant(connect.m_bSendAndExit);
        break;
      case kApp:
        if (put) {
          connect.m_app(binding::WrapApplication(args.PutValue().ToObject().get()));
        } else {
          value = connect.m_app() ? com::ScopedVariant(binding::DispatchOf(connect.m_app())) : com::ScopedVariant::Nothing();
        }
        break;
      case kSendAll: value = com::ScopedVariant(connect.SendAll()); break;
      case kOnInspectorTimer: connect.OnInspectorTimer(); break;
      case kOnTimer: connect.OnTimer(); break;
      case kOnExitTimer: connect.OnExitTimer(); break;
      case kRibbonQorvane: connect.RibbonQorvane_Click(); break;
      case kRibbonOptions: connect.RibbonOptions_Click(); break;
      case kRibbonAbout: connect.RibbonAbout_Click(); break;
      default: break;
    }
  });
  if (result) *result = value.Detach();
  return S_OK;
}

HRESULT ConnectObject::OnConnection(IDispatch* application, int connectMode, IDispatch* addInInst, SAFEARRAY**) {
  return Entry("Connect.AddinInstance_OnConnection", [&] {
    client::SetSafeMailFactory(&SafeMail());
    // Published before the connection runs: it hands itself to the client.
    binding::PublishAddInObject(connect_, static_cast<IDispatch*>(this));
    connect_->OnConnection(binding::WrapApplication(application), connectMode, binding::WrapAddIn(addInInst));
  });
}

HRESULT ConnectObject::OnDisconnection(int removeMode, SAFEARRAY**) {
  return Entry("Connect.AddinInstance_OnDisconnection", [&] { connect_->OnDisconnection(removeMode); });
}

HRESULT ConnectObject::OnAddInsUpdate(SAFEARRAY**) {
  return Entry("Connect.AddinInstance_OnAddInsUpdate", [&] { connect_->OnAddInsUpdate(); });
}

HRESULT ConnectObject::OnStartupComplete(SAFEARRAY**) {
  return Entry("AddinInstance_OnStartupComplete", [&] { connect_->OnStartupComplete(); });
}

HRESULT ConnectObject::OnBeginShutdown(SAFEARRAY**) {
  return Entry("Connect.AddinInstance_OnBeginShutdown", [&] { connect_->OnBeginShutdown(); });
}

// --- IRibbonExtensibility ----------------------------------------------------

HRESULT ConnectObject::RibbonFace::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  return AnswerNames(names, count, ids, [](std::string_view name) -> DISPID {
    if (qorvane::EqualsIgnoringCase(name, kGetCustomUIName)) return office::kGetCustomUI;
    const DISPID id = IdOfName(name);
    // The connection's members would clash with GetCustomUI here.
    return IsExtensibility(id) ? DISPID_UNKNOWN : id;
  });
}

HRESULT ConnectObject::RibbonFace::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params,
                                          VARIANT* result, EXCEPINFO* info, UINT* badArgument) {
  if (id != office::kGetCustomUI) {
    if (IsExtensibility(id)) {
      if (result) VariantInit(result);
      return DISP_E_MEMBERNOTFOUND;
    }
    return owner_.Invoke(id, iid, locale, flags, params, result, info, badArgument);
  }
  if (result) VariantInit(result);
  com::Bstr ribbonId;
  Entry("Connect.GetCustomUI", [&] {
    DISPPARAMS none{};
    const com::DispatchArgs args(params ? *params : none);
    if (args.Has(0)) ribbonId = com::Bstr(args.Text(0));
  });
  BSTR xml = nullptr;
  GetCustomUI(ribbonId.get(), &xml);
  if (result) {
    result->vt = VT_BSTR;
    result->bstrVal = xml;
  } else {
    SysFreeString(xml);
  }
  return S_OK;
}

HRESULT ConnectObject::RibbonFace::GetCustomUI(BSTR ribbonId, BSTR* ribbonXml) {
  if (ribbonXml) *ribbonXml = nullptr;
  return Entry("Connect.GetCustomUI", [&] {
    Connect& connect = *owner_.connect_;
    // Asked before the connection, or by a client before the ribbon's time:
    // no ribbon, the command bars stay.
    if (!ribbonXml || !connect.m_app()) return;
    if (MajorVersion(connect.GetOutlookMajorVersion()) < kFirstRibbonVersion) return;
    const std::string xml = addin_ribbon::CustomUI(com::Bstr::Utf8Of(ribbonId));
    if (xml.empty()) return;
    *ribbonXml = com::Bstr(xml).Detach();
    connect.UseRibbon();
  });
}

}  // namespace addin_com
