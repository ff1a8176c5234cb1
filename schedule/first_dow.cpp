// The first day of the week that weekly recurrences use.
#include "schedule/first_dow.h"

#include "platform/locale.h"

namespace qorvane {
namespace {
int g_firstDow = 0;
}

int FirstDOW() noexcept { return g_firstDow; }
void SetFirstDOW(int firstDayOfWeek) noexcept { g_firstDow = firstDayOfWeek; }

int EffectiveFirstDOW() {
  if (g_firstDow >= 1 && g_firstDow <= 7) return g_firstDow;
  return CurrentLocale().FirstDayOfWeek();
}

}  // namespace qorvane
