// The add-in's current application and safe-mail factory.
#include "base/runtime_error.h"
#include "client/application.h"
#include "client/safe_mail.h"

namespace client {
namespace {

Ref<Application>& Current() {
  static Ref<Application> application;
  return application;
}

// Without a connected client there is no library to create: error 429, as
// CreateObject reports it.
class NoSafeMail final : public SafeMailFactory {
 public:
  Ref<SafeMailItem> CreateSafeMailItem() override { qorvane::Raise(qorvane::err::kCannotCreateObject); }
};

SafeMailFactory*& CurrentFactory() {
  static NoSafeMail none;
  static SafeMailFactory* factory = &none;
  return factory;
}

}  // namespace

void RaiseObjectNotSet() { qorvane::Raise(qorvane::err::kObjectNotSet); }

void RaiseNotSupported() { qorvane::Raise(438, "Object doesn't support this property or method"); }

Ref<Application> CurrentApplication() {
  if (!Current()) qorvane::Raise(qorvane::err::kObjectNotSet);
  return Current();
}

void SetCurrentApplication(Ref<Application> application) { Current() = std::move(application); }

SafeMailFactory& CurrentSafeMailFactory() { return *CurrentFactory(); }

void SetSafeMailFactory(SafeMailFactory* factory) {
  static NoSafeMail none;
  CurrentFactory() = factory ? factory : &none;
}

}  // namespace client
