// Dialog answers read from their line of text: what each line means, and
// what is wrong with a line that does not read.
#include <gtest/gtest.h>

#include "base/ole_date.h"
#include "scenario/answer.h"
#include "schedule/mail_props.h"

namespace scenario {
namespace {

// The answer as one comparable line: kind, pattern fields, start, end, button.
std::string Describe(const Answer& answer) {
  if (std::holds_alternative<CancelAnswer>(answer)) return "cancel";
  const auto button = [](Button b) { return b == Button::OK ? "OK" : "Cancel"; };
  const auto date = [](double d) {
    const qorvane::CivilDate c = qorvane::ToCivil(d);
    const qorvane::TimeOfDay t = qorvane::ToTimeOfDay(d);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d", c.year, c.month, c.day, t.hour, t.minute);
    return std::string(text);
  };
  if (const auto* once = std::get_if<OnceAnswer>(&answer)) return "once " + date(once->sendTime) + " " + button(once->button);
  const auto& r = std::get<RecurrenceAnswer>(answer);
  std::string text = "type " + std::to_string(r.recurrenceType) + (r.everyWeekday ? " every weekday" : "") +
                     " interval " + std::to_string(r.interval) + " mask " +
                     std::to_string(r.dayOfWeekMask) + " day " + std::to_string(r.dayOfMonth) + " instance " +
                     std::to_string(r.instance) + " month " + std::to_string(r.monthOfYear);
  text += r.startTime ? " at " + date(*r.startTime).substr(11) : " at shown";
  text += r.startDate ? " from " + date(*r.startDate).substr(0, 10) : " from shown";
  switch (r.end) {
    case RecurrenceEnd::NoEnd: text += ", no end"; break;
    case RecurrenceEnd::AfterOccurrences: text += ", " + std::to_string(r.occurrences) + " times"; break;
    case RecurrenceEnd::ByDate: text += ", until " + date(r.endDate).substr(0, 10); break;
  }
  return text + ", " + button(r.button);
}

struct ReadCase {
  const char* line;
  const char* meaning;
};

class AnswerRead : public ::testing::TestWithParam<ReadCase> {};

TEST_P(AnswerRead, MeansWhatThePersonDecided) {
  const ParsedAnswer parsed = ParseAnswer(GetParam().line);
  ASSERT_TRUE(parsed.answer) << parsed.error;
  EXPECT_EQ(Describe(*parsed.answer), GetParam().meaning);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, AnswerRead,
    ::testing::Values(
        ReadCase{"Cancel", "cancel"},
        ReadCase{"once at 2025-03-03 10:00, OK", "once 2025-03-03 10:00 OK"},
        ReadCase{"ONCE AT 2025-03-03 7:05", "once 2025-03-03 07:05 OK"},
        ReadCase{"once at 2025-03-03 23:59, cancel", "once 2025-03-03 23:59 Cancel"},
        ReadCase{"weekly every 1 week on Monday and Friday at 9:30 from 2025-03-03, 10 times, OK",
                 "type 1 interval 1 mask 34 day 0 instance 0 month 0 at 09:30 from 2025-03-03, 10 times, OK"},
        ReadCase{"weekly every 2 weeks on sunday saturday",
                 "type 1 interval 2 mask 65 day 0 instance 0 month 0 at shown from shown, no end, OK"},
        ReadCase{"daily every 3 day(s) from 2025-01-31 at 8:00, until 2025-02-28",
                 "type 0 interval 3 mask 0 day 0 instance 0 month 0 at 08:00 from 2025-01-31, until 2025-02-28, OK"},
        ReadCase{"daily every weekday, no end, OK",
                 "type 0 every weekday interval 1 mask 0 day 0 instance 0 month 0 at shown from shown, no end, OK"},
        ReadCase{"monthly on the last Friday, no end, OK",
                 "type 3 interval 1 mask 32 day 0 instance 5 month 0 at shown from shown, no end, OK"},
        ReadCase{"monthly on day 31 every 2 months, 4 times",
                 "type 2 interval 2 mask 0 day 31 instance 0 month 0 at shown from shown, 4 times, OK"},
        ReadCase{"monthly on the first weekend day every 1 month",
                 "type 3 interval 1 mask 65 day 0 instance 1 month 0 at shown from shown, no end, OK"},
        ReadCase{"yearly on February 29 from 2028-01-01, no end, OK",
                 "type 5 interval 1 mask 0 day 29 instance 0 month 2 at shown from 2028-01-01, no end, OK"},
        ReadCase{"yearly on the second weekday of March, 3 times, Cancel",
                 "type 6 interval 1 mask 62 day 0 instance 2 month 3 at shown from shown, 3 times, Cancel"}));

struct BadCase {
  const char* line;
  const char* complaint;  // a part of the error message
};

class AnswerRefused : public ::testing::TestWithParam<BadCase> {};

TEST_P(AnswerRefused, SaysWhatIsWrong) {
  const ParsedAnswer parsed = ParseAnswer(GetParam().line);
  ASSERT_FALSE(parsed.answer);
  EXPECT_NE(parsed.error.find(GetParam().complaint), std::string::npos) << parsed.error;
  EXPECT_NE(parsed.error.find(GetParam().line), std::string::npos) << "the error quotes the line";
}

INSTANTIATE_TEST_SUITE_P(
    Lines, AnswerRefused,
    ::testing::Values(BadCase{"", "empty"}, BadCase{"sometimes", "expected Cancel, once, daily"},
                      BadCase{"once at 2025-02-30 10:00", "expected a date"},
                      BadCase{"once at 2025-03-03 24:00", "expected a time"},
                      BadCase{"once at 2025-03-03 10:00, 3 times", "ends with OK or Cancel"},
                      BadCase{"weekly every 1 week on Funday", "weekday's name"},
                      BadCase{"weekly every x weeks on Monday", "expected a number"},
                      BadCase{"monthly on the fifth Friday", "first, second, third, fourth or last"},
                      BadCase{"yearly on Smarch 3", "month's name"},
                      BadCase{"daily every 1 day, no end, 5 times", "two ends"},
                      BadCase{"daily every 1 day, OK, Cancel", "two buttons"},
                      BadCase{"Cancel, OK", "nothing may follow Cancel"},
                      BadCase{"daily every 1 day tomorrow", "\"at TIME\" or \"from DATE\""}));

}  // namespace
}  // namespace scenario
