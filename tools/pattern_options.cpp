// Pattern and end options; see pattern_options.h.
#include "tools/pattern_options.h"

#include <algorithm>
#include <limits>
#include <string>

#include "infra/settings.h"
#include "schedule/first_dow.h"
#include "store/main_options.h"
#include "tools/date_text.h"

namespace qorvane::tool {

namespace {

constexpr std::int32_t kMaxInt = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMinInt = std::numeric_limits<std::int32_t>::min();

// The current generation of the mail client (named in the help text too).
constexpr const char* kDefaultClientVersion = "16.0";

std::int32_t OptionalInteger(const ParsedArgs& args, std::string_view name, std::int32_t fallback,
                             std::int32_t low, std::int32_t high) {
  auto text = args.Value(name);
  return text ? ParseInteger(name, *text, low, high) : fallback;
}

// The options each pattern type reads. Without one the engine would not
// refuse the pattern but list something else (day 0 is the last day of the
// month before, no weekday lists nothing), so it is a usage error.
struct TypeNeeds {
  std::int32_t type;
  const char* name;
  std::vector<std::string_view> options;
};

const TypeNeeds kTypeNeeds[] = {
    {kRecursWeekly, "weekly", {"mask"}},
    {kRecursMonthly, "monthly on a day", {"day-of-month"}},
    {kRecursMonthNth, "monthly on the nth weekday", {"instance", "mask"}},
    {kRecursYearly, "yearly on a day", {"day-of-month", "month"}},
    {kRecursYearNth, "yearly on the nth weekday", {"instance", "mask", "month"}},
};

// "--a", "--a and --b", "--a, --b and --c".
std::string OptionList(const std::vector<std::string_view>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
    text += "--" + std::string(names[i]);
  }
  return text;
}

void RequireTypeOptions(const ParsedArgs& args, const CMailProps& props) {
  const TypeNeeds* needs = nullptr;
  for (const TypeNeeds& t : kTypeNeeds) {
    if (t.type == props.m_RecurrenceType) needs = &t;
  }
  // A daily pattern with interval 0 sends on the weekdays of the mask.
  static const TypeNeeds kWeekdays{kRecursDaily, "daily on weekdays", {"mask"}};
  if (props.m_RecurrenceType == kRecursDaily && props.m_Interval == 0) needs = &kWeekdays;
  if (needs == nullptr) return;

  std::vector<std::string_view> missing;
  for (std::string_view option : needs->options) {
    if (!args.Has(option)) missing.push_back(option);
  }
  const std::string type = "--type " + std::to_string(needs->type) + " (" + needs->name + ")";
  if (!missing.empty()) throw UsageError(type + " needs " + OptionList(missing));
  const auto& options = needs->options;
  if (props.m_DayOfWeekMask == 0 && std::find(options.begin(), options.end(), "mask") != options.end()) {
    throw UsageError(type + " needs a --mask with at least one weekday");
  }
  // Every 0 weeks or months is no pattern (the engine would list one day
  // over and over); only a daily pattern gives 0 a meaning.
  const bool counts = needs->type == kRecursWeekly || needs->type == kRecursMonthly || needs->type == kRecursMonthNth;
  if (counts && props.m_Interval == 0) throw UsageError(type + " needs an --interval of 1 or more");
}

}  // namespace

std::vector<OptionDef> PatternOptionDefs() {
  return {{"type"},  {"interval"}, {"mask"}, {"day-of-month"}, {"month"},
          {"instance"}, {"start"}, {"time"}, {"first-dow"}, {"outlook-version"}};
}

const char* const kPatternOptionsHelp =
    "Pattern options:\n"
    "  --type T            0 daily, 1 weekly, 2 monthly on a day, 3 monthly on the\n"
    "                      nth weekday, 5 yearly on a day, 6 yearly on the nth\n"
    "                      weekday (required; other numbers are passed on as they\n"
    "                      are and yield no occurrences)\n"
    "  --interval N        every N days, weeks or months (0..999, default 1); a\n"
    "                      daily pattern with 0 sends on the --mask weekdays\n"
    "  --mask M            weekdays added together: Sunday 1, Monday 2, Tuesday 4,\n"
    "                      Wednesday 8, Thursday 16, Friday 32, Saturday 64 (0..127)\n"
    "  --day-of-month D    day of the month, 1..31 (a longer day than the month has\n"
    "                      falls on its last day)\n"
    "  --month M           month of the year, 1..12\n"
    "  --instance I        which matching weekday of the month: 1..4, 5 = the last\n"
    "  --start YYYY-MM-DD  first day of the pattern (required)\n"
    "  --time HH:MM        send time of day (required)\n"
    "  --first-dow F       first day of the week that weekly patterns count their\n"
    "                      weeks from: 1 Sunday .. 7 Saturday, 0 the locale's own\n"
    "                      (default: the mail client's calendar option, read from\n"
    "                      the registry; the locale's own when it is not set)\n"
    "  --outlook-version V the mail client version whose option is read (default\n"
    "                      16.0)\n";

CMailProps PatternFromArgs(const ParsedArgs& args) {
  CMailProps props;
  props.m_IsRecurring = true;
  props.m_RecurrenceType = ParseInteger("type", args.Required("type"), kMinInt, kMaxInt);
  props.m_Interval = OptionalInteger(args, "interval", 1, 0, 999);
  props.m_DayOfWeekMask = OptionalInteger(args, "mask", 0, 0, 127);
  props.m_DayOfMonth = OptionalInteger(args, "day-of-month", 0, 1, 31);
  props.m_MonthOfYear = OptionalInteger(args, "month", 0, 1, 12);
  props.m_Instance = OptionalInteger(args, "instance", 0, 1, kInstanceLast);
  props.m_PatternStartDate = ToOleDate(ParseIsoDate("start", args.Required("start")));
  props.m_StartTime = ToOleTime(ParseClockTime("time", args.Required("time")));
  RequireTypeOptions(args, props);
  if (args.Has("first-dow")) {
    SetFirstDOW(OptionalInteger(args, "first-dow", 0, 0, 7));
  } else {
    // As the add-in does at start-up: the client's own calendar option.
    g_OutlookVersion = settings::RecordedClientVersion(args.Value("outlook-version").value_or(kDefaultClientVersion));
    Main::ApplyClientFirstDOW();
  }
  return props;
}

std::vector<OptionDef> EndOptionDefs() {
  return {{"occurrences"}, {"no-end", false}, {"end-date"}};
}

const char* const kEndOptionsHelp =
    "End options (none leaves the end unset; --occurrences and --end-date may\n"
    "go together, as the recurrence dialog stores both):\n"
    "  --occurrences N     end after N sends (1..999)\n"
    "  --end-date YYYY-MM-DD  end on that day (kept for the dialog; the sends\n"
    "                      are counted by --occurrences)\n"
    "  --no-end            recur without end (excludes the other two)\n";

void ApplyEndOptions(const ParsedArgs& args, CMailProps& props) {
  if (args.Has("no-end") && (args.Has("occurrences") || args.Has("end-date"))) {
    throw UsageError("--no-end excludes --occurrences and --end-date");
  }
  props.m_Occurrences = OptionalInteger(args, "occurrences", 0, 1, 999);
  props.m_NoEndDate = args.Has("no-end");
  if (auto end = args.Value("end-date")) {
    props.m_PatternEndDate = ToOleDate(ParseIsoDate("end-date", *end));
  }
}

}  // namespace qorvane::tool
