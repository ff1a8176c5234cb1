// How the qorvane tool shows and builds OLE dates. Output is ISO-like and
// independent of --locale ("2025-03-03 09:30"), so that scripts reading the
// tool never depend on the user's regional settings; only encode/describe
// text, which is the add-in's own, follows the locale.
#pragma once

#include <string>

#include "tools/arg_parser.h"

namespace qorvane::tool {

// "YYYY-MM-DD HH:MM", rounded to the second first as the runtime shows times.
std::string FormatMinute(double date);
// "YYYY-MM-DD HH:MM:SS"; a time-only value shows the day 1899-12-30.
std::string FormatSecond(double date);

double ToOleDate(const DateParts& date);
double ToOleTime(const ClockParts& time);

}  // namespace qorvane::tool
