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
