// The one-line text form of a schedule, as it travels on a mail item:
//
//   1;1;0;0;0;34;1;10;0;C:\Reports\summary.pdf;C:\Reports\Weekly\;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM
//
// nine numbers, the attachment references, then three length-prefixed
// date-times in the locale's general date format. Nothing is escaped and there
// is no version field: a line is read by position and length only, so the
// layout must never change. A read that fails part-way keeps what it had set.
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "base/utf8_text.h"
#include "base/variant.h"
#include "infra/error_trap.h"
#include "platform/locale.h"
#include "schedule/mail_props.h"

using namespace qorvane;

namespace {

std::string BoolDigit(bool value) { return value ? "1" : "0"; }

std::string LengthPrefixedDate(double date) {
  const std::string text = CurrentLocale().FormatGeneralDate(date);
  return "#" + std::to_string(TextLength(text)) + ";" + text;
}

std::vector<std::string> SplitAtSemicolons(const std::string& text) {
  std::vector<std::string> parts;
  if (text.empty()) return parts;  // as the runtime's Split of "": no elements
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text.find(';', start);
    parts.push_back(text.substr(start, end == std::string::npos ? std::string::npos : end - start));
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return parts;
}

const std::string& Element(const std::vector<std::string>& parts, std::size_t index) {
  if (index >= parts.size()) Raise(err::kSubscriptOutOfRange);
  return parts[index];
}

double CDate(const std::string& text) {
  const std::optional<double> date = CurrentLocale().ParseDate(text);
  if (!date) Raise(err::kTypeMismatch);
  return *date;
}

// InStr: 1-based position of the first match, 0 when absent.
std::size_t InStr(const std::string& text, char c) {
  const std::size_t pos = text.find(c);
  return pos == std::string::npos ? 0 : pos + 1;
}

// The head: the text before "#" without the ";" that precedes it, split.
// Raises when there is no "#" or nothing before it.
std::vector<std::string> HeadOf(const std::string& text) {
  // Byte positions are safe here: '#' and ';' are single bytes in UTF-8 and
  // only the date texts are measured in characters.
  const std::size_t p = InStr(text, '#');
  if (p < 2) Raise(err::kInvalidCall);  // Left(text, p - 2) with a negative length
  return SplitAtSemicolons(text.substr(0, p - 2));
}

// The date texts after the head: "n;text" each, then the "#" of the next.
std::string TailOf(const std::string& text) { return text.substr(InStr(text, '#')); }

// The next length-prefixed date text of the tail; moves rest past it and
// the "#" that follows. Raises when its length can't be read.
std::string NextDateText(std::string& rest) {
  const std::size_t q = InStr(rest, ';');
  if (q < 1) Raise(err::kInvalidCall);
  const std::int32_t n = CLng(rest.substr(0, q - 1));
  if (n < 0) Raise(err::kInvalidCall);
  const std::string afterSemicolon = rest.substr(q);
  std::string dateText = TextMid(afterSemicolon, 1, n);
  rest = TextMid(afterSemicolon, static_cast<std::size_t>(n) + 2);
  return dateText;
}

constexpr const char* kNumberNames[] = {"RecurrenceType", "DayOfMonth", "MonthOfYear", "Instance",
                                        "DayOfWeekMask",  "Interval",   "Occurrences"};
constexpr const char* kDateNames[] = {"StartTime", "PatternStartDate", "PatternEndDate"};

}  // namespace

std::string CMailProps::WriteToString() {
  std::string line;
  Trap("CMailProps.WriteToString", [&] {
    std::string text;
    text += BoolDigit(m_IsRecurring) + ";";
    for (const std::int32_t number : {m_RecurrenceType, m_DayOfMonth, m_MonthOfYear, m_Instance, m_DayOfWeekMask,
                                      m_Interval, m_Occurrences})
      text += std::to_string(number) + ";";
    text += BoolDigit(m_NoEndDate) + ";";
    for (const std::string& attachment : m_collAttachments) text += attachment + ";";
    text += LengthPrefixedDate(m_StartTime);
    text += LengthPrefixedDate(m_PatternStartDate);
    text += LengthPrefixedDate(m_PatternEndDate);
    line = std::move(text);
  });
  return line;
}

bool CMailProps::ReadFromString(const std::string& text) {
  return Trap("CMailProps.ReadFromString(", [&] { ReadFromStringOrRaise(text); });
}

void CMailProps::ReadFromStringOrRaise(const std::string& text) {
  const std::vector<std::string> head = HeadOf(text);
  m_IsRecurring = CBool(Element(head, 0));
  std::int32_t* const numbers[] = {&m_RecurrenceType, &m_DayOfMonth, &m_MonthOfYear, &m_Instance,
                                   &m_DayOfWeekMask,  &m_Interval,   &m_Occurrences};
  for (std::size_t i = 0; i < std::size(numbers); ++i) *numbers[i] = CLng(Element(head, i + 1));
  m_NoEndDate = CBool(Element(head, 8));
  m_collAttachments.assign(head.begin() + 9, head.end());

  std::string rest = TailOf(text);
  for (double* const field : {&m_StartTime, &m_PatternStartDate, &m_PatternEndDate}) *field = CDate(NextDateText(rest));
}

LineFields CMailProps::ReadEachField(const std::string& text) {
  LineFields read;
  // One field's read; a failure is noted (the first one only) and the line
  // is read on.
  auto field = [&read](const char* name, auto&& body) {
    try {
      body();
      return true;
    } catch (const RuntimeError& e) {
      if (read.firstFailure.empty()) read.firstFailure = std::string(name) + ": " + e.Description();
      return false;
    }
  };

  std::vector<std::string> head;
  if (!field("the nine numbers before '#'", [&] { head = HeadOf(text); })) return read;
  read.recurring = field("IsRecurring", [&] { m_IsRecurring = CBool(Element(head, 0)); });
  std::int32_t* const numbers[] = {&m_RecurrenceType, &m_DayOfMonth, &m_MonthOfYear, &m_Instance,
                                   &m_DayOfWeekMask,  &m_Interval,   &m_Occurrences};
  read.pattern = true;
  for (std::size_t i = 0; i < std::size(numbers); ++i)
    read.pattern &= field(kNumberNames[i], [&] { *numbers[i] = CLng(Element(head, i + 1)); });
  read.pattern &= field("NoEndDate", [&] { m_NoEndDate = CBool(Element(head, 8)); });
  if (head.size() >= 9) {
    m_collAttachments.assign(head.begin() + 9, head.end());
    read.attachments = true;
  }

  std::string rest = TailOf(text);
  double* const dates[] = {&m_StartTime, &m_PatternStartDate, &m_PatternEndDate};
  bool* const readDates[] = {&read.startTime, &read.patternStart, &read.endDate};
  bool asWrittenHere = true;
  for (std::size_t i = 0; i < std::size(dates); ++i) {
    std::string dateText;
    // Without its length the place of every later date is unknown.
    if (!field(kDateNames[i], [&] { dateText = NextDateText(rest); })) break;
    *readDates[i] = field(kDateNames[i], [&] { *dates[i] = CDate(dateText); });
    if (i < 2 && *readDates[i]) asWrittenHere &= CurrentLocale().FormatGeneralDate(*dates[i]) == dateText;
  }
  read.datesAsWrittenHere = read.startTime && read.patternStart && asWrittenHere;
  return read;
}
