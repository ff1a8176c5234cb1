// qorvane encode: the one line of text a schedule's recurrence travels in on
// the mail item (WriteToString), for preparing test mail or checking what a
// given pattern looks like on the wire.
#include "tools/commands.h"
#include "tools/pattern_options.h"

namespace qorvane::tool {

namespace {

const char* const kHelp =
    "Usage: qorvane encode PATTERN-OPTIONS [END-OPTION] [--attach REF]... [--one-time]\n"
    "\n"
    "Prints the line the schedule is stored as on the mail. Its dates follow\n"
    "--locale, as the add-in's do.\n"
    "\n"
    "  --attach REF        a file or folder sent with the mail; repeat for more\n"
    "  --one-time          a single send instead of a recurrence\n"
    "\n";

}  // namespace

int RunEncode(Args args, std::ostream& out, std::ostream& err) {
  if (WantsHelp(args)) {
    out << kHelp << kPatternOptionsHelp << kEndOptionsHelp;
    return 0;
  }
  auto options = PatternOptionDefs();
  for (const OptionDef& s : EndOptionDefs()) options.push_back(s);
  options.push_back({"attach", true, true});
  options.push_back({"one-time", false});
  ParsedArgs parsed = ParsedArgs::Parse(args, options, 0);
  CMailProps props = PatternFromArgs(parsed);
  ApplyEndOptions(parsed, props);
  props.m_collAttachments = parsed.Values("attach");
  if (parsed.Has("one-time")) props.m_IsRecurring = false;
  out << props.WriteToString() << '\n';
  return 0;
}

}  // namespace qorvane::tool
