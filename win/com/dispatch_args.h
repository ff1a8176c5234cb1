// The arguments of an incoming IDispatch::Invoke (an event raised at one of
// our sinks, or a call on an automation object we implement), read in the
// order the member declares them. By-reference arguments are read through
// their reference and can be written back (an event's Cancel).
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "win/com/com_ptr.h"
#include "win/com/variant.h"

namespace qorvane::com {

class DispatchArgs {
 public:
  explicit DispatchArgs(const DISPPARAMS& params);

  // Positional arguments, without a put's value.
  std::size_t Count() const { return count_; }
  // False for an argument left out or passed as missing.
  bool Has(std::size_t index) const;
  // A copy of the argument's value, by-reference ones dereferenced. Raises
  // 449 when the argument was left out.
  ScopedVariant At(std::size_t index) const;

  std::int32_t Long(std::size_t index) const { return At(index).ToLong(); }
  bool Bool(std::size_t index) const { return At(index).ToBool(); }
  double Double(std::size_t index) const { return At(index).ToDouble(); }
  std::string Text(std::size_t index) const { return At(index).ToText(); }
  ComPtr<IDispatch> Object(std::size_t index) const { return At(index).ToObject(); }
  Variant Value(std::size_t index) const { return At(index).ToValue(); }

  // Writes a Boolean back through a by-reference argument (VT_BOOL|VT_BYREF,
  // or VT_VARIANT|VT_BYREF); raises 13 when the argument is not one.
  void SetBool(std::size_t index, bool value) const;

  // The value of a property put (the argument named DISPID_PROPERTYPUT);
  // raises 449 when there is none.
  ScopedVariant PutValue() const;

 private:
  const VARIANTARG* Raw(std::size_t index) const;

  const DISPPARAMS& params_;
  std::size_t count_;
  bool hasPutValue_;
};

}  // namespace qorvane::com
