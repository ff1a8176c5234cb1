// The two interfaces through which the client talks to a COM add-in, written
// by hand from their published definitions (no type library is needed): the
// add-in connection _IDTExtensibility2 and the ribbon's IRibbonExtensibility,
// both dual interfaces (a vtable after IDispatch's, and the same members by
// DISPID). Also the ribbon's IRibbonControl as a caller reads it.
//
// Shared by the add-in's COM server and the host program that loads it the
// way the client does.
#pragma once

#include <windows.h>
#include <oaidl.h>

namespace office {

// {B65AD801-ABAF-11D0-BB8B-00A0C90F2744}
inline constexpr IID IID_IDTExtensibility2 = {0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};
// {000C0396-0000-0000-C000-000000000046}
inline constexpr IID IID_IRibbonExtensibility = {0x000C0396, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
// {000C0395-0000-0000-C000-000000000046}
inline constexpr IID IID_IRibbonControl = {0x000C0395, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

// _IDTExtensibility2's members by DISPID, in vtable order.
enum ExtensibilityDispId : DISPID {
  kOnConnection = 1,
  kOnDisconnection = 2,
  kOnAddInsUpdate = 3,
  kOnStartupComplete = 4,
  kOnBeginShutdown = 5,
};
// IRibbonExtensibility's one member; it clashes with OnConnection, which is
// why the two interfaces cannot share one IDispatch.
inline constexpr DISPID kGetCustomUI = 1;
// IRibbonControl's properties.
inline constexpr DISPID kRibbonControlId = 1;
inline constexpr DISPID kRibbonControlContext = 2;
inline constexpr DISPID kRibbonControlTag = 3;

// ext_ConnectMode and ext_DisconnectMode are enums: 32-bit integers.
struct IDTExtensibility2 : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, int connectMode, IDispatch* addInInst,
                                                 SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnDisconnection(int removeMode, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) = 0;
};

struct IRibbonExtensibility : IDispatch {
  // The ribbon XML for the client's window kind ("Microsoft.Outlook.Explorer",
  // "Microsoft.Outlook.Mail.Compose", ...); null or empty for none.
  virtual HRESULT STDMETHODCALLTYPE GetCustomUI(BSTR ribbonId, BSTR* ribbonXml) = 0;
};

}  // namespace office
