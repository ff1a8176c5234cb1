// Date output and construction for the qorvane tool; see date_text.h.
#include "tools/date_text.h"

#include <cstdio>

#include "base/ole_date.h"

namespace qorvane::tool {

namespace {

std::string Format(double date, bool with_seconds) {
  CivilDate civil;
  TimeOfDay time;
  SplitRounded(date, civil, time);
  char buffer[48];
  if (with_seconds) {
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d", civil.year, civil.month,
                  civil.day, time.hour, time.minute, time.second);
  } else {
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d", civil.year, civil.month, civil.day,
                  time.hour, time.minute);
  }
  return buffer;
}

}  // namespace

std::string FormatMinute(double date) { return Format(date, false); }
std::string FormatSecond(double date) { return Format(date, true); }

double ToOleDate(const DateParts& date) { return DateSerialRollOver(date.year, date.month, date.day); }
double ToOleTime(const ClockParts& time) { return TimeSerial(time.hour, time.minute, 0); }

}  // namespace qorvane::tool
