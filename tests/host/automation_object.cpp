// The automation object base: name lookup, Invoke, connection points.
#include "tests/host/automation_object.h"

#include <olectl.h>

#include <algorithm>

#include "base/runtime_error.h"
#include "win/com/dispatch.h"
#include "win/com/error.h"
#include "win/com/query_interface.h"
#include "win/com/wide_text.h"

namespace host {

namespace {

// {7D0F3B52-3C7E-4C55-9C1A-6B1E2F0A9D11}: asks a host object for itself.
constexpr IID kIidSimObject = {0x7D0F3B52, 0x3C7E, 0x4C55, {0x9C, 0x1A, 0x6B, 0x1E, 0x2F, 0x0A, 0x9D, 0x11}};

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

HostCounts& Counts() {
  static HostCounts counts;
  return counts;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return Lower(x) == Lower(y); });
}

void CheckMember(DISPID id, std::size_t count) {
  if (id < 1 || static_cast<std::size_t>(id) > count) qorvane::Raise(qorvane::err::kObjectDoesntSupport);
}

void CheckPut(bool hasPut, bool byReference, WORD flags) {
  if (!hasPut) qorvane::Raise(qorvane::err::kObjectDoesntSupport);
  // An object property is set with Set (PUTREF), as the type library says.
  if (byReference && !(flags & DISPATCH_PROPERTYPUTREF)) qorvane::Raise(qorvane::err::kObjectNotSet);
}

void CheckGet(bool hasGet) {
  if (!hasGet) qorvane::Raise(qorvane::err::kObjectDoesntSupport);
}

// One event interface of an object: the connected sinks, by cookie.
class ConnectionPoint final : public IConnectionPoint {
 public:
  ConnectionPoint(AutomationObject& owner, const IID& events, std::function<void(bool)> connect)
      : owner_(owner), events_(events), connect_(std::move(connect)) {}

  const IID& Events() const { return events_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return com::QueryInterfaceFrom(iid, object, {{&IID_IUnknown, this}, {&IID_IConnectionPoint, this}});
  }
  // The point lives as long as its object: references count on the object.
  ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override {
    if (!iid) return E_POINTER;
    *iid = events_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override {
    if (!container) return E_POINTER;
    *container = &owner_;
    owner_.AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
    if (!sink || !cookie) return E_POINTER;
    // As the client does: the sink must say it implements the events.
    com::ComPtr<IUnknown> events;
    if (FAILED(sink->QueryInterface(events_, reinterpret_cast<void**>(events.put())))) return CONNECT_E_CANNOTCONNECT;
    const auto dispatch = com::ComPtr<IUnknown>(sink).As<IDispatch>(IID_IDispatch);
    if (!dispatch) return CONNECT_E_CANNOTCONNECT;
    sinks_.emplace_back(++lastCookie_, dispatch);
    *cookie = lastCookie_;
    if (sinks_.size() == 1 && connect_) connect_(true);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    const auto found = std::find_if(sinks_.begin(), sinks_.end(), [&](const auto& s) { return s.first == cookie; });
    if (found == sinks_.end()) return CONNECT_E_NOCONNECTION;
    sinks_.erase(found);
    if (sinks_.empty() && connect_) connect_(false);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override {
    if (connections) *connections = nullptr;
    return E_NOTIMPL;
  }

  // Raises an event; a sink that unadvises while it runs is skipped after,
  // and a sink's failure does not keep the others from hearing it.
  void Raise(DISPID id, const std::vector<com::ScopedVariant>& args) {
    const auto now = sinks_;
    for (const auto& [cookie, sink] : now) {
      if (std::none_of(sinks_.begin(), sinks_.end(), [&](const auto& s) { return s.first == cookie; })) continue;
      try {
        com::InvokeById(sink.get(), id, DISPATCH_METHOD, args);
      } catch (const qorvane::RuntimeError&) {
      }
    }
  }

 private:
  AutomationObject& owner_;
  const IID events_;
  std::function<void(bool)> connect_;
  std::vector<std::pair<DWORD, com::ComPtr<IDispatch>>> sinks_;
  DWORD lastCookie_ = 0;
};

AutomationObject::AutomationObject() {
  ++Counts().objectsMade;
  ++Counts().objectsLive;
}

AutomationObject::~AutomationObject() { --Counts().objectsLive; }

HRESULT AutomationObject::QueryInterface(REFIID iid, void** object) {
  IDispatch* self = this;
  // Only an object that raises events is a connection point container.
  const IID* container = points_.empty() ? nullptr : &IID_IConnectionPointContainer;
  return com::QueryInterfaceFrom(iid, object,
                                 {{&IID_IUnknown, self}, {&IID_IDispatch, self}, {&kIidSimObject, self},
                                  {container, static_cast<IConnectionPointContainer*>(this)}});
}

ULONG AutomationObject::Release() {
  const ULONG left = --refs_;
  if (left == 0) delete this;
  return left;
}

HRESULT AutomationObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT AutomationObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return E_NOTIMPL;
}

HRESULT AutomationObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  ++Counts().getIdsOfNames;
  if (!names || !ids || count == 0) return E_INVALIDARG;
  // Only the member's own name is known; named arguments are not.
  ids[0] = IdOf(qorvane::Utf8FromWide(names[0]));
  for (UINT i = 1; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT AutomationObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                 EXCEPINFO* info, UINT*) {
  ++Counts().invokes;
  if (!params) return E_INVALIDARG;
  const com::ComPtr<IDispatch> keepAlive(static_cast<IDispatch*>(this));
  try {
    com::ScopedVariant value = Run(id, flags, com::DispatchArgs(*params));
    if (result) *result = value.Detach();
    return S_OK;
  } catch (const qorvane::RuntimeError& error) {
    return com::ReportError(error, info, "Outlook");
  } catch (const std::exception& error) {
    return com::ReportError(qorvane::RuntimeError(qorvane::err::kInternal, error.what()), info, "Outlook");
  }
}

HRESULT AutomationObject::EnumConnectionPoints(IEnumConnectionPoints** points) {
  if (points) *points = nullptr;
  return E_NOTIMPL;
}

HRESULT AutomationObject::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  for (const auto& candidate : points_) {
    if (IsEqualIID(candidate->Events(), iid)) {
      *point = candidate.get();
      AddRef();
      return S_OK;
    }
  }
  return CONNECT_E_NOCONNECTION;
}

void AutomationObject::AddEvents(const IID& events, std::function<void(bool)> connect) {
  points_.push_back(std::make_unique<ConnectionPoint>(*this, events, std::move(connect)));
}

void AutomationObject::Raise(const IID& events, DISPID id, std::vector<com::ScopedVariant> args) {
  const com::ComPtr<IDispatch> keepAlive(static_cast<IDispatch*>(this));
  for (const auto& point : points_) {
    if (IsEqualIID(point->Events(), events)) point->Raise(id, args);
  }
}

const void* TargetOf(IDispatch* object, const std::type_info& type) {
  if (!object) qorvane::Raise(qorvane::err::kObjectNotSet);
  com::ComPtr<IDispatch> self;
  if (FAILED(object->QueryInterface(kIidSimObject, reinterpret_cast<void**>(self.put()))))
    qorvane::Raise(qorvane::err::kTypeMismatch);
  const void* target = static_cast<AutomationObject*>(self.get())->Target(type);
  if (!target) qorvane::Raise(qorvane::err::kTypeMismatch);
  return target;
}

}  // namespace host
