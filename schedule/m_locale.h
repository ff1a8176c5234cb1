// mLocale: locale-dependent formats that the editing dialogs use.
#pragma once

#include <string>

namespace mLocale {

// The user's time format without seconds ("h:mm:ss tt" gives "h:mm tt",
// "HH:mm:ss" gives "HH:mm"). True on success; false (logged) when the locale
// can't be asked, and fmt is then left as it was.
bool GetTimeFormat(std::string& fmt);

}  // namespace mLocale
