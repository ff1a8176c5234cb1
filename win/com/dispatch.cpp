// GetIDsOfNames once per type and name, and Invoke with reversed arguments.
#include "win/com/dispatch.h"

#include <vector>

#include "base/runtime_error.h"
#include "win/com/error.h"
#include "win/com/wide_text.h"

namespace qorvane::com {

NameLookupCounts& NameLookups() {
  static NameLookupCounts counts;
  return counts;
}

DispatchType& DispatchType::Unknown() {
  static DispatchType unknown("(unknown)", false);
  return unknown;
}

DISPID DispatchType::IdOf(IDispatch* object, std::string_view member) {
  ++NameLookups().asked;
  const auto found = ids_.find(member);
  if (found != ids_.end()) return found->second;
  ++NameLookups().resolved;
  std::wstring wide = WideFromUtf8(member);
  LPOLESTR names[] = {wide.data()};
  DISPID id = DISPID_UNKNOWN;
  const HRESULT hr = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(hr)) {
    const std::int32_t number = RuntimeNumberOf(hr);
    Raise(number, StandardDescription(number) + " (" + name_ + "." + std::string(member) + ")");
  }
  if (cached_) ids_.emplace(member, id);
  return id;
}

ScopedVariant Dispatch::Get(std::string_view member, Args args) const {
  return Invoke(member, DISPATCH_PROPERTYGET | DISPATCH_METHOD, nullptr, args, true);
}

void Dispatch::Call(std::string_view member, Args args) const {
  Invoke(member, DISPATCH_METHOD, nullptr, args, false);
}

void Dispatch::Put(std::string_view member, const ScopedVariant& value, Args args) const {
  Invoke(member, DISPATCH_PROPERTYPUT, &value, args, false);
}

void Dispatch::PutRef(std::string_view member, IDispatch* object, Args args) const {
  const ScopedVariant value(object);
  Invoke(member, DISPATCH_PROPERTYPUTREF, &value, args, false);
}

ScopedVariant Dispatch::Invoke(std::string_view member, WORD flags, const ScopedVariant* value, Args args,
                               bool wantResult) const {
  if (!object_) Raise(err::kObjectNotSet);
  return InvokeById(object_.get(), type_->IdOf(object_.get(), member), flags,
                    std::span<const ScopedVariant>(args.begin(), args.size()), value, wantResult);
}

ScopedVariant InvokeById(IDispatch* object, DISPID id, WORD flags, std::span<const ScopedVariant> args,
                         const ScopedVariant* value, bool wantResult) {
  if (!object) Raise(err::kObjectNotSet);
  // IDispatch takes the arguments last first; a put's value comes before
  // them, named DISPID_PROPERTYPUT. The array borrows the values.
  std::vector<VARIANTARG> reversed;
  reversed.reserve(args.size() + 1);
  if (value) reversed.push_back(value->get());
  for (auto arg = args.rbegin(); arg != args.rend(); ++arg) reversed.push_back(arg->get());
  DISPID putId = DISPID_PROPERTYPUT;
  DISPPARAMS params{reversed.data(), value ? &putId : nullptr, static_cast<UINT>(reversed.size()), value ? 1u : 0u};

  ScopedVariant result;
  EXCEPINFO info{};
  UINT badArgument = 0;
  const HRESULT hr = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, wantResult ? result.put() : nullptr,
                                    &info, &badArgument);
  if (hr == DISP_E_EXCEPTION) RaiseException(info);
  if (FAILED(hr)) RaiseHresult(hr);
  return result;
}

}  // namespace qorvane::com
