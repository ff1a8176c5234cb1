// Receiving an automation object's events through its connection point.
//
// A sink is a small COM object answering IUnknown, IDispatch and the event
// interface (the source queries for the event DIID before it connects), and
// handing each Invoke to OnEvent by DISPID. Connect() advises it at the
// source; the Connection it returns unadvises when destroyed, after which
// the sink ignores any event still on its way. An exception thrown by
// OnEvent ends at the sink: the source never sees a failure from us.
//
// Lifecycle: created by whoever subscribes, reference counted (the source
// holds a reference while connected); one thread, the client's UI thread.
#pragma once

#include <windows.h>
#include <oaidl.h>
#include <ocidl.h>

#include "win/com/com_ptr.h"
#include "win/com/dispatch_args.h"

namespace qorvane::com {

class EventSink : public IDispatch {
 public:
  explicit EventSink(const IID& events) : events_(events) {}
  EventSink(const EventSink&) = delete;
  EventSink& operator=(const EventSink&) = delete;

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() override;
  // IDispatch: events come by DISPID only.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result,
                                   EXCEPINFO*, UINT*) override;

  const IID& Events() const { return events_; }
  // No more events reach OnEvent (the connection is going away).
  void Detach() { detached_ = true; }

 protected:
  virtual ~EventSink() = default;
  // One event; events this sink does not handle are ignored.
  virtual void OnEvent(DISPID id, const DispatchArgs& args) = 0;

 private:
  const IID events_;
  ULONG refs_ = 0;
  bool detached_ = false;
};

// An advised sink. Move-only; unadvises and detaches the sink on destruction.
class Connection {
 public:
  Connection() = default;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  Connection(Connection&& other) noexcept;
  Connection& operator=(Connection&& other) noexcept;
  ~Connection() { Disconnect(); }

  void Disconnect();
  explicit operator bool() const { return static_cast<bool>(point_); }

 private:
  friend Connection Connect(IUnknown* source, const ComPtr<EventSink>& sink);

  ComPtr<IConnectionPoint> point_;
  ComPtr<EventSink> sink_;
  DWORD cookie_ = 0;
};

// Advises sink at source's connection point for sink->Events(); raises the
// HRESULT when the source has no such point or refuses the sink.
Connection Connect(IUnknown* source, const ComPtr<EventSink>& sink);

}  // namespace qorvane::com
