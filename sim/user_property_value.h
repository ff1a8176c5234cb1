// Values of typed user properties: what a new property holds, how a value
// given for it converts to its type (or raises 13 when it does not), and how
// a value reads as text in the send log.
#pragma once

#include <string>

#include "base/variant.h"

namespace sim {

// olText, olNumber, olDateTime and olYesNo; the client knows more types,
// but these are the ones the simulated client keeps.
bool IsSupportedPropertyType(long type);
qorvane::Variant DefaultPropertyValue(long type);
qorvane::Variant ConvertPropertyValue(long type, const qorvane::Variant& value);
std::string PropertyValueText(const qorvane::Variant& value);

}  // namespace sim
