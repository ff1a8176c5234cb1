// Building records and reading dates in the shape the case tables use.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "base/iso_date_text.h"
#include "base/ole_date.h"
#include "schedule/mail_props.h"

namespace qorvane::testing {

// "2025-03-03" or "2025-03-03 09:30".
inline double At(const std::string& text) {
  int y = 0, mo = 0, d = 0, h = 0, mi = 0;
  const int n = std::sscanf(text.c_str(), "%d-%d-%d %d:%d", &y, &mo, &d, &h, &mi);
  double date = DateSerialRollOver(y, mo, d);
  if (n == 5) date += TimeSerial(h, mi, 0);
  return date;
}

inline std::string Text(double date) { return IsoMinuteText(date); }

inline std::vector<std::string> Texts(const std::vector<double>& dates) {
  std::vector<std::string> texts;
  for (double d : dates) texts.push_back(Text(d));
  return texts;
}

struct Pattern {
  std::int32_t type = 0;
  std::int32_t interval = 1;
  std::int32_t mask = 0;
  std::int32_t dayOfMonth = 0;
  std::int32_t month = 0;
  std::int32_t instance = 0;
  const char* start = "2025-03-03";
  const char* time = "09:30";
};

inline CMailProps Record(const Pattern& p) {
  CMailProps r;
  r.m_IsRecurring = true;
  r.m_RecurrenceType = p.type;
  r.m_Interval = p.interval;
  r.m_DayOfWeekMask = p.mask;
  r.m_DayOfMonth = p.dayOfMonth;
  r.m_MonthOfYear = p.month;
  r.m_Instance = p.instance;
  r.m_PatternStartDate = At(p.start);
  r.m_StartTime = At(std::string("1899-12-30 ") + p.time);
  r.m_NoEndDate = true;
  return r;
}

}  // namespace qorvane::testing
