// The safe-mail library, created by its ProgID and given the client's mail
// item by reference.
#include "base/runtime_error.h"
#include "win/binding/bound_object.h"

namespace binding {
namespace {

com::DispatchType kSafeMailType("SafeMailItem");
com::DispatchType kSafeRecipientsType("SafeRecipients");

class BoundSafeRecipients final : public client::SafeRecipients, public Bound {
 public:
  explicit BoundSafeRecipients(com::ComPtr<IDispatch> object) : Bound(std::move(object), kSafeRecipientsType) {}
  long Count() override { return Long("Count"); }
  bool ResolveAll() override { return Get("ResolveAll").ToBool(); }
};

class BoundSafeMailItem final : public client::SafeMailItem, public Bound {
 public:
  explicit BoundSafeMailItem(com::ComPtr<IDispatch> object) : Bound(std::move(object), kSafeMailType) {}
  void Item(const Ref<client::MailItem>& item) override { Self().PutRef("Item", DispatchOf(item).get()); }
  Ref<client::SafeRecipients> Recipients() override { return MakeBound<BoundSafeRecipients>(Get("Recipients")); }
  void Send() override { Call("Send"); }
};

}  // namespace

client::Ref<client::SafeMailItem> ComSafeMailFactory::CreateSafeMailItem() {
  CLSID clsid{};
  com::ComPtr<IDispatch> object;
  if (FAILED(CLSIDFromProgID(L"Redemption.SafeMailItem", &clsid)) ||
      FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                              reinterpret_cast<void**>(object.put()))) ||
      !object) {
    qorvane::Raise(qorvane::err::kCannotCreateObject);
  }
  return std::make_shared<BoundSafeMailItem>(std::move(object));
}

}  // namespace binding
