// qorvane decode: reads a stored schedule line back and prints the record's
// fields in declaration order, so a line found on a mail can be checked by
// eye or by script.
//
// The add-in's ReadFromString reports a bad line only to the log (a damaged
// property must never raise an error box in the mail client); the tool reads
// through ReadFromStringOrRaise instead to tell the user why, and still logs
// the failure under the add-in's own label so the log reads the same.
#include <exception>

#include "base/iso_date_text.h"
#include "base/runtime_error.h"
#include "infra/cdebug.h"
#include "schedule/mail_props.h"
#include "tools/arg_parser.h"
#include "tools/commands.h"

namespace qorvane::tool {

namespace {

const char* const kHelp =
    "Usage: qorvane decode LINE\n"
    "\n"
    "Reads a line as stored on a mail and prints the schedule's fields, one\n"
    "'name=value' a line, in this order and spelling (the record's field names\n"
    "without their m_ prefix):\n"
    "  ScheduleTime, attachment (one line per attached file or folder),\n"
    "  IsRecurring, RecurrenceType, DayOfMonth, MonthOfYear, Instance,\n"
    "  DayOfWeekMask, Interval, Occurrences, NoEndDate, StartTime,\n"
    "  PatternStartDate, PatternEndDate\n"
    "Date-times print as 'YYYY-MM-DD HH:MM:SS' (a time alone on 1899-12-30),\n"
    "booleans as 1 or 0. The line's dates are read in the --locale given.\n"
    "\n"
    "When the line cannot be read, the fields read so far are printed, the\n"
    "reason goes to stderr and the log, and the exit code is 1.\n";

constexpr const char* kLogLabel = "CMailProps.ReadFromString(";

// The reason the read failed, or empty when it did not.
std::string Read(CMailProps& props, const std::string& text) {
  std::string reason;
  try {
    props.ReadFromStringOrRaise(text);
    return {};
  } catch (const RuntimeError& e) {
    reason = "error " + std::to_string(e.Number()) + ", " + e.Description();
  } catch (const std::exception& e) {
    reason = e.what();
  }
  // The user has the reason on stderr already; a log that cannot be written
  // (read-only folder) must not hide it.
  try {
    g_debug.OutCustomError(kLogLabel, reason);
  } catch (...) {
  }
  return reason;
}

void PrintFields(const CMailProps& p, std::ostream& out) {
  out << "ScheduleTime=" << IsoSecondText(p.m_ScheduleTime) << '\n';
  for (const std::string& ref : p.m_collAttachments) out << "attachment=" << ref << '\n';
  out << "IsRecurring=" << (p.m_IsRecurring ? 1 : 0) << '\n'
      << "RecurrenceType=" << p.m_RecurrenceType << '\n'
      << "DayOfMonth=" << p.m_DayOfMonth << '\n'
      << "MonthOfYear=" << p.m_MonthOfYear << '\n'
      << "Instance=" << p.m_Instance << '\n'
      << "DayOfWeekMask=" << p.m_DayOfWeekMask << '\n'
      << "Interval=" << p.m_Interval << '\n'
      << "Occurrences=" << p.m_Occurrences << '\n'
      << "NoEndDate=" << (p.m_NoEndDate ? 1 : 0) << '\n'
      << "StartTime=" << IsoSecondText(p.m_StartTime) << '\n'
      << "PatternStartDate=" << IsoSecondText(p.m_PatternStartDate) << '\n'
      << "PatternEndDate=" << IsoSecondText(p.m_PatternEndDate) << '\n';
}

}  // namespace

int RunDecode(Args args, std::ostream& out, std::ostream& err) {
  if (WantsHelp(args)) {
    out << kHelp;
    return 0;
  }
  ParsedArgs parsed = ParsedArgs::Parse(args, {}, 1);
  if (parsed.Positional().empty()) throw UsageError("the LINE to read is missing");
  CMailProps props;
  const std::string reason = Read(props, parsed.Positional().front());
  PrintFields(props, out);
  if (!reason.empty()) {
    err << "qorvane decode: the line could not be read: " << reason << '\n';
    return 1;
  }
  return 0;
}

}  // namespace qorvane::tool
