// Reading a dialog answer from its line of text.
#include "scenario/answer.h"

#include <array>
#include <charconv>
#include <vector>

#include "base/ole_date.h"
#include "schedule/mail_props.h"

namespace scenario {
namespace {

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) text.remove_suffix(1);
  return text;
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  for (;;) {
    const std::size_t at = text.find(separator);
    parts.emplace_back(Trim(text.substr(0, at)));
    if (at == std::string_view::npos) return parts;
    text.remove_prefix(at + 1);
  }
}

std::optional<int> NumberOf(std::string_view text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
  return value;
}

// The words of one clause, read front to back; a failed read leaves the
// reason for the error message.
class Words {
 public:
  explicit Words(const std::string& clause) {
    for (const std::string& word : Split(clause, ' ')) {
      if (!word.empty()) words_.push_back(word);
    }
  }
  bool AtEnd() const { return next_ == words_.size(); }
  const std::string& Peek() const {
    static const std::string none;
    return AtEnd() ? none : words_[next_];
  }
  bool Take(std::string_view word) {
    if (AtEnd() || words_[next_] != word) return false;
    ++next_;
    return true;
  }
  std::string TakeAny() { return AtEnd() ? std::string() : words_[next_++]; }

 private:
  std::vector<std::string> words_;
  std::size_t next_ = 0;
};

struct Failure {
  std::string message;
};

[[noreturn]] void Fail(std::string message) { throw Failure{std::move(message)}; }

int Count(Words& words, const char* what) {
  const std::string word = words.TakeAny();
  const auto number = NumberOf(word);
  if (!number) Fail(std::string("expected ") + what + ", found \"" + word + "\"");
  return *number;
}

void Expect(Words& words, std::string_view word) {
  if (!words.Take(word)) Fail("expected \"" + std::string(word) + "\", found \"" + words.Peek() + "\"");
}

// "day", "days" and "day(s)" all name the unit.
void ExpectUnit(Words& words, const std::string& unit) {
  if (words.Take(unit) || words.Take(unit + "s") || words.Take(unit + "(s)")) return;
  Fail("expected \"" + unit + "s\", found \"" + words.Peek() + "\"");
}

double DateWord(Words& words) {
  const std::string word = words.TakeAny();
  const auto date = DateOf(word);
  if (!date) Fail("expected a date YYYY-MM-DD, found \"" + word + "\"");
  return *date;
}

double TimeWord(Words& words) {
  const std::string word = words.TakeAny();
  const auto time = TimeOf(word);
  if (!time) Fail("expected a time H:MM, found \"" + word + "\"");
  return *time;
}

// "day", "weekday", "weekend day" or a weekday's name, as the monthly and
// yearly lists offer them.
std::int32_t DayWord(Words& words) {
  if (words.Take("day")) return 127;
  if (words.Take("weekday")) return 62;
  if (words.Take("weekend")) {
    Expect(words, "day");
    return 65;
  }
  const std::string word = words.TakeAny();
  const auto mask = WeekdayMaskOf(word);
  if (!mask) Fail("expected a day, weekday, weekend day or a weekday's name, found \"" + word + "\"");
  return *mask;
}

std::int32_t MonthWord(Words& words) {
  const std::string word = words.TakeAny();
  const auto month = MonthOf(word);
  if (!month) Fail("expected a month's name, found \"" + word + "\"");
  return *month;
}

// "the INSTANCE DAYWORD"
void NthDay(Words& words, RecurrenceAnswer& answer) {
  Expect(words, "the");
  const std::string word = words.TakeAny();
  const auto instance = InstanceOf(word);
  if (!instance) Fail("expected first, second, third, fourth or last, found \"" + word + "\"");
  answer.instance = *instance;
  answer.dayOfWeekMask = DayWord(words);
}

void OptionalEvery(Words& words, RecurrenceAnswer& answer, const std::string& unit) {
  if (!words.Take("every")) return;
  answer.interval = Count(words, "a number");
  ExpectUnit(words, unit);
}

RecurrenceAnswer Pattern(Words& words, const std::string& kind) {
  RecurrenceAnswer answer;
  if (kind == "daily") {
    answer.recurrenceType = qorvane::kRecursDaily;
    Expect(words, "every");
    if (words.Take("weekday")) {
      answer.everyWeekday = true;
    } else {
      answer.interval = Count(words, "a number");
      ExpectUnit(words, "day");
    }
  } else if (kind == "weekly") {
    answer.recurrenceType = qorvane::kRecursWeekly;
    Expect(words, "every");
    answer.interval = Count(words, "a number");
    ExpectUnit(words, "week");
    Expect(words, "on");
    while (!words.AtEnd() && words.Peek() != "at" && words.Peek() != "from") {
      if (words.Take("and")) continue;
      const std::string day = words.TakeAny();
      const auto mask = WeekdayMaskOf(day);
      if (!mask) Fail("expected a weekday's name, found \"" + day + "\"");
      answer.dayOfWeekMask |= *mask;
    }
  } else if (kind == "monthly") {
    Expect(words, "on");
    if (words.Take("day")) {
      answer.recurrenceType = qorvane::kRecursMonthly;
      answer.dayOfMonth = Count(words, "a day of the month");
    } else {
      answer.recurrenceType = qorvane::kRecursMonthNth;
      NthDay(words, answer);
    }
    OptionalEvery(words, answer, "month");
  } else if (kind == "yearly") {
    Expect(words, "on");
    if (words.Peek() == "the") {
      answer.recurrenceType = qorvane::kRecursYearNth;
      NthDay(words, answer);
      Expect(words, "of");
      answer.monthOfYear = MonthWord(words);
    } else {
      answer.recurrenceType = qorvane::kRecursYearly;
      answer.monthOfYear = MonthWord(words);
      answer.dayOfMonth = Count(words, "a day of the month");
    }
  } else {
    Fail("expected Cancel, once, daily, weekly, monthly or yearly, found \"" + kind + "\"");
  }
  while (!words.AtEnd()) {
    if (words.Take("at")) {
      answer.startTime = TimeWord(words);
    } else if (words.Take("from")) {
      answer.startDate = DateWord(words);
    } else {
      Fail("expected \"at TIME\" or \"from DATE\", found \"" + words.Peek() + "\"");
    }
  }
  return answer;
}

