// The options that describe a recurrence pattern and its end, shared by the
// occurrences, describe and encode commands so that the three read the same
// command line the same way.
#pragma once

#include <vector>

#include "schedule/mail_props.h"
#include "tools/arg_parser.h"

namespace qorvane::tool {

// --type, --interval, --mask, --day-of-month, --month, --instance, --start,
// --time, --first-dow, --outlook-version.
std::vector<OptionDef> PatternOptionDefs();
extern const char* const kPatternOptionsHelp;

// A recurring record holding the pattern; UsageError when an option the
// pattern type reads is missing (--type 3 without --instance, say). The
// first day of the week is process-wide state of the engine, so it is
// applied here too: --first-dow, or else the mail client's stored calendar
// option.
CMailProps PatternFromArgs(const ParsedArgs& args);

// --occurrences N, --no-end, --end-date: how the pattern ends. --no-end
// excludes the other two; those two may go together.
std::vector<OptionDef> EndOptionDefs();
extern const char* const kEndOptionsHelp;
void ApplyEndOptions(const ParsedArgs& args, CMailProps& props);

}  // namespace qorvane::tool
