// qorvane.dll's entry guards and activation context, under wine: what the
// client sees when a call goes wrong (always S_OK, the failure in the
// add-in's log), what is answered for names and DISPIDs the object does not
// have, and where the dialogs it shows get their common controls.
#include <tuple>

#include "tests/host/addin_dll_fixture.h"
#include "win/addin/office_interfaces.h"
#include "win/com/apartment.h"
#include "win/com/bstr.h"
#include "win/com/dispatch.h"

namespace host_testing {
namespace {

namespace com = qorvane::com;

constexpr wchar_t kProgId[] = L"Qorvane.Connect";

class AddInGuard : public AddInDllTest {
 protected:
  com::ComApartment apartment_;
};

TEST_F(AddInGuard, WhatItPublishesShowsItsDialogsInItsOwnActivationContext) {
  host::HostOutlook outlook;
  outlook.Start();
  com::DispatchType type("(published)", false);
  const com::Dispatch published(com::ComPtr<IDispatch>(outlook.AddInObject(kProgId)), type);
  EXPECT_TRUE(published.Get("SendAll").ToBool());
  ASSERT_EQ(dialogs_.Seen().size(), 1u);
  EXPECT_EQ(dialogs_.Seen()[0].text, "SendAll");
  EXPECT_TRUE(dialogs_.Seen()[0].commonControls6) << "made inside the DLL's activation context";
  EXPECT_FALSE(host::CommonControls6InEffect()) << "and only there";
  outlook.Stop();
}

TEST_F(AddInGuard, NoFailureOfACallReachesTheClient) {
  host::HostOutlook outlook;
  outlook.Start();
  IDispatch* object = outlook.AddInObject(kProgId);
  auto extensibility = com::ComPtr<IDispatch>(object).As<office::IDTExtensibility2>(office::IID_IDTExtensibility2);
  auto ribbon = com::ComPtr<IDispatch>(object).As<office::IRibbonExtensibility>(office::IID_IRibbonExtensibility);
  ASSERT_TRUE(extensibility && ribbon);
  // Calls with what no client should pass; each answers S_OK.
  BSTR xml = reinterpret_cast<BSTR>(1);
  const std::tuple<const char*, HRESULT> calls[] = {
      {"OnConnection without objects", extensibility->OnConnection(nullptr, 1, nullptr, nullptr)},
      {"OnStartupComplete again", extensibility->OnStartupComplete(nullptr)},
      {"OnDisconnection, odd mode", extensibility->OnDisconnection(77, nullptr)},
      {"GetCustomUI for no window", ribbon->GetCustomUI(nullptr, &xml)},
      {"GetCustomUI without a result", ribbon->GetCustomUI(nullptr, nullptr)},
  };
  for (const auto& [name, hr] : calls) EXPECT_EQ(hr, S_OK) << name;
  EXPECT_EQ(xml, nullptr) << "no markup, and the out-parameter set";
  EXPECT_TRUE(LogContains("Error(")) << "the failures were logged";

  // What is not there is answered as such, by name and by DISPID.
  const com::Bstr unknown("NoSuchMember");
  LPOLESTR names[] = {unknown.get()};
  DISPID id = 0;
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id), DISP_E_UNKNOWNNAME);
  DISPPARAMS none{};
  EXPECT_EQ(object->Invoke(4711, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
  // The two interfaces' clashing DISPID 1 each mean their own member.
  const com::Bstr getCustomUI("GetCustomUI");
  LPOLESTR ribbonNames[] = {getCustomUI.get()};
  EXPECT_EQ(ribbon->GetIDsOfNames(IID_NULL, ribbonNames, 1, LOCALE_USER_DEFAULT, &id), S_OK);
  EXPECT_EQ(id, office::kGetCustomUI);
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, ribbonNames, 1, LOCALE_USER_DEFAULT, &id), DISP_E_UNKNOWNNAME);
  const com::Bstr callback("QorvaneAbout_OnAction");
  LPOLESTR callbackNames[] = {callback.get()};
  DISPID onMain = 0;
  DISPID onRibbon = 0;
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, callbackNames, 1, LOCALE_USER_DEFAULT, &onMain), S_OK);
  EXPECT_EQ(ribbon->GetIDsOfNames(IID_NULL, callbackNames, 1, LOCALE_USER_DEFAULT, &onRibbon), S_OK);
  EXPECT_EQ(onMain, onRibbon) << "every IDispatch handed out answers the callbacks";
  extensibility.Reset();
  ribbon.Reset();
  outlook.Stop();
  EXPECT_EQ(outlook.ObjectsStillHeld(), 0);
  EXPECT_TRUE(outlook.AllModulesUnloadable());
}

TEST_F(AddInGuard, AClientThatFailsAtAnyStepOfStartUpGetsNoFailureBack) {
  // The client's operation whose first call fails.
  for (const char* operation : {"Application.Version", "Application.Inspectors", "Application.Explorers",
                                "NameSpace.GetDefaultFolder", "Folders.Add", "Views.Add", "CommandBars.Item"}) {
    host::HostOutlook outlook;
    outlook.Client().FailCall(operation, 1);
    EXPECT_NO_THROW(outlook.Start()) << operation;  // a failed HRESULT would raise here
    outlook.Client().ClearFaults();
    outlook.Stop();
    EXPECT_EQ(outlook.ObjectsStillHeld(), 0) << operation;
    EXPECT_TRUE(outlook.AllModulesUnloadable()) << operation;
  }
}

}  // namespace
}  // namespace host_testing
