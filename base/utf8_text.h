// Text lengths and slices counted the way the runtime counts them (UTF-16
// code units) over the UTF-8 strings the add-in keeps, so that the length
// prefixes of the schedule's text form agree with what earlier versions wrote.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qorvane {

// Len: UTF-16 code units of a UTF-8 text.
std::size_t TextLength(std::string_view utf8) noexcept;
// Mid(text, start, count) with start 1-based and both in UTF-16 code units;
// a start beyond the end gives "". count < 0 means "to the end".
std::string TextMid(std::string_view utf8, std::size_t start, std::ptrdiff_t count = -1);

}  // namespace qorvane