Answer ParseClauses(const std::vector<std::string>& clauses) {
  Words first(clauses.front());
  const std::string kind = first.TakeAny();
  if (kind.empty()) Fail("the answer is empty");
  if (kind == "cancel") {
    if (!first.AtEnd() || clauses.size() > 1) Fail("nothing may follow Cancel");
    return CancelAnswer{};
  }
  Button button = Button::OK;
  bool buttonGiven = false;
  const auto takeButton = [&](const std::string& clause) {
    if (clause != "ok" && clause != "cancel") return false;
    if (buttonGiven) Fail("two buttons in one answer");
    buttonGiven = true;
    button = clause == "ok" ? Button::OK : Button::Cancel;
    return true;
  };
  if (kind == "once") {
    Expect(first, "at");
    const double date = DateWord(first);
    const double time = TimeWord(first);
    if (!first.AtEnd()) Fail("unexpected \"" + first.Peek() + "\" after the time");
    for (std::size_t i = 1; i < clauses.size(); ++i) {
      if (!takeButton(clauses[i])) Fail("a one-time answer ends with OK or Cancel, found \"" + clauses[i] + "\"");
    }
    return OnceAnswer{date + time, button};
  }
  RecurrenceAnswer answer = Pattern(first, kind);
  bool endGiven = false;
  for (std::size_t i = 1; i < clauses.size(); ++i) {
    if (takeButton(clauses[i])) continue;
    if (endGiven) Fail("two ends in one answer: \"" + clauses[i] + "\"");
    endGiven = true;
    Words words(clauses[i]);
    if (words.Take("no")) {
      Expect(words, "end");
      answer.end = RecurrenceEnd::NoEnd;
    } else if (words.Take("until")) {
      answer.end = RecurrenceEnd::ByDate;
      answer.endDate = DateWord(words);
    } else {
      answer.end = RecurrenceEnd::AfterOccurrences;
      answer.occurrences = Count(words, "\"no end\", \"N times\", \"until DATE\", OK or Cancel");
      if (!words.Take("times") && !words.Take("time")) Fail("expected \"times\" after the count");
    }
    if (!words.AtEnd()) Fail("unexpected \"" + words.Peek() + "\" in \"" + clauses[i] + "\"");
  }
  answer.button = button;
  return answer;
}

}  // namespace

ParsedAnswer ParseAnswer(std::string_view text) {
  ParsedAnswer parsed;
  try {
    parsed.answer = ParseClauses(Split(Lower(Trim(text)), ','));
  } catch (const Failure& failure) {
    parsed.error = failure.message + " (in \"" + std::string(Trim(text)) + "\")";
  } catch (const std::exception& error) {
    parsed.error = std::string(error.what()) + " (in \"" + std::string(Trim(text)) + "\")";
  }
  return parsed;
}

std::optional<std::int32_t> WeekdayMaskOf(std::string_view word) {
  static constexpr std::array<std::string_view, 7> kDays = {"sunday",   "monday", "tuesday", "wednesday",
                                                            "thursday", "friday", "saturday"};
  const std::string lower = Lower(word);
  for (std::size_t i = 0; i < kDays.size(); ++i) {
    if (lower == kDays[i]) return 1 << i;
  }
  return std::nullopt;
}

std::optional<std::int32_t> InstanceOf(std::string_view word) {
  static constexpr std::array<std::string_view, 5> kInstances = {"first", "second", "third", "fourth", "last"};
  const std::string lower = Lower(word);
  for (std::size_t i = 0; i < kInstances.size(); ++i) {
    if (lower == kInstances[i]) return static_cast<std::int32_t>(i + 1);
  }
  return std::nullopt;
}

std::optional<std::int32_t> MonthOf(std::string_view word) {
  static constexpr std::array<std::string_view, 12> kMonths = {"january", "february", "march",     "april",
                                                               "may",     "june",     "july",      "august",
                                                               "september", "october", "november", "december"};
  const std::string lower = Lower(word);
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    if (lower == kMonths[i]) return static_cast<std::int32_t>(i + 1);
  }
  return std::nullopt;
}

std::optional<double> DateOf(std::string_view text) {
  const std::vector<std::string> parts = Split(text, '-');
  if (parts.size() != 3 || parts[0].size() != 4) return std::nullopt;
  const auto year = NumberOf(parts[0]);
  const auto month = NumberOf(parts[1]);
  const auto day = NumberOf(parts[2]);
  if (!year || !month || !day || *year < 100 || *month < 1 || *month > 12 || *day < 1 ||
      *day > qorvane::DaysInMonth(*year, *month))
    return std::nullopt;
  return qorvane::DateSerialRollOver(*year, *month, *day);
}

std::optional<double> TimeOf(std::string_view text) {
  const std::vector<std::string> parts = Split(text, ':');
  if (parts.size() != 2 || parts[1].size() != 2) return std::nullopt;
  const auto hour = NumberOf(parts[0]);
  const auto minute = NumberOf(parts[1]);
  if (!hour || !minute || *hour < 0 || *hour > 23 || *minute < 0 || *minute > 59) return std::nullopt;
  return qorvane::TimeSerial(*hour, *minute, 0);
}

}  // namespace scenario
