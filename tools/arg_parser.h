// Command-line parsing for the qorvane tool: options of the form "--name
// value" or "--name=value", flags, repeatable options and positional
// arguments, plus the checks that turn option text into numbers, dates and
// times. Every problem is a UsageError, which main turns into one message on
// stderr and exit code 2, so a typo never reaches the engine.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qorvane::tool {

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct OptionDef {
  std::string_view name;  // without the leading "--"
  bool takes_value = true;
  bool repeatable = false;
};

class ParsedArgs {
 public:
  // Raises UsageError for an unknown option, a missing value, a value given
  // to a flag, a single option given twice, or more positional arguments
  // than max_positional. A value must not start with "--" unless it is
  // attached with "=", so that "--count --until ..." names the real mistake.
  static ParsedArgs Parse(std::span<const std::string> args, std::span<const OptionDef> options,
                          std::size_t max_positional);

  bool Has(std::string_view name) const;
  // The value of a single option, if given.
  std::optional<std::string> Value(std::string_view name) const;
  // The value of a single option; UsageError when it is absent.
  std::string Required(std::string_view name) const;
  // Every value of a repeatable option, in command-line order.
  std::vector<std::string> Values(std::string_view name) const;
  const std::vector<std::string>& Positional() const { return positional_; }

 private:
  struct Entry {
    std::string name;
    std::string value;
  };
  std::vector<Entry> entries_;
  std::vector<std::string> positional_;
};

// A whole number in [low, high], written as optional '-' and decimal digits,
// given to the option (named without its "--").
std::int32_t ParseInteger(std::string_view option, std::string_view text, std::int32_t low,
                          std::int32_t high);
// The same for a positional argument, named as the usage names it ("NUMBER").
std::int32_t ParseIntegerArgument(std::string_view name, std::string_view text, std::int32_t low,
                                  std::int32_t high);

// The civil parts the tool accepts on its command line.
struct DateParts {
  int year = 0;
  int month = 0;
  int day = 0;
};
struct ClockParts {
  int hour = 0;
  int minute = 0;
};

// "YYYY-MM-DD", a real calendar day in the years 100..9999 (the range the
// date arithmetic supports; 2025-02-30 is refused rather than rolled over).
DateParts ParseIsoDate(std::string_view option, std::string_view text);
// "HH:MM" or "H:MM", 0..23 and 0..59.
ClockParts ParseClockTime(std::string_view option, std::string_view text);
// "YYYY-MM-DD HH:MM" (a 'T' may stand for the blank).
std::pair<DateParts, ClockParts> ParseIsoDateTime(std::string_view option, std::string_view text);

}  // namespace qorvane::tool
