// Reading and writing date-times as text.
#include "sim/date_text.h"

#include <cstdio>

#include "base/ole_date.h"
#include "base/runtime_text.h"

namespace sim {
namespace {

class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  bool Number(int& value, std::size_t minDigits, std::size_t maxDigits) {
    std::size_t digits = 0;
    value = 0;
    while (pos_ < text_.size() && digits < maxDigits && text_[pos_] >= '0' && text_[pos_] <= '9') {
      value = value * 10 + (text_[pos_++] - '0');
      ++digits;
    }
    return digits >= minDigits;
  }
  bool Char(char c) {
    if (pos_ < text_.size() && text_[pos_] == c) return ++pos_, true;
    return false;
  }
  void Blanks() {
    while (pos_ < text_.size() && text_[pos_] == ' ') ++pos_;
  }
  bool Word(std::string_view word) {
    if (!qorvane::EqualsIgnoringCase(text_.substr(pos_, word.size()), word)) return false;
    pos_ += word.size();
    return true;
  }
  bool AtEnd() const { return pos_ == text_.size(); }

 private:
  std::string_view text_;
  std::size_t pos_ = 0;
};

std::optional<double> Compose(int year, int month, int day, int hour, int minute, int second) {
  if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > qorvane::DaysInMonth(year, month))
    return std::nullopt;
  if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return qorvane::DateSerialRollOver(year, month, day) + qorvane::TimeSerial(hour, minute, second);
}

// The time after the date: "HH:MM[:SS]" with an optional AM/PM.
bool ScanTime(Scanner& scan, int& hour, int& minute, int& second, bool allowAmPm) {
  if (!scan.Number(hour, 1, 2) || !scan.Char(':') || !scan.Number(minute, 2, 2)) return false;
  if (scan.Char(':') && !scan.Number(second, 2, 2)) return false;
  scan.Blanks();
  if (!allowAmPm) return true;
  const bool pm = scan.Word("PM");
  if (pm || scan.Word("AM")) {
    if (hour < 1 || hour > 12) return false;
    hour = hour % 12 + (pm ? 12 : 0);
  }
  return true;
}

}  // namespace

std::optional<double> ParseDateText(std::string_view text) {
  text = qorvane::Trim(text);
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  {
    Scanner scan(text);
    if (scan.Number(year, 4, 4) && scan.Char('-') && scan.Number(month, 1, 2) && scan.Char('-') &&
        scan.Number(day, 1, 2)) {
      if (scan.AtEnd()) return Compose(year, month, day, 0, 0, 0);
      if (!scan.Char('T') && !scan.Char(' ')) return std::nullopt;
      scan.Blanks();
      if (!ScanTime(scan, hour, minute, second, false) || !scan.AtEnd()) return std::nullopt;
      return Compose(year, month, day, hour, minute, second);
    }
  }
  Scanner scan(text);
  if (!scan.Number(month, 1, 2) || !scan.Char('/') || !scan.Number(day, 1, 2) || !scan.Char('/') ||
      !scan.Number(year, 4, 4))
    return std::nullopt;
  scan.Blanks();
  if (!scan.AtEnd() && !ScanTime(scan, hour, minute, second, true)) return std::nullopt;
  if (!scan.AtEnd()) return std::nullopt;
  return Compose(year, month, day, hour, minute, second);
}

std::string GeneralDateText(double date) {
  qorvane::CivilDate civil;
  qorvane::TimeOfDay time;
  qorvane::SplitRounded(date, civil, time);
  char text[64];
  std::string result;
  if (qorvane::SerialDay(date) != 0 || qorvane::TimePart(date) == 0.0) {
    std::snprintf(text, sizeof text, "%d/%d/%d", civil.month, civil.day, civil.year);
    result = text;
  }
  if (time.hour != 0 || time.minute != 0 || time.second != 0 || result.empty()) {
    const int hour12 = time.hour % 12 == 0 ? 12 : time.hour % 12;
    std::snprintf(text, sizeof text, "%d:%02d:%02d %s", hour12, time.minute, time.second,
                  time.hour < 12 ? "AM" : "PM");
    if (!result.empty()) result += ' ';
    result += text;
  }
  return result;
}

}  // namespace sim
