// Owns one VARIANT: made from the add-in's values (numbers, text as UTF-8,
// dates, objects) and read back with the runtime's conversions. Every other
// file hands VARIANTs around only through this type.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "base/variant.h"
#include "win/com/com_ptr.h"

namespace qorvane::com {

class ScopedVariant {
 public:
  ScopedVariant() { VariantInit(&v_); }
  ScopedVariant(bool value);
  ScopedVariant(int value) : ScopedVariant(static_cast<long>(value)) {}
  ScopedVariant(long value);
  ScopedVariant(double value);
  ScopedVariant(DateValue value);
  ScopedVariant(std::string_view text);
  ScopedVariant(const std::string& text) : ScopedVariant(std::string_view(text)) {}
  ScopedVariant(const char* text) : ScopedVariant(std::string_view(text)) {}
  // VT_EMPTY for Empty; otherwise the matching automation type.
  ScopedVariant(const Variant& value);
  // Takes a new reference; a null object is VT_DISPATCH Nothing.
  ScopedVariant(IDispatch* object);
  ScopedVariant(const ComPtr<IDispatch>& object) : ScopedVariant(object.get()) {}

  // An object reference to no object (VT_DISPATCH Nothing).
  static ScopedVariant Nothing() { return ScopedVariant(static_cast<IDispatch*>(nullptr)); }
  // An optional argument left out (VT_ERROR, DISP_E_PARAMNOTFOUND).
  static ScopedVariant Missing();
  // A by-reference Boolean that the callee may change (VT_BOOL | VT_BYREF);
  // target must outlive the call.
  static ScopedVariant BoolRef(VARIANT_BOOL* target);
  // An array of no variants (VT_ARRAY | VT_VARIANT): the add-in connection's
  // "custom" argument, which nobody fills.
  static ScopedVariant EmptyArray();

  ScopedVariant(const ScopedVariant& other);
  ScopedVariant(ScopedVariant&& other) noexcept;
  ScopedVariant& operator=(ScopedVariant other) noexcept;
  ~ScopedVariant() { VariantClear(&v_); }

  const VARIANT& get() const { return v_; }
  // For out-parameters: clears what is held first.
  VARIANT* put();
  // Gives the value to the caller (an out-parameter being filled).
  VARIANT Detach();
  // A copy of a VARIANT that stays its owner's; by-reference values are
  // copied as the values they point to.
  static ScopedVariant CopyOf(const VARIANT& value);

  VARTYPE Type() const { return v_.vt; }
  // Empty, Null, or an object reference that is Nothing.
  bool IsNothing() const;

  // The runtime's conversions; a value that does not convert raises 13.
  std::int32_t ToLong() const;
  bool ToBool() const;
  double ToDouble() const;
  std::string ToText() const;
  // The object held; null for Empty, Null and Nothing; raises 13 for a value.
  ComPtr<IDispatch> ToObject() const;
  // As the add-in's own Variant; raises 13 for objects and arrays.
  Variant ToValue() const;

 private:
  VARIANT Converted(VARTYPE type) const;

  VARIANT v_;
};

}  // namespace qorvane::com
