// Fuzz target: dates as text in the locales the add-in reads and writes them
// in (the three dates of the schedule line, "NextOccurence" in the registry).
//
// The first byte picks a built-in locale; the rest is text. Text that parses
// as a date must format to text that parses back to the same date, to the
// second. When the text is at least eight bytes
// long, its first eight are also taken as a date value: every date in the
// supported range (years 100 to 9999) must format and parse back to itself;
// any other value a mail client's date can hold (FILETIME's reach, well
// within a billion days either way) must merely format.
//
// With the first byte past the built-in locales, a locale is made from the
// text's first two lines taken as glibc's D_FMT and T_FMT, as for a system
// locale the table lacks; the third line is the text. Such a locale owes no
// round trip (its pattern may drop the year), only no crash.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "base/ole_date.h"
#include "fuzz/fuzz_support.h"
#include "platform/pattern_locale.h"

using qorvane::fuzz::Check;

namespace {

// 1 January 100 and the last second of 31 December 9999.
constexpr double kFirstDate = -657434.0;
constexpr double kLastDate = 2958465.99998843;
// Past any date a client hands over; NaN, infinities and values beyond the
// 64-bit day count are no dates at all and are not formatted.
constexpr double kFarthestDate = 1e9;

std::string Parts(double date) {
  qorvane::CivilDate civil;
  qorvane::TimeOfDay time;
  qorvane::SplitRounded(date, civil, time);
  return std::to_string(civil.year) + "-" + std::to_string(civil.month) + "-" + std::to_string(civil.day) + " " +
         std::to_string(time.hour) + ":" + std::to_string(time.minute) + ":" + std::to_string(time.second);
}

// A value of day zero whose time rounds up to midnight: its text is a time
// alone ("12:00:00 AM"), as the runtime writes it, and cannot carry the day.
bool RoundsOffDayZero(double date) {
  return qorvane::DatePart(date) == 0.0 && std::llround(qorvane::TimePart(date) * 86400.0) >= 86400;
}

// Which parts a date's text shows is decided before rounding, as the
// runtime does: a time that rounds to midnight still shows "12:00:00 AM", and
// reads back as the date alone. So the text need not be the same after one
// round trip, but must be after two.
void CheckRoundTrip(const qorvane::Locale& locale, double date, const std::string& source) {
  const std::string text = locale.FormatGeneralDate(date);
  const std::optional<double> again = locale.ParseDate(text);
  Check(again.has_value(), locale.Name() + ": \"" + text + "\" (from " + source + ") does not parse");
  Check(Parts(*again) == Parts(date) || RoundsOffDayZero(date),
        locale.Name() + ": \"" + text + "\" (from " + source + ") reads as " + Parts(*again) + ", not " +
            Parts(date));
  const std::string settled = locale.FormatGeneralDate(*again);
  const std::optional<double> third = locale.ParseDate(settled);
  Check(third && locale.FormatGeneralDate(*third) == settled,
        locale.Name() + ": \"" + settled + "\" does not read back to itself");
}

bool InRange(double date) { return std::isfinite(date) && date >= kFirstDate && date <= kLastDate; }

std::vector<std::string> Lines(const std::string& text, std::size_t count) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (lines.size() + 1 < count) {
    const std::size_t end = text.find('\n', start);
    if (end == std::string::npos) break;
    lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  lines.push_back(text.substr(start));
  return lines;
}

const std::vector<std::string>& Builtins() {
  static const std::vector<std::string> names = qorvane::BuiltinLocaleNames();
  return names;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qorvane::fuzz::QuietLog();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t choice = data[0];
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);

  if (choice >= Builtins().size()) {
    const std::vector<std::string> lines = Lines(text, 3);
    if (lines.size() < 3) return 0;
    qorvane::LocalePatterns patterns{"xx-XX", qorvane::PatternFromStrftime(lines[0]),
                                     qorvane::PatternFromStrftime(lines[1]), qorvane::TimeSeparatorOf(lines[1]),
                                     "AM", "PM", 1};
    const qorvane::PatternLocale locale(std::move(patterns));
    if (const std::optional<double> date = locale.ParseDate(lines[2]); date && InRange(*date)) {
      locale.ParseDate(locale.FormatGeneralDate(*date));
    }
    locale.FormatGeneralDate(45719.395833333336);
    return 0;
  }

  const qorvane::PatternLocale locale(*qorvane::BuiltinLocalePatterns(Builtins()[choice]));
  if (const std::optional<double> date = locale.ParseDate(text)) {
    Check(InRange(*date), locale.Name() + ": \"" + text + "\" reads as a date outside the years 100 to 9999");
    CheckRoundTrip(locale, *date, "\"" + text + "\"");
  }
  if (text.size() >= sizeof(double)) {
    double value = 0;
    std::memcpy(&value, text.data(), sizeof value);
    if (InRange(value)) {
      CheckRoundTrip(locale, value, "the value " + std::to_string(value));
    } else if (std::fabs(value) <= kFarthestDate) {
      locale.FormatGeneralDate(value);
    }
  }
  return 0;
}
