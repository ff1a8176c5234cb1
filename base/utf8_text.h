// UTF-8 as the add-in keeps its text: characters decoded one at a time, and
// lengths and slices counted the way the runtime counts them (UTF-16 code
// units), so that the length prefixes of the schedule's text form agree with
// what earlier versions wrote.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qorvane {

// The character that starts at pos, moving pos past it. A byte that does not
// start a well-formed sequence comes back as U+DC00 + byte with valid false
// (so that two different malformed texts never decode alike), and pos moves
// one byte. pos must be before the end.
char32_t DecodeUtf8(std::string_view text, std::size_t& pos, bool& valid) noexcept;
// Appends c in UTF-8.
void AppendUtf8(std::string& out, char32_t c);

// Len: UTF-16 code units of a UTF-8 text.
std::size_t TextLength(std::string_view utf8) noexcept;
// Mid(text, start, count) with start 1-based and both in UTF-16 code units;
// a start beyond the end gives "". count < 0 means "to the end".
std::string TextMid(std::string_view utf8, std::size_t start, std::ptrdiff_t count = -1);

}  // namespace qorvane
