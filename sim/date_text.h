// Date-times as text the way the simulated client reads and writes them:
// filter literals ('2025-03-03 09:30'), user property values given as text,
// and the general date form of an en-US client ("3/3/2025 9:30:00 AM") for
// the send log. Kept apart from the add-in's own locale code on purpose: the
// simulated client must not agree with the add-in by sharing its code.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sim {

// "YYYY-MM-DD[ HH:MM[:SS]]" (also with a 'T') or "M/D/YYYY[ h:mm[:ss][ AM|PM]]";
// nothing for anything else or for a date that does not exist.
std::optional<double> ParseDateText(std::string_view text);

// "M/D/YYYY h:mm:ss AM", the date alone at midnight, the time alone on day 0.
std::string GeneralDateText(double date);

}  // namespace sim
