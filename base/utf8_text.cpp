// UTF-16 code unit counting over UTF-8 text.
#include "base/utf8_text.h"

namespace qorvane {
namespace {

// Bytes of the UTF-8 sequence that starts with lead, and the UTF-16 units it
// stands for (2 for characters outside the basic plane).
struct Sequence {
  std::size_t bytes;
  std::size_t units;
};

Sequence SequenceAt(std::string_view text, std::size_t pos) noexcept {
  const auto lead = static_cast<unsigned char>(text[pos]);
  std::size_t bytes = 1;
  std::size_t units = 1;
  if (lead >= 0xF0) {
    bytes = 4;
    units = 2;
  } else if (lead >= 0xE0) {
    bytes = 3;
  } else if (lead >= 0xC0) {
    bytes = 2;
  }
  if (pos + bytes > text.size()) bytes = text.size() - pos;
  return {bytes, units};
}

}  // namespace

char32_t DecodeUtf8(std::string_view text, std::size_t& pos, bool& valid) noexcept {
  const auto lead = static_cast<unsigned char>(text[pos]);
  valid = true;
  if (lead < 0x80) {
    ++pos;
    return lead;
  }
  std::size_t length = 0;
  char32_t cp = 0;
  char32_t minimum = 0;
  if ((lead & 0xE0) == 0xC0) {
    length = 2, cp = lead & 0x1F, minimum = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3, cp = lead & 0x0F, minimum = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4, cp = lead & 0x07, minimum = 0x10000;
  }
  if (length != 0 && pos + length <= text.size()) {
    bool ok = true;
    for (std::size_t i = 1; i < length && ok; ++i) {
      const auto next = static_cast<unsigned char>(text[pos + i]);
      ok = (next & 0xC0) == 0x80;
      cp = (cp << 6) | (next & 0x3F);
    }
    if (ok && cp >= minimum && cp <= 0x10FFFF && (cp < 0xD800 || cp > 0xDFFF)) {
      pos += length;
      return cp;
    }
  }
  valid = false;
  ++pos;
  return 0xDC00 + lead;
}

void AppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

std::size_t TextLength(std::string_view utf8) noexcept {
  std::size_t units = 0;
  for (std::size_t pos = 0; pos < utf8.size();) {
    const Sequence s = SequenceAt(utf8, pos);
    pos += s.bytes;
    units += s.units;
  }
  return units;
}

std::string TextMid(std::string_view utf8, std::size_t start, std::ptrdiff_t count) {
  if (start < 1) start = 1;
  std::size_t unit = 1;
  std::size_t pos = 0;
  while (pos < utf8.size() && unit < start) {
    const Sequence s = SequenceAt(utf8, pos);
    pos += s.bytes;
    unit += s.units;
  }
  if (pos >= utf8.size()) return {};
  if (count < 0) return std::string(utf8.substr(pos));
  const std::size_t begin = pos;
  std::size_t taken = 0;
  while (pos < utf8.size() && taken < static_cast<std::size_t>(count)) {
    const Sequence s = SequenceAt(utf8, pos);
    pos += s.bytes;
    taken += s.units;
  }
  return std::string(utf8.substr(begin, pos - begin));
}

}  // namespace qorvane
