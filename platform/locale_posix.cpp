// The current locale on POSIX: a built-in table row when the name is one we
// know, else patterns and separators from the glibc locale's nl_langinfo,
// else en-US.
#include <langinfo.h>
#include <locale.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "platform/locale.h"
#include "platform/pattern_locale.h"

namespace qorvane {

namespace {

std::unique_ptr<PatternLocale> g_current;

[[maybe_unused]] const bool kNumbersFollowLocale = FollowLocaleInNumberConversions();

LocalePatterns UnitedStates() { return *BuiltinLocalePatterns("en-US"); }

// glibc counts the first weekday from the week's start date: 1 is the day of
// _NL_TIME_WEEK_1STDAY, which is a Sunday (19971130) for nearly every locale
// and a Monday (19971201) for the rest.
int FirstDayOfWeekOf(locale_t locale) {
#ifdef __GLIBC__  // the two items are glibc's own
  const int first = static_cast<unsigned char>(*nl_langinfo_l(_NL_TIME_FIRST_WEEKDAY, locale));
  const auto weekStart = static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(nl_langinfo_l(_NL_TIME_WEEK_1STDAY, locale)));
  const int startIndex = weekStart == 19971201u ? 1 : 0;  // 0 = Sunday
  if (first < 1 || first > 7) return 1;
  return (startIndex + first - 1) % 7 + 1;
#else
  return 1;
#endif
}

// Patterns read from an installed glibc locale; nothing when it isn't installed.
std::optional<LocalePatterns> GlibcPatterns(const std::string& name) {
  locale_t locale = newlocale(LC_TIME_MASK | LC_NUMERIC_MASK, name.c_str(), static_cast<locale_t>(0));
  if (locale == static_cast<locale_t>(0)) return std::nullopt;
  LocalePatterns p;
  p.name = name;
  p.shortDate = PatternFromStrftime(nl_langinfo_l(D_FMT, locale));
  p.longTime = PatternFromStrftime(nl_langinfo_l(T_FMT, locale));
  p.am = nl_langinfo_l(AM_STR, locale);
  p.pm = nl_langinfo_l(PM_STR, locale);
  p.firstDayOfWeek = FirstDayOfWeekOf(locale);
  p.decimal = nl_langinfo_l(RADIXCHAR, locale);
  p.thousands = nl_langinfo_l(THOUSEP, locale);
  freelocale(locale);
  if (p.decimal.empty()) p.decimal = ".";
  // Locales on a 24-hour clock often leave the designators empty; a "tt" in
  // a pattern must still write something.
  if (p.am.empty()) p.am = "AM";
  if (p.pm.empty()) p.pm = "PM";
  p.timeSeparator = TimeSeparatorOf(p.longTime);
  return p;
}

std::optional<LocalePatterns> PatternsFor(std::string_view name) {
  const std::string normalised = NormaliseLocaleName(name);
  if (normalised.empty() || normalised == "C" || normalised == "POSIX") {
    LocalePatterns p = UnitedStates();
    if (!normalised.empty()) p.name = std::string(name);
    return p;
  }
  if (auto row = BuiltinLocalePatterns(normalised)) return row;
  std::string glibcName(name);
  if (auto p = GlibcPatterns(glibcName)) return p;
  // "xx-YY" as glibc spells it.
  for (char& c : glibcName) c = c == '-' ? '_' : c;
  if (auto p = GlibcPatterns(glibcName)) return p;
  return GlibcPatterns(glibcName + ".UTF-8");
}

std::string UserLocaleName() {
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    if (const char* value = std::getenv(variable); value && *value) return value;
  }
  return {};
}

}  // namespace

const Locale& CurrentLocale() {
  if (!g_current) SelectUserLocale();
  return *g_current;
}

bool SelectLocale(std::string_view name) {
  auto patterns = PatternsFor(name);
  if (!patterns || name.empty()) return false;
  g_current = std::make_unique<PatternLocale>(std::move(*patterns));
  return true;
}

void SelectUserLocale() {
  auto patterns = PatternsFor(UserLocaleName());
  g_current = std::make_unique<PatternLocale>(patterns ? std::move(*patterns) : UnitedStates());
}

}  // namespace qorvane
