// The DLL's entry point and the four functions COM and regsvr32 call,
// exported by name through qorvane.def.
#include <windows.h>
#include <olectl.h>

#include "win/addin/class_factory.h"
#include "win/addin/module.h"
#include "win/addin/registration.h"

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) {
    addin_module::SetHandle(module);
    DisableThreadLibraryCalls(module);
  }
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (!IsEqualCLSID(clsid, addin_registration::kClsid)) return CLASS_E_CLASSNOTAVAILABLE;
  return addin_com::GetConnectClassFactory(iid, object);
}

STDAPI DllCanUnloadNow() { return addin_module::CanUnload() ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() {
  return addin_registration::Register(addin_module::Path()) ? S_OK : SELFREG_E_CLASS;
}

STDAPI DllUnregisterServer() { return addin_registration::Unregister() ? S_OK : SELFREG_E_CLASS; }
