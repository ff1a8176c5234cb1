// qorvane selfcheck: random patterns of every type listed by the recurrence
// engine and by the simulated mail client's calendar, which expands
// recurrences by its own rules. Every difference is printed; those the
// engine makes on purpose say why. Exit 1 when a difference has no such
// reason.
#include <map>

#include "sim/sim_client.h"
#include "tools/commands.h"
#include "tools/date_text.h"
#include "tools/self_check.h"

namespace qorvane::tool {

namespace {

const char* const kHelp =
    "Usage: qorvane selfcheck [--patterns N] [--seed S]\n"
    "\n"
    "Lists N random recurrence patterns (default 1000) both with the add-in's\n"
    "engine and with the calendar of the simulated mail client, and prints\n"
    "every pattern whose send times differ. A difference the engine makes on\n"
    "purpose is marked 'by design' with its reason. The same seed (default 1)\n"
    "gives the same patterns.\n"
    "\n"
    "Exit status: 0 when every difference is by design, 1 otherwise.\n";

std::string LimitText(const Variant& limit) {
  if (limit.GetKind() == Variant::Kind::Date) return "until " + FormatMinute(limit.AsDate()).substr(0, 10);
  return std::to_string(CLng(limit.NumericValue().value_or(0.0))) + " times";
}

// The first place the two listings part, as "n: engine <> calendar".
std::string FirstDifference(const Main::OccurrenceComparison& c) {
  if (!c.differingAt.empty()) {
    const std::size_t i = c.differingAt.front();
    return std::to_string(i) + ": " + FormatMinute(c.engine[i - 1]) + " <> " + FormatMinute(c.calendar[i - 1]);
  }
  return "count " + std::to_string(c.engine.size()) + " <> " + std::to_string(c.calendar.size());
}

}  // namespace

int RunSelfCheck(Args args, std::ostream& out, std::ostream& err) {
  if (WantsHelp(args)) {
    out << kHelp;
    return 0;
  }
  const OptionDef options[] = {{"patterns"}, {"seed"}};
  const ParsedArgs parsed = ParsedArgs::Parse(args, options, 0);
  const std::int32_t patterns = ParseInteger("patterns", parsed.Value("patterns").value_or("1000"), 1, 1000000);
  const std::int32_t seed = ParseInteger("seed", parsed.Value("seed").value_or("1"), 0, INT32_MAX);

  sim::SimClient client;
  client.Install();
  std::mt19937 random(static_cast<std::mt19937::result_type>(seed));
  std::map<Main::ByDesign, int> byDesign;
  int agree = 0;
  int unexplained = 0;
  for (std::int32_t n = 1; n <= patterns; ++n) {
    SelfCheckCase c = RandomSelfCheckCase(random);
    const SelfCheckResult result = RunSelfCheckCase(c);
    if (result.comparison.Agree()) {
      ++agree;
      continue;
    }
    if (result.reason == Main::ByDesign::None) {
      ++unexplained;
    } else {
      ++byDesign[result.reason];
    }
    out << "pattern " << n << ": " << c.record.GetDescText(false) << ", " << LimitText(c.limit)
        << ", first day of the week " << c.firstDayOfWeek << ": " << FirstDifference(result.comparison);
    if (result.reason != Main::ByDesign::None) out << " (by design: " << Main::ByDesignReason(result.reason) << ")";
    out << '\n';
  }
  client.Uninstall();

  int designed = 0;
  for (const auto& [reason, count] : byDesign) designed += count;
  out << patterns << " patterns: " << agree << " agree, " << designed << " differ by design, " << unexplained
      << " differ otherwise\n";
  for (const auto& [reason, count] : byDesign) out << "  " << count << " by design: " << Main::ByDesignReason(reason) << '\n';
  if (unexplained > 0) err << "qorvane selfcheck: " << unexplained << " patterns differ without a known reason\n";
  return unexplained > 0 ? 1 : 0;
}

}  // namespace qorvane::tool
