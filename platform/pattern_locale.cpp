// Formatting and reading dates from Windows-style patterns, the built-in
// locale table and the strftime-to-NLS pattern conversion.
#include "platform/pattern_locale.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "base/ole_date.h"
#include "base/runtime_text.h"
#include "platform/clock.h"

namespace qorvane {

namespace {

struct BuiltinRow {
  const char* name;
  const char* shortDate;
  const char* longTime;
  const char* timeSeparator;
  const char* am;
  const char* pm;
  int firstDayOfWeek;  // 1 = Sunday
  const char* decimal;
  const char* thousands;
};

// Read from GetLocaleInfoEx (LOCALE_SSHORTDATE, LOCALE_STIMEFORMAT, LOCALE_STIME,
// LOCALE_S1159, LOCALE_S2359, LOCALE_IFIRSTDAYOFWEEK, LOCALE_SDECIMAL,
// LOCALE_STHOUSAND) under wine 8, because the point of the table is that our
// text and the Windows build's text agree, and the Windows build is tested there. Rows where recent Windows releases ship a
// different default are marked; the difference never stops a read-back, since
// "3.3.2025" and "03.03.2025" read the same.
//
// Left out on purpose: da-DK and fi-FI (their '.' time separator makes
// "09.30.00" read as a date, on Windows too), ko-KR and zh-TW (the designator
// comes before the time), hu-HU (trailing '.' after the day) and fr-CA
// ("09 h 30 min"); wine cannot read its own text back for any of them.
constexpr const char* kNoBreakSpace = "\xC2\xA0";

constexpr BuiltinRow kBuiltinRows[] = {
    {"en-US", "M/d/yyyy", "h:mm:ss tt", ":", "AM", "PM", 1, ".", ","},
    {"en-GB", "dd/MM/yyyy", "HH:mm:ss", ":", "am", "pm", 2, ".", ","},
    // Recent Windows: d/MM/yyyy and AM/PM.
    {"en-AU", "dd/MM/yyyy", "h:mm:ss tt", ":", "am", "pm", 2, ".", ","},
    // Recent Windows: yyyy-MM-dd.
    {"en-CA", "M/d/yyyy", "h:mm:ss tt", ":", "a.m.", "p.m.", 1, ".", ","},
    {"en-NZ", "d/MM/yyyy", "h:mm:ss tt", ":", "am", "pm", 2, ".", ","},
    {"en-IE", "d/M/yyyy", "HH:mm:ss", ":", "am", "pm", 2, ".", ","},
    {"en-IN", "d/M/yyyy", "h:mm:ss tt", ":", "am", "pm", 1, ".", ","},
    {"en-ZA", "yyyy/MM/dd", "HH:mm:ss", ":", "am", "pm", 1, ",", kNoBreakSpace},
    // Recent Windows: dd.MM.yyyy.
    {"de-DE", "d.M.yyyy", "HH:mm:ss", ":", "AM", "PM", 2, ",", "."},
    {"de-AT", "d.M.yyyy", "HH:mm:ss", ":", "AM", "PM", 2, ",", kNoBreakSpace},
    {"de-CH", "d.M.yyyy", "HH:mm:ss", ":", "AM", "PM", 2, ".", "\xE2\x80\x99"},
    {"fr-FR", "dd/MM/yyyy", "HH:mm:ss", ":", "AM", "PM", 2, ",", kNoBreakSpace},
    {"fr-BE", "dd/MM/yyyy", "HH:mm:ss", ":", "AM", "PM", 2, ",", kNoBreakSpace},
    {"fr-CH", "dd.MM.yyyy", "HH:mm:ss", ":", "AM", "PM", 2, ",", kNoBreakSpace},
    // Recent Windows: dd/MM/yyyy.
    {"es-ES", "d/M/yyyy", "H:mm:ss", ":", "a. m.", "p. m.", 2, ",", "."},
    {"es-MX", "d/M/yyyy", "HH:mm:ss", ":", "a. m.", "p. m.", 1, ".", ","},
    // Recent Windows: dd/MM/yyyy.
    {"it-IT", "d/M/yyyy", "HH:mm:ss", ":", "AM", "PM", 2, ",", "."},
    {"nl-NL", "d-M-yyyy", "HH:mm:ss", ":", "a.m.", "p.m.", 2, ",", "."},
    {"nl-BE", "d/M/yyyy", "HH:mm:ss", ":", "a.m.", "p.m.", 2, ",", "."},
    {"pt-BR", "dd/MM/yyyy", "HH:mm:ss", ":", "AM", "PM", 1, ",", "."},
    // Recent Windows: Monday first.
    {"pt-PT", "dd/MM/yyyy", "HH:mm:ss", ":", "a.m.", "p.m.", 1, ",", kNoBreakSpace},
    {"sv-SE", "yyyy-MM-dd", "HH:mm:ss", ":", "fm", "em", 2, ",", kNoBreakSpace},
    {"nb-NO", "d.M.yyyy", "HH:mm:ss", ":", "a.m.", "p.m.", 2, ",", kNoBreakSpace},
    // Recent Windows: dd.MM.yyyy.
    {"pl-PL", "d.MM.yyyy", "HH:mm:ss", ":", "AM", "PM", 2, ",", kNoBreakSpace},
    {"ru-RU", "dd.MM.yyyy", "HH:mm:ss", ":", "AM", "PM", 2, ",", kNoBreakSpace},
    {"cs-CZ", "d. M. yyyy", "H:mm:ss", ":", "dop.", "odp.", 2, ",", kNoBreakSpace},
    {"tr-TR", "dd.MM.yyyy", "HH:mm:ss", ":", "\xC3\x96\xC3\x96", "\xC3\x96S", 2, ",", "."},
    // Recent Windows: yyyy/MM/dd.
    {"ja-JP", "yyyy/M/d", "H:mm:ss", ":", "\xE5\x8D\x88\xE5\x89\x8D", "\xE5\x8D\x88\xE5\xBE\x8C", 1, ".", ","},
    {"zh-CN", "yyyy/M/d", "HH:mm:ss", ":", "\xE4\xB8\x8A\xE5\x8D\x88", "\xE4\xB8\x8B\xE5\x8D\x88", 2, ".", ","},
};

constexpr const char* kDayNames[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr const char* kMonthNames[] = {"January", "February", "March",     "April",   "May",      "June",
                                       "July",    "August",   "September", "October", "November", "December"};

// Region codes are ASCII letters by definition, so this is all the upper
// case locale names need.
char UpperAscii(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDateSeparator(char c) { return c == '/' || c == '-' || c == '.'; }

void AppendNumber(std::string& out, int value, int width) {
  std::string digits = std::to_string(value);
  if (static_cast<int>(digits.size()) < width) out.append(width - digits.size(), '0');
  out += digits;
}

// The first code point of a designator, for the single 't' token.
std::string_view FirstCodePoint(std::string_view text) {
  if (text.empty()) return text;
  std::size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) ++length;
  return text.substr(0, length);
}

// Calls onToken(letter, count) for each token run and onLiteral(text) for
// everything else, unquoting 'literals' ('' is a quote).
template <typename TokenFn, typename LiteralFn>
void WalkPattern(std::string_view pattern, TokenFn onToken, LiteralFn onLiteral) {
  static constexpr std::string_view kTokenLetters = "dMyhHmstg";
  std::size_t i = 0;
  while (i < pattern.size()) {
    const char c = pattern[i];
    if (c == '\'') {
      std::string literal;
      ++i;
      while (i < pattern.size()) {
        if (pattern[i] == '\'') {
          if (i + 1 < pattern.size() && pattern[i + 1] == '\'') {
            literal += '\'';
            i += 2;
            continue;
          }
          ++i;
          break;
        }
        literal += pattern[i++];
      }
      // '' outside a quoted run is a quote of its own.
      if (literal.empty() && i >= 2 && pattern[i - 1] == '\'' && pattern[i - 2] == '\'') literal = "'";
      onLiteral(std::string_view(literal));
    } else if (kTokenLetters.find(c) != std::string_view::npos) {
      std::size_t run = 1;
      while (i + run < pattern.size() && pattern[i + run] == c) ++run;
      onToken(c, static_cast<int>(run));
      i += run;
    } else {
      onLiteral(pattern.substr(i, 1));
      ++i;
    }
  }
}

std::string ExpandPattern(std::string_view pattern, const CivilDate& date, const TimeOfDay& time, const LocalePatterns& p) {
  std::string out;
  WalkPattern(
      pattern,
      [&](char letter, int count) {
        switch (letter) {
          case 'd':
            if (count <= 2) {
              AppendNumber(out, date.day, count);
            } else {
              const std::int64_t serial = DaysFromCivil(date.year, date.month, date.day) + kOleEpochOffset;
              const std::string_view name = kDayNames[WeekdayIndexSunday0(serial)];
              out += count == 3 ? name.substr(0, 3) : name;
            }
            break;
          case 'M':
            if (count <= 2) {
              AppendNumber(out, date.month, count);
            } else {
              const std::string_view name = kMonthNames[date.month - 1];
              out += count == 3 ? name.substr(0, 3) : name;
            }
            break;
          case 'y':
            if (count <= 2) {
              AppendNumber(out, date.year % 100, count);
            } else {
              AppendNumber(out, date.year, 1);  // Windows writes "1/1/100", not "0100"
            }
            break;
          case 'h': AppendNumber(out, time.hour % 12 == 0 ? 12 : time.hour % 12, std::min(count, 2)); break;
          case 'H': AppendNumber(out, time.hour, std::min(count, 2)); break;
          case 'm': AppendNumber(out, time.minute, std::min(count, 2)); break;
          case 's': AppendNumber(out, time.second, std::min(count, 2)); break;
          case 't': {
            const std::string& designator = time.hour < 12 ? p.am : p.pm;
            out += count == 1 ? FirstCodePoint(designator) : std::string_view(designator);
            break;
          }
          default: break;  // 'g' (era) has no meaning in the Gregorian calendar we write
        }
      },
      [&](std::string_view literal) { out += literal; });
  return out;
}

// ---------------------------------------------------------------------------
// Reading

enum class TokenKind { Number, Separator, Blank, Am, Pm };

struct Token {
  TokenKind kind;
  int value = 0;   // Number
  int digits = 0;  // Number
  char separator = 0;
};

constexpr int kMaxDigits = 9;  // keeps a number inside int

// Splits text into numbers, separators, blank runs and AM/PM designators;
// nothing when a character belongs to none of them.
std::optional<std::vector<Token>> Tokenise(std::string_view text, const LocalePatterns& p, char timeSeparator) {
  const std::pair<std::string_view, TokenKind> designators[] = {
      {p.am, TokenKind::Am}, {p.pm, TokenKind::Pm}, {"AM", TokenKind::Am}, {"PM", TokenKind::Pm}};
  std::vector<Token> tokens;
  std::size_t i = 0;
  while (i < text.size()) {
    const char c = text[i];
    if (IsDigit(c)) {
      Token token{TokenKind::Number};
      while (i < text.size() && IsDigit(text[i])) {
        if (++token.digits > kMaxDigits) return std::nullopt;
        token.value = token.value * 10 + (text[i++] - '0');
      }
      tokens.push_back(token);
    } else if (IsBlank(c)) {
      while (i < text.size() && IsBlank(text[i])) ++i;
      tokens.push_back({TokenKind::Blank});
    } else if (c == ':' || c == timeSeparator || IsDateSeparator(c)) {
      tokens.push_back({TokenKind::Separator, 0, 0, c});
      ++i;
    } else {
      // The longest designator wins, so "a.m." is not read as "a" then ".m.".
      std::size_t bestLength = 0;
      TokenKind bestKind = TokenKind::Am;
      for (const auto& [designator, kind] : designators) {
        if (designator.empty() || designator.size() <= bestLength) continue;
        const std::string_view candidate = text.substr(i, designator.size());
        const std::size_t end = i + designator.size();
        if (EqualsIgnoringCase(candidate, designator) && (end >= text.size() || !IsAsciiLetter(text[end]))) {
          bestLength = designator.size();
          bestKind = kind;
        }
      }
      if (bestLength == 0) return std::nullopt;
      tokens.push_back({bestKind});
      i += bestLength;
    }
  }
  // Blanks around the whole text say nothing.
  if (!tokens.empty() && tokens.back().kind == TokenKind::Blank) tokens.pop_back();
  if (!tokens.empty() && tokens.front().kind == TokenKind::Blank) tokens.erase(tokens.begin());
  return tokens;
}

bool IsNumber(const std::vector<Token>& t, std::size_t i) { return i < t.size() && t[i].kind == TokenKind::Number; }
bool IsSeparator(const std::vector<Token>& t, std::size_t i, char c) {
  return i < t.size() && t[i].kind == TokenKind::Separator && t[i].separator == c;
}
bool IsDesignator(const std::vector<Token>& t, std::size_t i) {
  return i < t.size() && (t[i].kind == TokenKind::Am || t[i].kind == TokenKind::Pm);
}

// Numbers joined by one separator character: h:mm or h:mm:ss.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;  // one past the last token
};

std::optional<Span> ChainAt(const std::vector<Token>& t, std::size_t i, char separator) {
  if (!IsNumber(t, i) || !IsSeparator(t, i + 1, separator) || !IsNumber(t, i + 2)) return std::nullopt;
  if (i > 0 && t[i - 1].kind != TokenKind::Blank) return std::nullopt;
  std::size_t end = i + 3;
  if (IsSeparator(t, end, separator) && IsNumber(t, end + 1)) end += 2;
  if (end < t.size() && t[end].kind != TokenKind::Blank && !IsDesignator(t, end)) return std::nullopt;
  return Span{i, end};
}

// The time in the tokens: a ':' chain anywhere (or one joined by the
// locale's own separator); failing that, for a separator shared with the date
// ('.'), the last chain when a date or a designator goes with it; failing
// that, a lone hour just before a designator ("9 AM").
std::optional<Span> FindTime(const std::vector<Token>& t, char timeSeparator) {
  for (std::size_t i = 0; i < t.size(); ++i) {
    if (auto chain = ChainAt(t, i, ':')) return chain;
    if (timeSeparator != ':' && !IsDateSeparator(timeSeparator)) {
      if (auto chain = ChainAt(t, i, timeSeparator)) return chain;
    }
  }
  if (IsDateSeparator(timeSeparator)) {
    for (std::size_t i = t.size(); i-- > 0;) {
      auto chain = ChainAt(t, i, timeSeparator);
      if (!chain) continue;
      const bool designated = IsDesignator(t, chain->end) || IsDesignator(t, chain->end + 1);
      return i > 0 || designated ? chain : std::nullopt;
    }
  }
  for (std::size_t i = 0; i < t.size(); ++i) {
    if (!IsDesignator(t, i)) continue;
    std::size_t hour = i > 0 && t[i - 1].kind == TokenKind::Blank ? i - 1 : i;
    if (hour == 0 || !IsNumber(t, hour - 1)) return std::nullopt;
    --hour;
    if (hour > 0 && t[hour - 1].kind != TokenKind::Blank) return std::nullopt;
    return Span{hour, hour + 1};
  }
  return std::nullopt;
}

// The numbers of a date in t[begin, end): separated by blanks and at most one
// date separator each ("3/3/2025", "3. 3. 2025", "3 3 2025").
std::optional<std::vector<Token>> DateNumbers(const std::vector<Token>& t, std::size_t begin, std::size_t end) {
  std::vector<Token> numbers;
  std::size_t i = begin;
  while (i < end) {
    if (!IsNumber(t, i)) return std::nullopt;
    numbers.push_back(t[i++]);
    if (i == end) break;
    int separators = 0;
    for (; i < end && !IsNumber(t, i); ++i) {
      const bool dateSeparator = t[i].kind == TokenKind::Separator && IsDateSeparator(t[i].separator);
      if (t[i].kind != TokenKind::Blank && !dateSeparator) return std::nullopt;
      if (dateSeparator && ++separators > 1) return std::nullopt;
    }
    if (i == end) return std::nullopt;  // a trailing separator
  }
  return numbers;
}

// The OLE day of two or three date numbers read in the given order; nothing
// for a day or month that does not exist (no rolling over, unlike DateSerial).
std::optional<std::int64_t> SerialDayOf(const std::vector<Token>& numbers, PatternLocale::DateOrder order) {
  using Order = PatternLocale::DateOrder;
  int year = 0, month = 0, day = 0;
  if (numbers.size() == 3) {
    // A year written in full first ("2025-03-04") is read as such whatever
    // the locale's order, as OLE does.
    if (numbers[0].digits > 2) order = Order::YMD;
    switch (order) {
      case Order::MDY: month = numbers[0].value, day = numbers[1].value, year = numbers[2].value; break;
      case Order::DMY: day = numbers[0].value, month = numbers[1].value, year = numbers[2].value; break;
      case Order::YMD: year = numbers[0].value, month = numbers[1].value, day = numbers[2].value; break;
    }
    if (year < 100) year += year < 30 ? 2000 : 1900;
  } else if (numbers.size() == 2) {
    // Day and month alone belong to the current year.
    const bool dayFirst = order == Order::DMY;
    day = numbers[dayFirst ? 0 : 1].value;
    month = numbers[dayFirst ? 1 : 0].value;
    year = Year(Now());
  } else {
    return std::nullopt;
  }
  if (month > 12 && day <= 12) std::swap(month, day);
  if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month)) {
    return std::nullopt;
  }
  return DaysFromCivil(year, month, day) + kOleEpochOffset;
}

}  // namespace

