// One English sentence telling the user when a schedule sends. The words are
// fixed (including the capitals of "every Weekday" and "And"); only the dates
// follow the user's locale.
#include <array>
#include <string>

#include "base/runtime_error.h"
#include "infra/error_trap.h"
#include "platform/locale.h"
#include "schedule/mail_props.h"

using namespace qorvane;

namespace {

constexpr std::array<const char*, 5> kInstanceNames = {"first", "second", "third", "fourth", "last"};
constexpr std::array<const char*, 7> kWeekdayNames = {"sunday",   "monday", "tuesday", "wednesday",
                                                      "thursday", "friday", "saturday"};
constexpr std::array<const char*, 12> kMonthNames = {"january", "february", "march",     "april",
                                                     "may",     "june",     "july",      "august",
                                                     "september", "october", "november", "december"};

// Table lookup with 1-based indexes; outside the table is error 9.
template <std::size_t N>
std::string NameAt(const std::array<const char*, N>& table, std::int32_t index) {
  if (index < 1 || index > static_cast<std::int32_t>(N)) Raise(err::kSubscriptOutOfRange);
  return table[static_cast<std::size_t>(index - 1)];
}

std::string DateText(double date) { return CurrentLocale().FormatGeneralDate(date); }

}  // namespace

std::string CMailProps::GetInstanceName() const { return NameAt(kInstanceNames, m_Instance); }
std::string CMailProps::GetMonthName() const { return NameAt(kMonthNames, m_MonthOfYear); }

std::string CMailProps::GetDaysOfWeekText() const {
  std::vector<const char*> names;
  for (int i = 0; i < 7; ++i)
    if ((m_DayOfWeekMask >> i) & 1) names.push_back(kWeekdayNames[static_cast<std::size_t>(i)]);
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    text += names[i];
    if (i + 2 == names.size()) text += " And ";
    else if (i + 1 < names.size()) text += ", ";
  }
  return text;
}

std::string CMailProps::GetDescText(bool bCalcLastOccur) {
  std::string result;
  Trap("CMailProps.GetDescText", [&] {
    if (!m_IsRecurring) {
      result = "none";
      return;
    }
    const std::string interval = std::to_string(m_Interval);
    std::string body;
    switch (m_RecurrenceType) {
      case kRecursDaily:
        if (m_Interval != 0) body = "every " + interval + " day(s)";
        else body = m_DayOfWeekMask != 0 ? "every Weekday" : "ERROR";
        break;
      case kRecursWeekly:
        body = "every " + interval + " week(s) on " + GetDaysOfWeekText();
        break;
      case kRecursMonthly:
        body = "day " + std::to_string(m_DayOfMonth) + " of every " + interval + " month(s)";
        break;
      case kRecursMonthNth:
        body = "the " + GetInstanceName() + " " + GetDaysOfWeekText() + " of every " + interval + " month(s)";
        break;
      case kRecursYearly:
        body = "every " + GetMonthName() + " " + std::to_string(m_DayOfMonth);
        break;
      case kRecursYearNth:
        body = "the " + GetInstanceName() + " " + GetDaysOfWeekText() + " of " + GetMonthName();
        break;
      default:
        body = "ERROR";
        break;
    }
    result = "Occurs " + body + " effective " + DateText(m_ScheduleTime);
    if (bCalcLastOccur && !m_NoEndDate) result += " until " + DateText(GetLastOccurrence());
  });
  return result;
}
