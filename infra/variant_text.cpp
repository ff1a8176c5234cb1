// CStr of a Variant.
#include "infra/variant_text.h"

#include "platform/locale.h"

namespace qorvane {

std::string CStr(const Variant& value) {
  switch (value.GetKind()) {
    case Variant::Kind::Empty: return "";
    case Variant::Kind::Bool: return value.AsBool() ? "True" : "False";
    case Variant::Kind::Long: return std::to_string(value.AsLong());
    case Variant::Kind::Double: return NumberText(value.AsDouble());
    case Variant::Kind::Date: return CurrentLocale().FormatGeneralDate(value.AsDate());
    case Variant::Kind::String: return value.AsString();
  }
  return "";
}

}  // namespace qorvane
