// Event sinks and their connections.
#include "win/com/event_sink.h"

#include <ocidl.h>

#include <utility>

#include "base/runtime_error.h"
#include "win/com/error.h"
#include "win/com/query_interface.h"

namespace qorvane::com {

HRESULT EventSink::QueryInterface(REFIID iid, void** object) {
  IDispatch* self = this;
  return QueryInterfaceFrom(iid, object, {{&IID_IUnknown, self}, {&IID_IDispatch, self}, {&events_, self}});
}

ULONG EventSink::Release() {
  const ULONG left = --refs_;
  if (left == 0) delete this;
  return left;
}

HRESULT EventSink::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT EventSink::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return E_NOTIMPL;
}

HRESULT EventSink::GetIDsOfNames(REFIID, LPOLESTR*, UINT count, LCID, DISPID* ids) {
  for (UINT i = 0; ids && i < count; ++i) ids[i] = DISPID_UNKNOWN;
  return DISP_E_UNKNOWNNAME;
}

HRESULT EventSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO*, UINT*) {
  if (result) VariantInit(result);
  if (detached_ || !params) return S_OK;
  // The source is the client: whatever goes wrong in a handler stays here.
  const ComPtr<EventSink> keepAlive(this);
  try {
    OnEvent(id, DispatchArgs(*params));
  } catch (...) {
  }
  return S_OK;
}

Connection::Connection(Connection&& other) noexcept
    : point_(std::move(other.point_)), sink_(std::move(other.sink_)), cookie_(std::exchange(other.cookie_, 0)) {}

Connection& Connection::operator=(Connection&& other) noexcept {
  if (this != &other) {
    Disconnect();
    point_ = std::move(other.point_);
    sink_ = std::move(other.sink_);
    cookie_ = std::exchange(other.cookie_, 0);
  }
  return *this;
}

void Connection::Disconnect() {
  if (sink_) {
    sink_->Detach();
    // A source already gone (the client shutting down) may refuse; nothing
    // is left to undo then.
    point_->Unadvise(cookie_);
  }
  point_.Reset();
  sink_.Reset();
  cookie_ = 0;
}

Connection Connect(IUnknown* source, const ComPtr<EventSink>& sink) {
  if (!source || !sink) Raise(err::kObjectNotSet);
  const auto container = ComPtr<IUnknown>(source).As<IConnectionPointContainer>(IID_IConnectionPointContainer);
  if (!container) RaiseHresult(E_NOINTERFACE, "The object raises no events");
  Connection connection;
  CheckHresult(container->FindConnectionPoint(sink->Events(), connection.point_.put()));
  CheckHresult(connection.point_->Advise(static_cast<IDispatch*>(sink.get()), &connection.cookie_));
  connection.sink_ = sink;
  return connection;
}

}  // namespace qorvane::com
