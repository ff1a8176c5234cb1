// How the qorvane tool builds OLE dates from its command line. Its output
// dates are locale-free ("2025-03-03 09:30", base/iso_date_text.h), so that
// scripts reading the tool never depend on the user's regional settings; only
// encode/describe text, which is the add-in's own, follows the locale.
#pragma once

#include "tools/arg_parser.h"

namespace qorvane::tool {

double ToOleDate(const DateParts& date);
double ToOleTime(const ClockParts& time);

}  // namespace qorvane::tool