PatternLocale::PatternLocale(LocalePatterns patterns) : patterns_(std::move(patterns)), order_(DateOrder::MDY) {
  std::size_t day = std::string::npos, month = std::string::npos, year = std::string::npos, position = 0;
  WalkPattern(
      patterns_.shortDate,
      [&](char letter, int count) {
        if (letter == 'd' && count <= 2 && day == std::string::npos) day = position;
        if (letter == 'M' && month == std::string::npos) month = position;
        if (letter == 'y' && year == std::string::npos) year = position;
        ++position;
      },
      [&](std::string_view) { ++position; });
  if (year < day && year < month) {
    order_ = DateOrder::YMD;
  } else if (day < month) {
    order_ = DateOrder::DMY;
  }
}

std::string PatternLocale::FormatGeneralDate(double date) const {
  // Which parts appear is decided on the value as stored, before rounding:
  // 3 March 23:59:59.99 shows as "3/4/2025 12:00:00 AM", not "3/4/2025",
  // and a time just short of midnight on day zero stays a time.
  const bool hasDate = DatePart(date) != 0.0;
  const bool hasTime = TimePart(date) != 0.0;
  CivilDate civil;
  TimeOfDay time;
  SplitRounded(date, civil, time);
  if (!hasDate) return ExpandPattern(patterns_.longTime, civil, time, patterns_);
  std::string text = ExpandPattern(patterns_.shortDate, civil, time, patterns_);
  if (!hasTime) return text;
  text += ' ';
  text += ExpandPattern(patterns_.longTime, civil, time, patterns_);
  return text;
}

