// Variant conversions with the runtime's rules.
#include "base/variant.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "base/runtime_error.h"

namespace qorvane {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const char x = (a[i] >= 'A' && a[i] <= 'Z') ? static_cast<char>(a[i] + 32) : a[i];
    const char y = (b[i] >= 'A' && b[i] <= 'Z') ? static_cast<char>(b[i] + 32) : b[i];
    if (x != y) return false;
  }
  return true;
}

}  // namespace

void Variant::NarrowIfLong() noexcept {
  const double v = std::get<double>(value_);
  if (v >= std::numeric_limits<std::int32_t>::min() && v <= std::numeric_limits<std::int32_t>::max())
    value_ = static_cast<std::int32_t>(v);
}

std::optional<double> Variant::NumericValue() const {
  switch (GetKind()) {
    case Kind::Empty: return 0.0;
    case Kind::Bool: return AsBool() ? -1.0 : 0.0;
    case Kind::Long: return static_cast<double>(AsLong());
    case Kind::Double: return AsDouble();
    case Kind::Date: return std::nullopt;
    case Kind::String: return ParseNumber(AsString());
  }
  return std::nullopt;
}

std::optional<double> ParseNumber(std::string_view text) {
  text = TrimBlanks(text);
  if (text.empty()) return std::nullopt;
  std::size_t i = 0;
  if (text[i] == '+' || text[i] == '-') ++i;
  std::size_t digits = 0;
  while (i < text.size() && text[i] >= '0' && text[i] <= '9') ++i, ++digits;
  if (i < text.size() && text[i] == '.') {
    ++i;
    while (i < text.size() && text[i] >= '0' && text[i] <= '9') ++i, ++digits;
  }
  if (digits == 0) return std::nullopt;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    std::size_t j = i + 1;
    if (j < text.size() && (text[j] == '+' || text[j] == '-')) ++j;
    const std::size_t expStart = j;
    while (j < text.size() && text[j] >= '0' && text[j] <= '9') ++j;
    if (j == expStart) return std::nullopt;
    i = j;
  }
  if (i != text.size()) return std::nullopt;
  const std::string copy(text);
  return std::strtod(copy.c_str(), nullptr);
}

std::int32_t CLng(double value) {
  if (!std::isfinite(value)) Raise(err::kOverflow);
  const double rounded = std::nearbyint(value);  // default rounding: half to even
  if (rounded < std::numeric_limits<std::int32_t>::min() || rounded > std::numeric_limits<std::int32_t>::max())
    Raise(err::kOverflow);
  return static_cast<std::int32_t>(rounded);
}

std::int32_t CLng(std::string_view text) {
  const std::optional<double> number = ParseNumber(text);
  if (!number) Raise(err::kTypeMismatch);
  return CLng(*number);
}

bool CBool(std::string_view text) {
  const std::string_view trimmed = TrimBlanks(text);
  if (EqualsNoCase(trimmed, "true")) return true;
  if (EqualsNoCase(trimmed, "false")) return false;
  const std::optional<double> number = ParseNumber(trimmed);
  if (!number) Raise(err::kTypeMismatch);
  return *number != 0.0;
}

std::string NumberText(double value) {
  if (std::isfinite(value) && value == std::trunc(value) && std::fabs(value) < 1e15) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.0f", value);
    return buffer;
  }
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.15G", value);
  std::string text = buffer;
  // %G keeps trailing zeros only in the exponent form's mantissa; trim them.
  const std::size_t e = text.find('E');
  std::string mantissa = text.substr(0, e);
  const std::string exponent = e == std::string::npos ? "" : text.substr(e);
  if (mantissa.find('.') != std::string::npos) {
    while (!mantissa.empty() && mantissa.back() == '0') mantissa.pop_back();
    if (!mantissa.empty() && mantissa.back() == '.') mantissa.pop_back();
  }
  return mantissa + exponent;
}

}  // namespace qorvane
