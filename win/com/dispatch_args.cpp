// Reading and writing back the arguments of an incoming Invoke.
#include "win/com/dispatch_args.h"

#include "base/runtime_error.h"

namespace qorvane::com {

DispatchArgs::DispatchArgs(const DISPPARAMS& params)
    : params_(params),
      hasPutValue_(params.cNamedArgs > 0 && params.rgdispidNamedArgs &&
                   params.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT && params.cArgs > 0) {
  count_ = params.cArgs - (hasPutValue_ ? 1 : 0);
}

// Arguments come last first; a put's value is the first of the array.
const VARIANTARG* DispatchArgs::Raw(std::size_t index) const {
  if (index >= count_) return nullptr;
  return &params_.rgvarg[params_.cArgs - 1 - index];
}

bool DispatchArgs::Has(std::size_t index) const {
  const VARIANTARG* arg = Raw(index);
  if (!arg) return false;
  if (arg->vt == VT_ERROR && arg->scode == DISP_E_PARAMNOTFOUND) return false;
  if (arg->vt == (VT_VARIANT | VT_BYREF) && arg->pvarVal->vt == VT_ERROR &&
      arg->pvarVal->scode == DISP_E_PARAMNOTFOUND)
    return false;
  return true;
}

ScopedVariant DispatchArgs::At(std::size_t index) const {
  if (!Has(index)) Raise(err::kArgumentNotOptional);
  return ScopedVariant::CopyOf(*Raw(index));
}

void DispatchArgs::SetBool(std::size_t index, bool value) const {
  const VARIANTARG* arg = Raw(index);
  const VARIANT_BOOL b = value ? VARIANT_TRUE : VARIANT_FALSE;
  if (arg && arg->vt == (VT_BOOL | VT_BYREF) && arg->pboolVal) {
    *arg->pboolVal = b;
  } else if (arg && arg->vt == (VT_VARIANT | VT_BYREF) && arg->pvarVal) {
    VARIANT* target = arg->pvarVal;
    if (target->vt == (VT_BOOL | VT_BYREF)) {
      *target->pboolVal = b;
    } else {
      VariantClear(target);
      target->vt = VT_BOOL;
      target->boolVal = b;
    }
  } else {
    Raise(err::kTypeMismatch);
  }
}

ScopedVariant DispatchArgs::PutValue() const {
  if (!hasPutValue_) Raise(err::kArgumentNotOptional);
  return ScopedVariant::CopyOf(params_.rgvarg[0]);
}

}  // namespace qorvane::com
