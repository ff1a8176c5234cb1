// VARIANT ownership and the conversions between VARIANTs and the add-in's values.
#include "win/com/variant.h"

#include <limits>
#include <utility>

#include "base/runtime_error.h"
#include "win/com/bstr.h"
#include "win/com/error.h"

namespace qorvane::com {

ScopedVariant::ScopedVariant(bool value) : ScopedVariant() {
  v_.vt = VT_BOOL;
  v_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

ScopedVariant::ScopedVariant(long value) : ScopedVariant() {
  v_.vt = VT_I4;
  v_.lVal = value;
}

ScopedVariant::ScopedVariant(double value) : ScopedVariant() {
  v_.vt = VT_R8;
  v_.dblVal = value;
}

ScopedVariant::ScopedVariant(DateValue value) : ScopedVariant() {
  v_.vt = VT_DATE;
  v_.date = value.value;
}

ScopedVariant::ScopedVariant(std::string_view text) : ScopedVariant() {
  Bstr bstr(text);
  v_.vt = VT_BSTR;
  v_.bstrVal = bstr.Detach();
}

ScopedVariant::ScopedVariant(const Variant& value) : ScopedVariant() {
  using Kind = Variant::Kind;
  switch (value.GetKind()) {
    case Kind::Empty: break;
    case Kind::Bool: *this = ScopedVariant(value.AsBool()); break;
    case Kind::Long: *this = ScopedVariant(static_cast<long>(value.AsLong())); break;
    case Kind::Double: *this = ScopedVariant(value.AsDouble()); break;
    case Kind::Date: *this = ScopedVariant(DateValue{value.AsDate()}); break;
    case Kind::String: *this = ScopedVariant(std::string_view(value.AsString())); break;
  }
}

ScopedVariant::ScopedVariant(IDispatch* object) : ScopedVariant() {
  v_.vt = VT_DISPATCH;
  v_.pdispVal = object;
  if (object) object->AddRef();
}

ScopedVariant ScopedVariant::Missing() {
  ScopedVariant missing;
  missing.v_.vt = VT_ERROR;
  missing.v_.scode = DISP_E_PARAMNOTFOUND;
  return missing;
}

ScopedVariant ScopedVariant::BoolRef(VARIANT_BOOL* target) {
  ScopedVariant reference;
  reference.v_.vt = VT_BOOL | VT_BYREF;
  reference.v_.pboolVal = target;
  return reference;
}

ScopedVariant ScopedVariant::EmptyArray() {
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 0);
  if (!array) Raise(err::kOutOfMemory);
  ScopedVariant result;
  result.v_.vt = VT_ARRAY | VT_VARIANT;
  result.v_.parray = array;
  return result;
}

ScopedVariant::ScopedVariant(const ScopedVariant& other) : ScopedVariant() {
  CheckHresult(VariantCopy(&v_, const_cast<VARIANT*>(&other.v_)));
}

ScopedVariant::ScopedVariant(ScopedVariant&& other) noexcept : v_(other.v_) { VariantInit(&other.v_); }

ScopedVariant& ScopedVariant::operator=(ScopedVariant other) noexcept {
  std::swap(v_, other.v_);
  return *this;
}

VARIANT* ScopedVariant::put() {
  VariantClear(&v_);
  return &v_;
}

VARIANT ScopedVariant::Detach() {
  VARIANT value = v_;
  VariantInit(&v_);
  return value;
}

ScopedVariant ScopedVariant::CopyOf(const VARIANT& value) {
  ScopedVariant copy;
  CheckHresult(VariantCopyInd(&copy.v_, const_cast<VARIANT*>(&value)));
  return copy;
}

bool ScopedVariant::IsNothing() const {
  return v_.vt == VT_EMPTY || v_.vt == VT_NULL || ((v_.vt == VT_DISPATCH || v_.vt == VT_UNKNOWN) && !v_.punkVal);
}

VARIANT ScopedVariant::Converted(VARTYPE type) const {
  VARIANT result;
  VariantInit(&result);
  const HRESULT hr = VariantChangeType(&result, const_cast<VARIANT*>(&v_), 0, type);
  if (FAILED(hr)) RaiseHresult(hr);
  return result;
}

std::int32_t ScopedVariant::ToLong() const {
  if (v_.vt == VT_I4) return v_.lVal;
  return Converted(VT_I4).lVal;
}

bool ScopedVariant::ToBool() const {
  if (v_.vt == VT_BOOL) return v_.boolVal != VARIANT_FALSE;
  return Converted(VT_BOOL).boolVal != VARIANT_FALSE;
}

double ScopedVariant::ToDouble() const {
  if (v_.vt == VT_R8) return v_.dblVal;
  if (v_.vt == VT_DATE) return v_.date;
  return Converted(VT_R8).dblVal;
}

std::string ScopedVariant::ToText() const {
  if (v_.vt == VT_BSTR) return Bstr::Utf8Of(v_.bstrVal);
  if (v_.vt == VT_EMPTY) return {};
  return Bstr::Adopt(Converted(VT_BSTR).bstrVal).Utf8();
}

ComPtr<IDispatch> ScopedVariant::ToObject() const {
  if (IsNothing()) return nullptr;
  if (v_.vt == VT_DISPATCH) return ComPtr<IDispatch>(v_.pdispVal);
  if (v_.vt == VT_UNKNOWN) {
    ComPtr<IUnknown> unknown(v_.punkVal);
    if (auto object = unknown.As<IDispatch>(IID_IDispatch)) return object;
  }
  if (v_.vt == (VT_DISPATCH | VT_BYREF) || v_.vt == (VT_VARIANT | VT_BYREF)) return CopyOf(v_).ToObject();
  Raise(err::kTypeMismatch);
}

Variant ScopedVariant::ToValue() const {
  switch (v_.vt) {
    case VT_EMPTY:
    case VT_NULL: return {};
    case VT_BOOL: return v_.boolVal != VARIANT_FALSE;
    case VT_I1: return static_cast<int>(v_.cVal);
    case VT_UI1: return static_cast<int>(v_.bVal);
    case VT_I2: return static_cast<int>(v_.iVal);
    case VT_UI2: return static_cast<int>(v_.uiVal);
    case VT_I4: return static_cast<int>(v_.lVal);
    case VT_INT: return v_.intVal;
    case VT_UI4:
    case VT_UINT: return static_cast<long long>(v_.ulVal);
    case VT_I8: return static_cast<double>(v_.llVal);
    case VT_UI8: return static_cast<double>(v_.ullVal);
    case VT_R4: return static_cast<double>(v_.fltVal);
    case VT_R8: return v_.dblVal;
    case VT_CY:
    case VT_DECIMAL: return ToDouble();
    case VT_DATE: return DateValue{v_.date};
    case VT_BSTR: return Bstr::Utf8Of(v_.bstrVal);
    default:
      if (v_.vt & VT_BYREF) return CopyOf(v_).ToValue();
      Raise(err::kTypeMismatch);
  }
}

}  // namespace qorvane::com
