// Variant conversions with the runtime's rules.
#include "base/variant.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <utility>

#include "base/runtime_error.h"
#include "base/runtime_text.h"

namespace qorvane {
namespace {

NumberSeparatorsSource g_separatorsSource = nullptr;

// The white space the runtime skips around a number: blanks, tabs, line ends.
bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool StartsWith(std::string_view text, std::string_view prefix) {
  return !prefix.empty() && text.substr(0, prefix.size()) == prefix;
}

// The digits of a &H or &O literal. Up to 32 bits they are a Long's bits;
// a longer literal keeps its size (capped) so that CLng reports an overflow.
std::optional<double> RadixLiteral(std::string_view digits, unsigned radix) {
  if (digits.empty()) return std::nullopt;
  constexpr std::uint64_t kCap = std::uint64_t{1} << 40;
  std::uint64_t value = 0;
  for (const char c : digits) {
    const char lower = static_cast<char>(c | 0x20);
    const unsigned digit = IsDigit(c) ? static_cast<unsigned>(c - '0')
                           : (lower >= 'a' && lower <= 'f') ? static_cast<unsigned>(lower - 'a' + 10)
                                                             : radix;
    if (digit >= radix) return std::nullopt;
    value = std::min(value * radix + digit, kCap);
  }
  if (value > 0xFFFFFFFFu) return static_cast<double>(value);
  return static_cast<double>(static_cast<std::int32_t>(static_cast<std::uint32_t>(value)));
}

// Reads a number left to right, copying what matters of it into a plain
// "-123.45e6" for strtod.
class NumberReader {
 public:
  NumberReader(std::string_view text, const NumberSeparators& separators) : text_(text) {
    decimal_ = separators.decimal.empty() ? std::string_view(".") : std::string_view(separators.decimal);
    if (!separators.thousands.empty()) groupMarks_[0] = separators.thousands;
    // Where a no-break space groups digits, people type a plain blank.
    if (separators.thousands == "\xC2\xA0" || separators.thousands == "\xE2\x80\xAF") groupMarks_[1] = " ";
  }

  std::optional<double> Read() {
    SkipSpace();
    char sign = 0;
    bool parenthesised = false;
    if (Peek('+') || Peek('-')) {
      sign = text_[pos_++];
      SkipSpace();
    } else if (Peek('(')) {
      parenthesised = true;
      ++pos_;
      SkipSpace();
    }
    if (Peek('&')) return sign || parenthesised ? std::nullopt : ReadRadixLiteral();
    if (!ReadDecimal()) return std::nullopt;
    SkipSpace();
    if (!sign && !parenthesised && (Peek('+') || Peek('-'))) {
      sign = text_[pos_++];
      SkipSpace();
    }
    if (parenthesised) {
      if (!Peek(')')) return std::nullopt;
      ++pos_;
      SkipSpace();
    }
    if (pos_ != text_.size()) return std::nullopt;
    const double value = std::strtod(plain_.c_str(), nullptr);
    return sign == '-' || parenthesised ? -value : value;
  }

 private:
  bool Peek(char c) const { return pos_ < text_.size() && text_[pos_] == c; }
  std::string_view Rest() const { return text_.substr(pos_); }
  void SkipSpace() {
    while (pos_ < text_.size() && IsSpace(text_[pos_])) ++pos_;
  }

  void TakeDigits(std::size_t& count) {
    while (pos_ < text_.size() && IsDigit(text_[pos_])) {
      plain_ += text_[pos_++];
      ++count;
    }
  }

  bool TakeGroupMark() {
    for (const std::string_view mark : groupMarks_) {
      if (StartsWith(Rest(), mark)) {
        pos_ += mark.size();
        return true;
      }
    }
    return false;
  }

  // "&H" or "&O" and the literal's digits, then only white space.
  std::optional<double> ReadRadixLiteral() {
    if (pos_ + 1 >= text_.size()) return std::nullopt;
    const char kind = static_cast<char>(text_[pos_ + 1] | 0x20);
    const unsigned radix = kind == 'h' ? 16 : kind == 'o' ? 8 : 0;
    if (radix == 0) return std::nullopt;
    pos_ += 2;
    const std::size_t start = pos_;
    while (pos_ < text_.size() && !IsSpace(text_[pos_])) ++pos_;
    const std::string_view digits = text_.substr(start, pos_ - start);
    SkipSpace();
    if (pos_ != text_.size()) return std::nullopt;
    return RadixLiteral(digits, radix);
  }

  // Digits with group marks after the first, a decimal part, an exponent.
  bool ReadDecimal() {
    std::size_t digits = 0;
    for (;;) {
      TakeDigits(digits);
      if (digits == 0 || StartsWith(Rest(), decimal_) || !TakeGroupMark()) break;
    }
    if (StartsWith(Rest(), decimal_)) {
      pos_ += decimal_.size();
      plain_ += '.';
      TakeDigits(digits);
    }
    if (digits == 0) return false;
    if (Peek('e') || Peek('E')) {
      plain_ += text_[pos_++];
      if (Peek('+') || Peek('-')) plain_ += text_[pos_++];
      std::size_t exponentDigits = 0;
      TakeDigits(exponentDigits);
      if (exponentDigits == 0) return false;
    }
    return true;
  }

  std::string_view text_;
  std::size_t pos_ = 0;
  std::string_view decimal_;
  std::string_view groupMarks_[2];
  std::string plain_;
};

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

NumberSeparatorsSource SetNumberSeparatorsSource(NumberSeparatorsSource source) noexcept {
  return std::exchange(g_separatorsSource, source);
}

NumberSeparators CurrentNumberSeparators() { return g_separatorsSource ? g_separatorsSource() : NumberSeparators(); }

std::optional<double> ParseNumber(std::string_view text, const NumberSeparators& separators) {
  return NumberReader(text, separators).Read();
}

std::optional<double> ParseNumber(std::string_view text) { return ParseNumber(text, CurrentNumberSeparators()); }

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
  const std::string_view trimmed = Trim(text);
  if (EqualsIgnoringCase(trimmed, "true")) return true;
  if (EqualsIgnoringCase(trimmed, "false")) return false;
  const std::optional<double> number = ParseNumber(text);
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
