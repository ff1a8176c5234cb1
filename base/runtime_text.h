// The runtime's LCase and Trim over the add-in's UTF-8 text, and the
// case-blind comparison built on them.
//
// LCase lowers every letter, not only A to Z: the ignore list must hold
// "Ärger.TXT" as "ärger.txt", as the runtime would. Trim takes off blanks
// (U+0020) and nothing else; a tab or a no-break space is part of the text.
#pragma once

#include <string>
#include <string_view>

namespace qorvane {

// c in lower case by Unicode's simple mapping (one character for one, no
// language rules: "İ" gives "i", "ẞ" gives "ß"); c itself when it has none.
char32_t LowerCase(char32_t c) noexcept;

// LCase: the text with every letter lowered. Bytes that are not UTF-8 are
// kept as they are.
std::string LCase(std::string_view utf8);

// Whether a and b are the same text when case is ignored: LCase(a) == LCase(b).
bool EqualsIgnoringCase(std::string_view a, std::string_view b) noexcept;

// Trim, LTrim, RTrim: the text without its leading and/or trailing blanks.
std::string_view Trim(std::string_view text) noexcept;
std::string_view LTrim(std::string_view text) noexcept;
std::string_view RTrim(std::string_view text) noexcept;

}  // namespace qorvane
