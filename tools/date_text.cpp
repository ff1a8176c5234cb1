// Date construction for the qorvane tool; see date_text.h.
#include "tools/date_text.h"

#include "base/ole_date.h"

namespace qorvane::tool {

double ToOleDate(const DateParts& date) { return DateSerialRollOver(date.year, date.month, date.day); }
double ToOleTime(const ClockParts& time) { return TimeSerial(time.hour, time.minute, 0); }

}  // namespace qorvane::tool
