// qorvane occurrences: the send times the engine lists for a pattern, one a
// line, limited by a count or a last day. Only the dates are printed, so the
// output can be compared line by line with another calendar's.
#include <cstdint>

#include "base/iso_date_text.h"
#include "base/variant.h"
#include "tools/commands.h"
#include "tools/date_text.h"
#include "tools/pattern_options.h"

namespace qorvane::tool {

namespace {

const char* const kHelp =
    "Usage: qorvane occurrences PATTERN-OPTIONS (--count N | --until YYYY-MM-DD)\n"
    "\n"
    "Lists the send times of a recurrence pattern from its first day on, one\n"
    "'YYYY-MM-DD HH:MM' a line. A pattern type the add-in does not know lists\n"
    "nothing. When the engine cannot list the pattern at all (it would run past\n"
    "the year 9999) the reason is logged and the exit code is 1.\n"
    "\n"
    "  --count N           the first N send times (1..100000)\n"
    "  --until YYYY-MM-DD  every send time up to that day (at most 999)\n"
    "\n";

// The engine keeps the whole list in memory; a hundred thousand sends is
// already centuries of daily mail.
constexpr std::int32_t kMaxCount = 100000;

}  // namespace

int RunOccurrences(Args args, std::ostream& out, std::ostream& err) {
  if (WantsHelp(args)) {
    out << kHelp << kPatternOptionsHelp;
    return 0;
  }
  auto options = PatternOptionDefs();
  options.push_back({"count"});
  options.push_back({"until"});
  ParsedArgs parsed = ParsedArgs::Parse(args, options, 0);
  CMailProps props = PatternFromArgs(parsed);
  if (parsed.Has("count") == parsed.Has("until")) {
    throw UsageError("give exactly one of --count and --until");
  }
  Variant limit = parsed.Has("count")
                      ? Variant(static_cast<int>(ParseInteger("count", *parsed.Value("count"), 1, kMaxCount)))
                      : Variant(DateValue{ToOleDate(ParseIsoDate("until", *parsed.Value("until")))});
  auto dates = props.GetOccurrences(limit);
  if (!dates) {
    // The engine has logged why (a listing running past the year 9999, say).
    err << "qorvane occurrences: the pattern yields no listing; see the log\n";
    return 1;
  }
  for (double date : *dates) out << IsoMinuteText(date) << '\n';
  return 0;
}

}  // namespace qorvane::tool