std::optional<double> PatternLocale::ParseDate(std::string_view text) const {
  // Only a one-character separator that cannot be part of a number or a word
  // joins a time by itself; ':' always does.
  const std::string& own = patterns_.timeSeparator;
  const bool usable = own.size() == 1 && !IsDigit(own[0]) && !IsBlank(own[0]) && !IsAsciiLetter(own[0]);
  const char timeSeparator = usable ? own[0] : ':';
  const auto tokenised = Tokenise(text, patterns_, timeSeparator);
  if (!tokenised || tokenised->empty()) return std::nullopt;
  const std::vector<Token>& t = *tokenised;

  int hour = 0, minute = 0, second = 0;
  TokenKind designator = TokenKind::Blank;  // Am, Pm or none
  std::size_t dateBegin = 0, dateEnd = t.size();
  const std::optional<Span> time = FindTime(t, timeSeparator);
  if (time) {
    const std::size_t parts = (time->end - time->begin + 1) / 2;
    hour = t[time->begin].value;
    if (parts >= 2) minute = t[time->begin + 2].value;
    if (parts == 3) second = t[time->begin + 4].value;
    std::size_t after = time->end;
    if (t.size() > after + 1 && t[after].kind == TokenKind::Blank && IsDesignator(t, after + 1)) ++after;
    if (IsDesignator(t, after)) designator = t[after++].kind;
    // The date sits on one side of the time, a blank away from it.
    const bool dateBefore = time->begin > 0;
    const bool dateAfter = after < t.size();
    if (dateBefore && dateAfter) return std::nullopt;
    if (dateAfter && t[after].kind != TokenKind::Blank) return std::nullopt;
    dateBegin = dateAfter ? after + 1 : 0;
    dateEnd = dateBefore ? time->begin - 1 : dateAfter ? t.size() : 0;
  }

  const auto numbers = DateNumbers(t, dateBegin, dateEnd);
  if (!numbers || (numbers->empty() && !time)) return std::nullopt;
  std::int64_t serial = 0;  // 1899-12-30: a time alone
  if (!numbers->empty()) {
    const auto day = SerialDayOf(*numbers, order_);
    if (!day) return std::nullopt;
    serial = *day;
  }

  if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
  // An hour past 12 keeps its value whatever the designator says ("13:00 AM").
  if (designator == TokenKind::Am && hour == 12) hour = 0;
  if (designator == TokenKind::Pm && hour < 12) hour += 12;
  return ComposeDate(serial, TimeSerial(hour, minute, second));
}

