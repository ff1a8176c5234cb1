// Fuzz target: the schedule line stored on a mail ("1;1;0;0;0;34;1;10;0;...;
// #10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM"), read the way the add-in reads
// it and then used the way the add-in uses it:
//
//   - ReadFromString, and a line that read is written and read back the same;
//   - GetDescText(true), the sentence of the dialogs, naming the last send;
//   - SetFirstOccurrence and the catch-up of sending: advance with
//     SetNextOccurrence while the send time is not after "now" (a year after
//     the first send, as for a mail whose client was closed for a year).
//
// Findings: a listing that does not end within bounded work and memory
// (libFuzzer's -timeout, -rss_limit_mb and -malloc_limit_mb catch those), an
// advance that reports success without moving the send time strictly
// forward, more than one send a day, or a line that reads back otherwise.
// Dates are read in en-US; the engine's weeks start on Sunday.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "fuzz/fuzz_support.h"
#include "platform/clock.h"
#include "platform/locale.h"
#include "schedule/first_dow.h"
#include "schedule/mail_props.h"

using qorvane::fuzz::Check;

namespace {

// How late the catch-up comes, in days. Every pattern sends at most once a
// day, so no more sends than days (and the first) can be due.
constexpr double kCatchUpDays = 366;

std::string Exact(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.17g", value);
  return text;
}

// Every field of the text form, exactly.
std::string Fields(const CMailProps& p) {
  std::string text;
  for (const std::int32_t number : {std::int32_t{p.m_IsRecurring}, p.m_RecurrenceType, p.m_DayOfMonth,
                                    p.m_MonthOfYear, p.m_Instance, p.m_DayOfWeekMask, p.m_Interval,
                                    p.m_Occurrences, std::int32_t{p.m_NoEndDate}})
    text += std::to_string(number) + ";";
  for (const std::string& attachment : p.m_collAttachments) text += attachment + ";";
  return text + Exact(p.m_StartTime) + "#" + Exact(p.m_PatternStartDate) + "#" + Exact(p.m_PatternEndDate);
}

void CheckRoundTrip(CMailProps& read) {
  const std::string written = read.WriteToString();
  CMailProps again;
  Check(again.ReadFromString(written), "the written line does not read back: " + written);
  Check(Fields(again) == Fields(read), "the line reads back otherwise: " + Fields(read) + " / " + Fields(again));
}

// The loop of Main::SendMessage, without the mail.
void CatchUp(CMailProps& props) {
  const double now = props.m_ScheduleTime + kCatchUpDays;
  int sends = 0;
  do {
    ++sends;
    Check(sends <= kCatchUpDays + 1, "more sends due than days have passed");
    const double before = props.m_ScheduleTime;
    bool advanced = false;
    try {
      advanced = props.SetNextOccurrence();
    } catch (const qorvane::RuntimeError&) {
      return;  // the send pass logs it and sends nothing
    }
    if (!advanced) return;
    Check(props.m_ScheduleTime > before, "an advance that reported success did not move the send time forward");
    Check(qorvane::DatePart(props.m_ScheduleTime) == props.m_PatternStartDate,
          "after an advance the pattern start is not the send day");
  } while (now >= props.m_ScheduleTime);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qorvane::fuzz::QuietLog();
  qorvane::SelectLocale("en-US");
  qorvane::SetFirstDOW(0);
  static const qorvane::FixedClock clock(45719.375);  // 2025-03-03 09:00
  qorvane::SetClock(&clock);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string line(reinterpret_cast<const char*>(data), size);
  CMailProps props;
  const bool read = props.ReadFromString(line);
  if (read) CheckRoundTrip(props);
  // A mail whose two properties agree: the send time on the pattern's start.
  props.m_ScheduleTime = props.m_PatternStartDate + props.m_StartTime;
  props.GetDescText(true);
  if (!read) return 0;
  try {
    props.SetFirstOccurrence();
  } catch (const qorvane::RuntimeError&) {
    return 0;  // no first send: the dialog says so and keeps the mail
  }
  CatchUp(props);
  return 0;
}
