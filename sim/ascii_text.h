// The few text helpers the simulated client needs: the real client compares
// folder, view, property and recipient names without regard to ASCII case.
#pragma once

#include <string>
#include <string_view>

namespace sim {

inline char LowerAscii(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + ('a' - 'A')) : c; }

inline std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = LowerAscii(c);
  return lower;
}

inline bool EqualsNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
  }
  return true;
}

inline std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

}  // namespace sim
