// Lengths and slices in UTF-16 units, which the text form's prefixes count.
#include "base/utf8_text.h"

#include <gtest/gtest.h>

namespace qorvane {
namespace {

TEST(Utf8Text, LengthCountsUtf16Units) {
  EXPECT_EQ(TextLength(""), 0u);
  EXPECT_EQ(TextLength("9:30:00 AM"), 10u);
  EXPECT_EQ(TextLength("9:30:00 \xe5\x8d\x88\xe5\x89\x8d"), 10u);  // two CJK characters
  EXPECT_EQ(TextLength("\xf0\x9f\x98\x80"), 2u);                    // outside the basic plane
}

TEST(Utf8Text, MidTakesCharactersNotBytes) {
  const std::string text = "a\xc3\xa9z";  // a, e-acute, z
  const struct {
    std::size_t start;
    std::ptrdiff_t count;
    std::string expected;
  } cases[] = {
      {1, 1, "a"}, {2, 1, "\xc3\xa9"}, {2, -1, "\xc3\xa9z"}, {3, 5, "z"}, {4, 1, ""}, {9, -1, ""}, {1, 0, ""},
  };
  for (const auto& c : cases) EXPECT_EQ(TextMid(text, c.start, c.count), c.expected) << c.start << "," << c.count;
}

}  // namespace
}  // namespace qorvane
