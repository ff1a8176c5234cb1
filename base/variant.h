// A small tagged value for the places where the add-in takes "any value":
// trace arguments, and the recurrence engine's "a date or a count" limit.
// Conversions follow the runtime's rules (CLng rounds half to even and
// raises 13 or 6, CBool accepts numbers and "True"/"False").
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace qorvane {

// An OLE date-time held as a value of its own, so that it is never mistaken
// for a plain number.
struct DateValue {
  double value = 0.0;
};

class Variant {
 public:
  enum class Kind { Empty, Bool, Long, Double, Date, String };

  Variant() = default;
  Variant(bool v) : value_(v) {}
  Variant(int v) : value_(static_cast<std::int32_t>(v)) {}
  Variant(long v) : value_(static_cast<double>(v)) { NarrowIfLong(); }
  Variant(long long v) : value_(static_cast<double>(v)) { NarrowIfLong(); }
  Variant(double v) : value_(v) {}
  Variant(DateValue v) : value_(v) {}
  Variant(std::string v) : value_(std::move(v)) {}
  Variant(std::string_view v) : value_(std::string(v)) {}
  Variant(const char* v) : value_(std::string(v)) {}

  Kind GetKind() const noexcept { return static_cast<Kind>(value_.index()); }
  bool IsEmpty() const noexcept { return GetKind() == Kind::Empty; }

  bool AsBool() const { return std::get<bool>(value_); }
  std::int32_t AsLong() const { return std::get<std::int32_t>(value_); }
  double AsDouble() const { return std::get<double>(value_); }
  double AsDate() const { return std::get<DateValue>(value_).value; }
  const std::string& AsString() const { return std::get<std::string>(value_); }

  // The value as a number when the runtime's IsNumeric would say so:
  // numbers, Booleans (True = -1), Empty (0) and numeric text.
  std::optional<double> NumericValue() const;

 private:
  void NarrowIfLong() noexcept;
  std::variant<std::monostate, bool, std::int32_t, double, DateValue, std::string> value_;
};

// The separators the runtime reads numbers with, as the user's locale has
// them: "1,000.5" in en-US, "1.000,5" in de-DE. An empty thousands separator
// groups nothing.
struct NumberSeparators {
  std::string decimal = ".";
  std::string thousands = ",";
};

// Where the current separators come from. The locale service installs its
// own (platform/locale.h), so that conversions follow the current locale
// without this layer knowing about locales; until then, "." and ",".
using NumberSeparatorsSource = NumberSeparators (*)();
// Returns the source it replaces.
NumberSeparatorsSource SetNumberSeparatorsSource(NumberSeparatorsSource source) noexcept;
NumberSeparators CurrentNumberSeparators();

// Reads numeric text as IsNumeric and CLng read it (without a currency
// symbol): white space around it; a sign in front or behind, or parentheses
// for a negative number; digits, grouped by the thousands separator anywhere
// after the first digit ("1,000", also "1,5" = 15 where "," groups); the
// decimal separator and more digits; an exponent (e3, E-2); or a hexadecimal
// (&H1F) or octal (&O17) literal, whose 32 bits read as a signed Long
// (&HFFFFFFFF is -1). Nothing when the text is not a number.
std::optional<double> ParseNumber(std::string_view text, const NumberSeparators& separators);
// The same with the current separators.
std::optional<double> ParseNumber(std::string_view text);

// CLng: rounds half to even; raises 13 for non-numeric text, 6 out of range.
// Text is read with the current separators.
std::int32_t CLng(double value);
std::int32_t CLng(std::string_view text);
// CBool of text: a number (non-zero is true) or "True"/"False" in any case;
// raises 13 for anything else.
bool CBool(std::string_view text);

// CStr of a number: integers plainly, others with up to 15 significant digits.
std::string NumberText(double value);

}  // namespace qorvane
