// The add-in's COM object, "Qorvane.Connect": what the client creates and
// talks to. It is the face of one addin Connect (the add-in itself, on the
// client model of win/binding):
//   _IDTExtensibility2   the add-in connection, by vtable and by IDispatch
//                        (DISPIDs 1..5); the client's objects it is handed
//                        are wrapped by the binding and passed on
//   IDispatch            also Connect's published members by name
//                        (m_NoExplorer, m_bSendAndExit, m_app, SendAll, the
//                        timer entries) for other automation clients, and
//                        the ribbon's callbacks, which the client looks up
//                        by name on this IDispatch
//   IRibbonExtensibility GetCustomUI, on a vtable of its own (its one member
//                        clashes with OnConnection in DISPID and slot) that
//                        shares this object's reference count
//
// Every call from the client runs in the DLL's activation context and under
// an entry guard: whatever fails is logged, and the client always gets S_OK
// (only a name or DISPID the object does not have is answered as such).
//
// Lifecycle: made by the class factory with one reference for the caller;
// apartment-threaded (the client's UI thread). While it lives the module
// stays loaded; its destruction ends the Connect (Terminate).
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <memory>

#include "win/addin/office_interfaces.h"

class Connect;

namespace addin_com {

class ConnectObject final : public office::IDTExtensibility2 {
 public:
  // A new object, answering iid for the caller (one reference).
  static HRESULT Create(REFIID iid, void** object) noexcept;

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  // IDispatch
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                   EXCEPINFO* info, UINT* badArgument) override;
  // _IDTExtensibility2
  HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, int connectMode, IDispatch* addInInst,
                                         SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnDisconnection(int removeMode, SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) override;

 private:
  // IRibbonExtensibility's vtable, living inside its owner.
  class RibbonFace final : public office::IRibbonExtensibility {
   public:
    explicit RibbonFace(ConnectObject& owner) : owner_(owner) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
      return owner_.QueryInterface(iid, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return owner_.GetTypeInfoCount(count); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
      return owner_.GetTypeInfo(index, locale, info);
    }
    // GetCustomUI by name on this face; every other name as on the owner.
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params,
                                     VARIANT* result, EXCEPINFO* info, UINT* badArgument) override;
    HRESULT STDMETHODCALLTYPE GetCustomUI(BSTR ribbonId, BSTR* ribbonXml) override;

   private:
    ConnectObject& owner_;
  };

  ConnectObject();
  ~ConnectObject();
  ConnectObject(const ConnectObject&) = delete;
  ConnectObject& operator=(const ConnectObject&) = delete;

  ULONG refs_ = 0;
  std::shared_ptr<Connect> connect_;
  RibbonFace ribbon_{*this};
};

}  // namespace addin_com
