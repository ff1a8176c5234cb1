// What a person decides in a schedule dialog, as data and as one line of
// text: the scripted user (scripted_user.h) plays these answers back when
// the add-in shows its dialogs in tests and the demo.
//
//   Cancel
//   once at 2025-03-03 10:00, OK
//   daily every 2 days at 8:00, 5 times, OK
//   daily every weekday at 7:45 from 2025-03-03, no end, OK
//   weekly every 1 week on Monday and Friday at 9:30 from 2025-03-03, 10 times, OK
//   monthly on day 31 every 1 month, until 2025-12-31, OK
//   monthly on the last Friday, no end, OK
//   yearly on February 29 from 2028-01-01, no end, OK
//   yearly on the second weekend day of March, 3 times, Cancel
//
// The first clause says what is picked: "once at DATE TIME", or a pattern
// with an optional "at TIME" (the time of day) and "from DATE" (the start
// date); left out, they stay as the dialog shows them. Further clauses, comma
// separated: the end ("no end", "N times", "until DATE") and the button
// ("OK", the default, or "Cancel"). Words are read without regard to case;
// DATE is YYYY-MM-DD, TIME is H:MM (24-hour).
//
// A once answer given to the recurrence dialog first presses "Remove
// Recurrence"; a pattern given to the one-time dialog first picks
// "Recurrence...": the person switches dialogs as they would.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace scenario {

enum class Button { OK, Cancel };

// Closes the dialog with Cancel, whatever it shows.
struct CancelAnswer {};

// The date and time picked in the one-time dialog (the pickers keep whole
// minutes: seconds are dropped).
struct OnceAnswer {
  double sendTime = 0.0;
  Button button = Button::OK;
};

enum class RecurrenceEnd { NoEnd, AfterOccurrences, ByDate };

// A pattern as the recurrence dialog's controls hold it. Fields a pattern
// does not use are ignored; codes are the client's (recurrence type 0 daily,
// 1 weekly, 2 monthly on a day, 3 monthly on the nth weekday, 5 yearly on a
// date, 6 yearly on the nth weekday; weekday masks Sunday 1 .. Saturday 64;
// instance 5 = last).
struct RecurrenceAnswer {
  std::int32_t recurrenceType = 1;
  bool everyWeekday = false;  // daily: "Every weekday" instead of every n days
  std::int32_t interval = 1;
  std::int32_t dayOfWeekMask = 0;
  std::int32_t dayOfMonth = 0;
  std::int32_t instance = 0;
  std::int32_t monthOfYear = 0;
  std::optional<double> startDate;  // unset: as the dialog shows it
  std::optional<double> startTime;  // time of day; unset: as shown
  RecurrenceEnd end = RecurrenceEnd::NoEnd;
  std::int32_t occurrences = 0;  // with AfterOccurrences
  double endDate = 0.0;          // with ByDate
  Button button = Button::OK;
};

using Answer = std::variant<CancelAnswer, OnceAnswer, RecurrenceAnswer>;

struct ParsedAnswer {
  std::optional<Answer> answer;
  std::string error;  // what is wrong with the text, when answer is empty
};

ParsedAnswer ParseAnswer(std::string_view text);

// Word helpers the parser uses, for builders of other formats: nothing when
// the word is not one of them.
std::optional<std::int32_t> WeekdayMaskOf(std::string_view word);   // "monday" -> 2
std::optional<std::int32_t> InstanceOf(std::string_view word);      // "first" -> 1 .. "last" -> 5
std::optional<std::int32_t> MonthOf(std::string_view word);         // "january" -> 1
std::optional<double> DateOf(std::string_view text);                // "2025-03-03"
std::optional<double> TimeOf(std::string_view text);                // "9:30"

}  // namespace scenario