std::string NormaliseLocaleName(std::string_view name) {
  name = Trim(name);
  if (const auto cut = name.find_first_of(".@"); cut != std::string_view::npos) name = name.substr(0, cut);
  if (name == "C" || name == "POSIX") return std::string(name);
  const std::size_t dash = name.find_first_of("_-");
  std::string out = LCase(name.substr(0, dash));
  if (dash == std::string_view::npos) return out;
  for (const char c : name.substr(dash)) out += c == '_' ? '-' : UpperAscii(c);
  return out;
}

std::optional<LocalePatterns> BuiltinLocalePatterns(std::string_view name) {
  const std::string wanted = NormaliseLocaleName(name);
  for (const BuiltinRow& row : kBuiltinRows) {
    if (EqualsIgnoringCase(wanted, row.name)) {
      return LocalePatterns{row.name, row.shortDate,      row.longTime, row.timeSeparator, row.am,
                            row.pm,   row.firstDayOfWeek, row.decimal,  row.thousands};
    }
  }
  return std::nullopt;
}

std::vector<std::string> BuiltinLocaleNames() {
  std::vector<std::string> names;
  for (const BuiltinRow& row : kBuiltinRows) names.emplace_back(row.name);
  return names;
}

std::string PatternFromStrftime(std::string_view format) {
  std::string out;
  std::string literal;
  const auto flushLiteral = [&] {
    if (literal.empty()) return;
    // Letters would read as tokens, so any literal holding one is quoted.
    if (std::any_of(literal.begin(), literal.end(), [](char c) { return IsAsciiLetter(c) || c == '\''; })) {
      out += '\'';
      for (const char c : literal) out += c == '\'' ? std::string("''") : std::string(1, c);
      out += '\'';
    } else {
      out += literal;
    }
    literal.clear();
  };
  const auto token = [&](std::string_view nls) {
    flushLiteral();
    out += nls;
  };

  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%' || i + 1 == format.size()) {
      literal += format[i];
      continue;
    }
    ++i;
    // GNU flags and width: only "no padding" changes the token.
    bool padded = true;
    while (i < format.size() && std::string_view("-_0^#").find(format[i]) != std::string_view::npos) {
      if (format[i] == '-' || format[i] == '_') padded = false;
      ++i;
    }
    while (i < format.size() && (IsDigit(format[i]) || format[i] == 'E' || format[i] == 'O')) ++i;
    if (i == format.size()) break;
    switch (format[i]) {
      case 'd': token(padded ? "dd" : "d"); break;
      case 'e': token("d"); break;
      case 'm': token(padded ? "MM" : "M"); break;
      case 'Y': token("yyyy"); break;
      case 'y': token("yy"); break;
      case 'H': token(padded ? "HH" : "H"); break;
      case 'k': token("H"); break;
      case 'I': token(padded ? "hh" : "h"); break;
      case 'l': token("h"); break;
      case 'M': token(padded ? "mm" : "m"); break;
      case 'S': token(padded ? "ss" : "s"); break;
      case 'p':
      case 'P': token("tt"); break;
      case 'r': token("hh:mm:ss tt"); break;
      case 'T': token("HH:mm:ss"); break;
      case 'R': token("HH:mm"); break;
      case 'D': token("MM/dd/yy"); break;
      case 'F': token("yyyy-MM-dd"); break;
      case 'b':
      case 'h': token("MMM"); break;
      case 'B': token("MMMM"); break;
      case 'a': token("ddd"); break;
      case 'A': token("dddd"); break;
      case 'n': literal += ' '; break;
      case 't': literal += '\t'; break;
      case '%': literal += '%'; break;
      default: break;  // no Windows token for it (week numbers, time zones): left out
    }
  }
  flushLiteral();
  return out;
}

std::string TimeSeparatorOf(std::string_view timePattern) {
  enum class State { BeforeHour, AfterHour, Done } state = State::BeforeHour;
  std::string separator;
  // Copies the literal as the pattern writes it, quotes included, as
  // LOCALE_STIME does (" 'h' " for "HH 'h' mm").
  std::size_t i = 0;
  while (i < timePattern.size() && state != State::Done) {
    const char c = timePattern[i];
    if (c == '\'') {
      const std::size_t close = timePattern.find('\'', i + 1);
      const std::size_t end = close == std::string_view::npos ? timePattern.size() : close + 1;
      if (state == State::AfterHour) separator += timePattern.substr(i, end - i);
      i = end;
    } else if (c == 'h' || c == 'H') {
      if (state == State::AfterHour && !separator.empty()) state = State::Done;
      else state = State::AfterHour;
      while (i < timePattern.size() && timePattern[i] == c) ++i;
    } else if (std::string_view("dMymstg").find(c) != std::string_view::npos) {
      if (state == State::AfterHour) state = State::Done;
      ++i;
    } else {
      if (state == State::AfterHour) separator += c;
      ++i;
    }
  }
  return separator.empty() ? ":" : separator;
}

}  // namespace qorvane
