// The first day of the week that weekly recurrences align their weeks to, as
// the user set it in the mail client's calendar options: 1 = Sunday ..
// 7 = Saturday, or 0 to use the first day of the week of the user's locale.
// The add-in sets it from the client's settings at start-up; until then it is
// 0. UI thread only.
#pragma once

namespace qorvane {

int FirstDOW() noexcept;
void SetFirstDOW(int firstDayOfWeek) noexcept;

// FirstDOW() with 0 replaced by the current locale's first day (1..7).
int EffectiveFirstDOW();

}  // namespace qorvane
