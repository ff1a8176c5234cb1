// qorvane describe: the sentence the add-in shows for a schedule, in the
// current locale, exactly as GetDescText builds it.
#include "tools/commands.h"
#include "tools/date_text.h"
#include "tools/pattern_options.h"

namespace qorvane::tool {

namespace {

const char* const kHelp =
    "Usage: qorvane describe PATTERN-OPTIONS --schedule-time \"YYYY-MM-DD HH:MM\"\n"
    "                        [END-OPTION] [--one-time] [--last]\n"
    "\n"
    "Prints the sentence describing the schedule, as the add-in shows it.\n"
    "\n"
    "  --schedule-time \"YYYY-MM-DD HH:MM\"  the next send time (required)\n"
    "  --one-time          a single send instead of a recurrence\n"
    "  --last              also name the last send of a pattern with an end\n"
    "\n";

}  // namespace

int RunDescribe(Args args, std::ostream& out, std::ostream& err) {
  if (WantsHelp(args)) {
    out << kHelp << kPatternOptionsHelp << kEndOptionsHelp;
    return 0;
  }
  auto options = PatternOptionDefs();
  for (const OptionDef& s : EndOptionDefs()) options.push_back(s);
  options.push_back({"schedule-time"});
  options.push_back({"one-time", false});
  options.push_back({"last", false});
  ParsedArgs parsed = ParsedArgs::Parse(args, options, 0);
  CMailProps props = PatternFromArgs(parsed);
  ApplyEndOptions(parsed, props);
  auto [day, time] = ParseIsoDateTime("schedule-time", parsed.Required("schedule-time"));
  props.m_ScheduleTime = ToOleDate(day) + ToOleTime(time);
  if (parsed.Has("one-time")) props.m_IsRecurring = false;
  out << props.GetDescText(parsed.Has("last")) << '\n';
  return 0;
}

}  // namespace qorvane::tool
