// The class factory of the add-in's COM object.
#include "win/addin/class_factory.h"

#include "win/addin/connect_object.h"
#include "win/addin/module.h"
#include "win/com/com_ptr.h"
#include "win/com/query_interface.h"

#include <new>

namespace addin_com {
namespace {

class ConnectClassFactory final : public IClassFactory {
 public:
  ConnectClassFactory() { addin_module::ObjectCreated(); }
  ~ConnectClassFactory() { addin_module::ObjectDestroyed(); }
  ConnectClassFactory(const ConnectClassFactory&) = delete;
  ConnectClassFactory& operator=(const ConnectClassFactory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return qorvane::com::QueryInterfaceFrom(iid, object, {{&IID_IUnknown, this}, {&IID_IClassFactory, this}});
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
    return ConnectObject::Create(iid, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    addin_module::Lock(lock != FALSE);
    return S_OK;
  }

 private:
  ULONG refs_ = 0;
};

}  // namespace

HRESULT GetConnectClassFactory(REFIID iid, void** object) noexcept {
  if (!object) return E_POINTER;
  *object = nullptr;
  ConnectClassFactory* factory = new (std::nothrow) ConnectClassFactory();
  if (!factory) return E_OUTOFMEMORY;
  const qorvane::com::ComPtr<IClassFactory> keep(factory);
  return factory->QueryInterface(iid, object);
}

}  // namespace addin_com
