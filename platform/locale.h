// The user's locale as the add-in needs it: the runtime's "general date"
// text of a date-time (CStr of a date) and its reverse (CDate), the time
// format pattern, the time separator, the first day of the week, and the
// separators numbers are read with.
//
// Lifecycle: one process-wide current locale, chosen at start-up from the
// user's settings (Windows: the user default locale; POSIX: LC_ALL, LC_TIME,
// LANG) and replaceable with SelectLocale (the command-line tool's --locale,
// tests pinning their locale). Used on the UI thread only.
//
// Windows answers through the OLE Automation conversions and NLS, so that
// text written by earlier versions reads back. POSIX answers from a built-in
// table of Windows-style patterns for common locales (so that a line written
// on one platform reads back on the other), falling back to patterns converted
// from nl_langinfo, and to en-US when nothing is set.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qorvane {

class Locale {
 public:
  virtual ~Locale() = default;

  // A name like "en-US" (the name the locale was selected by).
  virtual std::string Name() const = 0;

  // General date format: the short date alone when the time part is zero,
  // the long time alone when the date part is zero (1899-12-30), otherwise
  // short date, one blank, long time. Zero reads as midnight ("12:00:00 AM").
  virtual std::string FormatGeneralDate(double date) const = 0;

  // Converts text in this locale's formats to a date-time; nothing when the
  // text is not a date, a time or both.
  virtual std::optional<double> ParseDate(std::string_view text) const = 0;

  // Windows-style patterns of this locale: "h:mm:ss tt", "M/d/yyyy".
  virtual std::string TimeFormat() const = 0;
  virtual std::string ShortDateFormat() const = 0;
  virtual std::string TimeSeparator() const = 0;

  // 1 = Sunday .. 7 = Saturday.
  virtual int FirstDayOfWeek() const = 0;

  // "." and "," in en-US, "," and "." in de-DE; the thousands separator may
  // be empty (no grouping) or a no-break space.
  virtual std::string DecimalSeparator() const = 0;
  virtual std::string ThousandSeparator() const = 0;
};

// The process-wide current locale.
const Locale& CurrentLocale();

// Makes the named locale current ("en-US", "en-GB", "de-DE", "fr-FR", ...).
// Returns false, changing nothing, when the name is unknown.
bool SelectLocale(std::string_view name);

// Back to the user's own locale settings.
void SelectUserLocale();

// Makes base's number conversions (CLng, IsNumeric) read with the current
// locale's separators, whichever locale is current when they run. Each
// platform's locale file calls it once at start-up; true for that purpose.
bool FollowLocaleInNumberConversions();

}  // namespace qorvane
