// Locale-free date-time text; see iso_date_text.h.
#include "base/iso_date_text.h"

#include <cstdio>

namespace qorvane {

std::string IsoMinuteText(const CivilDate& date, const TimeOfDay& time) {
  char text[48];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d", date.year, date.month, date.day, time.hour,
                time.minute);
  return text;
}

std::string IsoSecondText(const CivilDate& date, const TimeOfDay& time) {
  return IsoMinuteText(date, time) + (time.second < 10 ? ":0" : ":") + std::to_string(time.second);
}

std::string IsoMinuteText(double date) {
  CivilDate civil;
  TimeOfDay time;
  SplitRounded(date, civil, time);
  return IsoMinuteText(civil, time);
}

std::string IsoSecondText(double date) {
  CivilDate civil;
  TimeOfDay time;
  SplitRounded(date, civil, time);
  return IsoSecondText(civil, time);
}

}  // namespace qorvane
