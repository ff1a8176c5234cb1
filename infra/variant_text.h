// CStr of a Variant: the text the runtime makes of any value, dates in the
// current locale's general date format.
#pragma once

#include <string>

#include "base/variant.h"

namespace qorvane {

std::string CStr(const Variant& value);

}  // namespace qorvane
