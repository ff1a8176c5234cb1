// Parsing of the qorvane tool's command line; see arg_parser.h.
#include "tools/arg_parser.h"

#include <algorithm>
#include <charconv>

#include "base/ole_date.h"

namespace qorvane::tool {

namespace {

std::string Dashed(std::string_view name) { return "--" + std::string(name); }

const OptionDef* FindOption(std::span<const OptionDef> options, std::string_view name) {
  auto it = std::find_if(options.begin(), options.end(), [&](const OptionDef& s) { return s.name == name; });
  return it == options.end() ? nullptr : &*it;
}

bool AllDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// Digits only, fixed width; from_chars alone would also take "+" or blanks
// in some library versions, and "2025-3-3" should not pass as a date.
int FixedDigits(std::string_view option, std::string_view whole, std::string_view part,
                const char* expected) {
  if (!AllDigits(part)) {
    throw UsageError(Dashed(option) + ": '" + std::string(whole) + "' is not of the form " + expected);
  }
  int value = 0;
  std::from_chars(part.data(), part.data() + part.size(), value);
  return value;
}

// `shown` is how the message names what was given: "--count", "NUMBER".
std::int32_t ParseBoundedInteger(const std::string& shown, std::string_view text, std::int32_t low,
                                 std::int32_t high) {
  std::string_view digits = text;
  if (!digits.empty() && digits.front() == '-') digits.remove_prefix(1);
  std::int64_t value = 0;
  bool ok = AllDigits(digits) && digits.size() <= 11;
  if (ok) {
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    ok = ec == std::errc() && end == text.data() + text.size();
  }
  if (!ok) {
    throw UsageError(shown + ": '" + std::string(text) + "' is not a whole number");
  }
  if (value < low || value > high) {
    throw UsageError(shown + ": " + std::string(text) + " is outside " + std::to_string(low) + ".." +
                     std::to_string(high));
  }
  return static_cast<std::int32_t>(value);
}

}  // namespace

ParsedArgs ParsedArgs::Parse(std::span<const std::string> args, std::span<const OptionDef> options,
                             std::size_t max_positional) {
  ParsedArgs parsed;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg.size() < 2 || arg.compare(0, 2, "--") != 0) {
      if (parsed.positional_.size() >= max_positional) {
        throw UsageError("unexpected argument '" + arg + "'");
      }
      parsed.positional_.push_back(arg);
      continue;
    }
    std::string_view body(arg);
    body.remove_prefix(2);
    std::optional<std::string> attached;
    if (auto eq = body.find('='); eq != std::string_view::npos) {
      attached = std::string(body.substr(eq + 1));
      body = body.substr(0, eq);
    }
    const OptionDef* option = FindOption(options, body);
    if (option == nullptr) {
      throw UsageError("unknown option '--" + std::string(body) + "'");
    }
    if (!option->repeatable && parsed.Has(body)) {
      throw UsageError(Dashed(body) + " is given more than once");
    }
    std::string value;
    if (option->takes_value) {
      if (attached) {
        value = *attached;
      } else if (i + 1 < args.size() && args[i + 1].compare(0, 2, "--") != 0) {
        value = args[++i];
      } else {
        throw UsageError(Dashed(body) + " needs a value");
      }
    } else if (attached) {
      throw UsageError(Dashed(body) + " takes no value");
    }
    parsed.entries_.push_back({std::string(body), std::move(value)});
  }
  return parsed;
}

bool ParsedArgs::Has(std::string_view name) const {
  return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.name == name; });
}

std::optional<std::string> ParsedArgs::Value(std::string_view name) const {
  for (const Entry& e : entries_) {
    if (e.name == name) return e.value;
  }
  return std::nullopt;
}

std::string ParsedArgs::Required(std::string_view name) const {
  auto value = Value(name);
  if (!value) throw UsageError(Dashed(name) + " is required");
  return *value;
}

std::vector<std::string> ParsedArgs::Values(std::string_view name) const {
  std::vector<std::string> values;
  for (const Entry& e : entries_) {
    if (e.name == name) values.push_back(e.value);
  }
  return values;
}

std::int32_t ParseInteger(std::string_view option, std::string_view text, std::int32_t low,
                          std::int32_t high) {
  return ParseBoundedInteger(Dashed(option), text, low, high);
}

std::int32_t ParseIntegerArgument(std::string_view name, std::string_view text, std::int32_t low,
                                  std::int32_t high) {
  return ParseBoundedInteger(std::string(name), text, low, high);
}

DateParts ParseIsoDate(std::string_view option, std::string_view text) {
  constexpr const char* kForm = "YYYY-MM-DD";
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') {
    throw UsageError(Dashed(option) + ": '" + std::string(text) + "' is not of the form " + kForm);
  }
  DateParts d;
  d.year = FixedDigits(option, text, text.substr(0, 4), kForm);
  d.month = FixedDigits(option, text, text.substr(5, 2), kForm);
  d.day = FixedDigits(option, text, text.substr(8, 2), kForm);
  if (d.year < 100 || d.month < 1 || d.month > 12 || d.day < 1 ||
      d.day > DaysInMonth(d.year, d.month)) {
    throw UsageError(Dashed(option) + ": '" + std::string(text) +
                     "' is not a calendar day between the years 100 and 9999");
  }
  return d;
}

ClockParts ParseClockTime(std::string_view option, std::string_view text) {
  constexpr const char* kForm = "HH:MM";
  auto colon = text.find(':');
  if (colon == std::string_view::npos || colon == 0 || colon > 2 || text.size() != colon + 3) {
    throw UsageError(Dashed(option) + ": '" + std::string(text) + "' is not of the form " + kForm);
  }
  ClockParts c;
  c.hour = FixedDigits(option, text, text.substr(0, colon), kForm);
  c.minute = FixedDigits(option, text, text.substr(colon + 1), kForm);
  if (c.hour > 23 || c.minute > 59) {
    throw UsageError(Dashed(option) + ": '" + std::string(text) + "' is not a time of day");
  }
  return c;
}

std::pair<DateParts, ClockParts> ParseIsoDateTime(std::string_view option, std::string_view text) {
  if (text.size() < 11 || (text[10] != ' ' && text[10] != 'T')) {
    throw UsageError(Dashed(option) + ": '" + std::string(text) + "' is not of the form YYYY-MM-DD HH:MM");
  }
  return {ParseIsoDate(option, text.substr(0, 10)), ParseClockTime(option, text.substr(11))};
}

}  // namespace qorvane::tool
