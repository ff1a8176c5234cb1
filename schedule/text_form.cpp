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
  // Byte positions are safe here: '#' and ';' are single bytes in UTF-8 and
  // only the date texts are measured in characters.
  const std::size_t p = InStr(text, '#');
  if (p < 2) Raise(err::kInvalidCall);  // Left(text, p - 2) with a negative length
  const std::vector<std::string> head = SplitAtSemicolons(text.substr(0, p - 2));

  m_IsRecurring = CBool(Element(head, 0));
  std::int32_t* const numbers[] = {&m_RecurrenceType, &m_DayOfMonth, &m_MonthOfYear, &m_Instance,
                                   &m_DayOfWeekMask,  &m_Interval,   &m_Occurrences};
  for (std::size_t i = 0; i < std::size(numbers); ++i) *numbers[i] = CLng(Element(head, i + 1));
  m_NoEndDate = CBool(Element(head, 8));
  m_collAttachments.assign(head.begin() + 9, head.end());

  std::string rest = text.substr(p);
  for (double* const field : {&m_StartTime, &m_PatternStartDate, &m_PatternEndDate}) {
    const std::size_t q = InStr(rest, ';');
    if (q < 1) Raise(err::kInvalidCall);
    const std::int32_t n = CLng(rest.substr(0, q - 1));
    if (n < 0) Raise(err::kInvalidCall);
    const std::string afterSemicolon = rest.substr(q);
    *field = CDate(TextMid(afterSemicolon, 1, n));
    // Skip the date text and the '#' that follows it.
    rest = TextMid(afterSemicolon, static_cast<std::size_t>(n) + 2);
  }
}
