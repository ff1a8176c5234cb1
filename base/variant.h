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

// Parses numeric text the way IsNumeric accepts it: surrounding blanks, an
// optional sign, digits with an optional '.', an optional exponent.
std::optional<double> ParseNumber(std::string_view text);

// CLng: rounds half to even; raises 13 for non-numeric text, 6 out of range.
std::int32_t CLng(double value);
std::int32_t CLng(std::string_view text);
// CBool of text: a number (non-zero is true) or "True"/"False" in any case;
// raises 13 for anything else.
bool CBool(std::string_view text);

// CStr of a number: integers plainly, others with up to 15 significant digits.
std::string NumberText(double value);

}  // namespace qorvane
