// Main: the add-in's version and the client's calendar option.
#pragma once

#include <string>

// The client's version cut to its first two fields ("11.0"), recorded when
// the add-in connects; "" until then.
extern std::string g_OutlookVersion;

namespace Main {

// The add-in's own version as "major.minor.revision".
std::string GetAppVersion();

// The client's first day of the week: 1 = Sunday .. 7 = Saturday, or 0 when
// the option can't be read (then the locale's first day applies).
int LoadFirstDOW();

// LoadFirstDOW into the recurrence engine's weekly computation.
void ApplyClientFirstDOW();

}  // namespace Main
