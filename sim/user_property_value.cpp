// Conversions of user property values.
#include "sim/user_property_value.h"

#include "base/runtime_error.h"
#include "client/ref.h"
#include "sim/date_text.h"
#include "sim/item_data.h"

namespace sim {

using qorvane::Variant;

bool IsSupportedPropertyType(long type) {
  return type == client::olText || type == client::olNumber || type == client::olDateTime ||
         type == client::olYesNo;
}

Variant DefaultPropertyValue(long type) {
  switch (type) {
    case client::olNumber: return 0.0;
    case client::olDateTime: return qorvane::DateValue{kNoDate};
    case client::olYesNo: return false;
    default: return std::string();
  }
}

Variant ConvertPropertyValue(long type, const Variant& value) {
  using Kind = Variant::Kind;
  switch (type) {
    case client::olText:
      return PropertyValueText(value);
    case client::olNumber: {
      if (value.GetKind() == Kind::Date) return value.AsDate();
      const auto number = value.NumericValue();
      if (!number) qorvane::Raise(qorvane::err::kTypeMismatch);
      return *number;
    }
    case client::olDateTime: {
      switch (value.GetKind()) {
        case Kind::Date: return value;
        case Kind::Empty: return qorvane::DateValue{kNoDate};
        case Kind::Long:
        case Kind::Double: return qorvane::DateValue{*value.NumericValue()};
        case Kind::String:
          if (const auto date = ParseDateText(value.AsString())) return qorvane::DateValue{*date};
          break;
        case Kind::Bool: break;
      }
      qorvane::Raise(qorvane::err::kTypeMismatch);
    }
    case client::olYesNo: {
      switch (value.GetKind()) {
        case Kind::Bool: return value;
        case Kind::String: return qorvane::CBool(value.AsString());
        case Kind::Date: qorvane::Raise(qorvane::err::kTypeMismatch);
        default: return *value.NumericValue() != 0.0;
      }
    }
  }
  qorvane::Raise(qorvane::err::kTypeMismatch);
}

std::string PropertyValueText(const Variant& value) {
  using Kind = Variant::Kind;
  switch (value.GetKind()) {
    case Kind::Empty: return {};
    case Kind::Bool: return value.AsBool() ? "True" : "False";
    case Kind::Long: return std::to_string(value.AsLong());
    case Kind::Double: return qorvane::NumberText(value.AsDouble());
    case Kind::Date: return GeneralDateText(value.AsDate());
    case Kind::String: return value.AsString();
  }
  return {};
}

}  // namespace sim
