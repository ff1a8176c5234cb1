// Calling a COM add-in's connection object as the client does.
#include "tests/host/com_addin.h"

#include <vector>

#include "tests/host/host_objects.h"
#include "win/addin/office_interfaces.h"
#include "win/com/dispatch.h"
#include "win/com/error.h"

namespace host {
namespace {

// The "custom" argument: an array of no variants, released after the call.
class CustomArray {
 public:
  CustomArray() : array_(SafeArrayCreateVector(VT_VARIANT, 0, 0)) {}
  ~CustomArray() {
    if (array_) SafeArrayDestroy(array_);
  }
  SAFEARRAY** get() { return &array_; }

 private:
  SAFEARRAY* array_;
};

}  // namespace

ComAddIn::ComAddIn(com::ComPtr<IDispatch> object) : object_(std::move(object)) {}

// Each call: through the vtable when the object is an add-in connection,
// else by DISPID (the interface fixes them) over IDispatch.
template <class VtableCall>
void CallAddIn(IDispatch* object, DISPID id, std::vector<com::ScopedVariant> args, VtableCall&& call) {
  const auto extensibility =
      com::ComPtr<IDispatch>(object).As<office::IDTExtensibility2>(office::IID_IDTExtensibility2);
  if (extensibility) {
    com::CheckHresult(call(extensibility.get()));
    return;
  }
  args.push_back(com::ScopedVariant::EmptyArray());
  com::InvokeById(object, id, DISPATCH_METHOD, args, nullptr, false);
}

void ComAddIn::OnConnection(const Ref<client::Application>& application, long connectMode,
                            const Ref<client::COMAddIn>& addInInst) {
  const auto app = ExposeApplication(application);
  const auto entry = ExposeAddIn(addInInst);
  CustomArray custom;
  CallAddIn(object_.get(), office::kOnConnection, {app, connectMode, entry}, [&](office::IDTExtensibility2* addIn) {
    return addIn->OnConnection(app.get().pdispVal, static_cast<int>(connectMode), entry.get().pdispVal, custom.get());
  });
}

void ComAddIn::OnDisconnection(long removeMode) {
  CustomArray custom;
  CallAddIn(object_.get(), office::kOnDisconnection, {removeMode}, [&](office::IDTExtensibility2* addIn) {
    return addIn->OnDisconnection(static_cast<int>(removeMode), custom.get());
  });
}

void ComAddIn::OnAddInsUpdate() {
  CustomArray custom;
  CallAddIn(object_.get(), office::kOnAddInsUpdate, {},
            [&](office::IDTExtensibility2* addIn) { return addIn->OnAddInsUpdate(custom.get()); });
}

void ComAddIn::OnStartupComplete() {
  CustomArray custom;
  CallAddIn(object_.get(), office::kOnStartupComplete, {},
            [&](office::IDTExtensibility2* addIn) { return addIn->OnStartupComplete(custom.get()); });
}

void ComAddIn::OnBeginShutdown() {
  CustomArray custom;
  CallAddIn(object_.get(), office::kOnBeginShutdown, {},
            [&](office::IDTExtensibility2* addIn) { return addIn->OnBeginShutdown(custom.get()); });
}

}  // namespace host
