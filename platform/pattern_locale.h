// A Locale that formats and reads dates from Windows-style patterns alone, with
// no help from the operating system. POSIX builds use it for every locale; on
// Windows it is what the tests hold the system's conversions against, so that
// a line written on one platform reads back on the other.
//
// Patterns use the NLS tokens: d dd ddd dddd, M MM MMM MMMM, y yy yyyy,
// h hh H HH, m mm, s ss, t tt and 'quoted literals'; any other character is
// copied as it is.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/locale.h"

namespace qorvane {

struct LocalePatterns {
  std::string name;           // "en-US"
  std::string shortDate;      // "M/d/yyyy"
  std::string longTime;       // "h:mm:ss tt"
  std::string timeSeparator;  // ":"
  std::string am;             // "AM"
  std::string pm;             // "PM"
  int firstDayOfWeek = 1;     // 1 = Sunday .. 7 = Saturday
  std::string decimal = ".";
  std::string thousands = ",";
};

class PatternLocale final : public Locale {
 public:
  explicit PatternLocale(LocalePatterns patterns);

  std::string Name() const override { return patterns_.name; }
  std::string FormatGeneralDate(double date) const override;
  std::optional<double> ParseDate(std::string_view text) const override;
  std::string TimeFormat() const override { return patterns_.longTime; }
  std::string ShortDateFormat() const override { return patterns_.shortDate; }
  std::string TimeSeparator() const override { return patterns_.timeSeparator; }
  int FirstDayOfWeek() const override { return patterns_.firstDayOfWeek; }
  std::string DecimalSeparator() const override { return patterns_.decimal; }
  std::string ThousandSeparator() const override { return patterns_.thousands; }

  // The order of day, month and year in the short date, which is also the
  // order numbers are read in.
  enum class DateOrder { MDY, DMY, YMD };
  DateOrder Order() const noexcept { return order_; }
  const LocalePatterns& Patterns() const noexcept { return patterns_; }

 private:
  LocalePatterns patterns_;
  DateOrder order_;
};

// "de_DE.UTF-8", "de_DE@euro", "DE-de" -> "de-DE": the language in lower
// case, the region in upper case, '_' read as '-', the encoding and modifier
// of POSIX names dropped. "C" and "POSIX" stay as they are.
std::string NormaliseLocaleName(std::string_view name);

// The built-in row for a locale name (any form NormaliseLocaleName reads).
std::optional<LocalePatterns> BuiltinLocalePatterns(std::string_view name);
// The names of every built-in row, in table order, for tests and --help.
std::vector<std::string> BuiltinLocaleNames();

// A strftime pattern (glibc's D_FMT, T_FMT) as a Windows-style pattern:
// "%d.%m.%Y" -> "dd.MM.yyyy", "%r" -> "hh:mm:ss tt". Literal letters are
// quoted so they cannot be taken for tokens.
std::string PatternFromStrftime(std::string_view strftimePattern);

// The time separator a time pattern uses: the first literal between the hour
// and the minute token (":" for "HH:mm:ss", "." for "H.mm"); ":" when none.
std::string TimeSeparatorOf(std::string_view timePattern);

}  // namespace qorvane
