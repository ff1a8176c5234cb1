// LCase over Unicode's simple lower-case mapping, Trim over blanks.
#include "base/runtime_text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "base/utf8_text.h"

namespace qorvane {
namespace {

struct LowerRun {
  char32_t first;
  char32_t last;
  std::int32_t delta;
  char32_t stride;
};

constexpr LowerRun kLowerRuns[] = {
#include "base/lower_case_table.inc"
};

}  // namespace

char32_t LowerCase(char32_t c) noexcept {
  if (c < 0x80) return (c >= 'A' && c <= 'Z') ? c + 0x20 : c;
  // The last run that starts at or before c is the only one that may hold it.
  const auto after = std::upper_bound(std::begin(kLowerRuns), std::end(kLowerRuns), c,
                                      [](char32_t value, const LowerRun& run) { return value < run.first; });
  if (after == std::begin(kLowerRuns)) return c;
  const LowerRun& run = *std::prev(after);
  if (c > run.last || (c - run.first) % run.stride != 0) return c;
  return static_cast<char32_t>(static_cast<std::int32_t>(c) + run.delta);
}

std::string LCase(std::string_view utf8) {
  std::string lower;
  lower.reserve(utf8.size());
  for (std::size_t pos = 0; pos < utf8.size();) {
    const std::size_t start = pos;
    bool valid = false;
    const char32_t c = DecodeUtf8(utf8, pos, valid);
    if (valid) {
      AppendUtf8(lower, LowerCase(c));
    } else {
      lower.append(utf8.substr(start, pos - start));
    }
  }
  return lower;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) noexcept {
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() && j < b.size()) {
    bool validA = false;
    bool validB = false;
    // A malformed byte decodes as a value no character has, so it only ever
    // equals the same malformed byte.
    const char32_t x = DecodeUtf8(a, i, validA);
    const char32_t y = DecodeUtf8(b, j, validB);
    if (validA != validB || (validA ? LowerCase(x) != LowerCase(y) : x != y)) return false;
  }
  return i == a.size() && j == b.size();
}

std::string_view LTrim(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::string_view RTrim(std::string_view text) noexcept {
  const std::size_t last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

std::string_view Trim(std::string_view text) noexcept { return LTrim(RTrim(text)); }

}  // namespace qorvane
