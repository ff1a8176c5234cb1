// LCase over every alphabet, Trim over blanks only, and the case-blind
// comparison the ignore list and the locale names rely on.
#include "base/runtime_text.h"

#include <gtest/gtest.h>

namespace qorvane {
namespace {

TEST(RuntimeText, LCaseLowersEveryLetter) {
  const struct {
    const char* text;
    const char* lower;
  } cases[] = {
      {"Thumbs.DB", "thumbs.db"},
      {"\xC3\x84rger.TXT", "\xC3\xA4rger.txt"},               // Ärger
      {"\xC5\x81\xC3\x93" "D\xC5\xB9", "\xC5\x82\xC3\xB3" "d\xC5\xBA"},  // ŁÓDŹ: stride-2 pairs of Latin Extended
      {"\xCE\xA3\xCE\x91\xCE\xA3", "\xCF\x83\xCE\xB1\xCF\x83"},  // ΣΑΣ: no final-sigma rule
      {"\xD0\x96\xD0\x83", "\xD0\xB6\xD1\x93"},                 // ЖЃ
      {"\xC4\xB0", "i"},                                        // İ: the simple mapping
      {"\xC7\x85", "\xC7\x86"},                                 // ǅ, a title-case letter
      {"\xC8\xBA", "\xE2\xB1\xA5"},                             // Ⱥ (2 bytes) lowers to ⱥ (3 bytes)
      {"\xEF\xBC\xA1", "\xEF\xBD\x81"},                         // fullwidth Ａ
      {"\xF0\x90\x90\x80", "\xF0\x90\x90\xA8"},                 // Deseret, outside the basic plane
      {"\xC3\x9F\xE1\xBA\x9E", "\xC3\x9F\xC3\x9F"},             // ß stays, ẞ becomes ß
      {"\xE5\x8D\x88 123 _", "\xE5\x8D\x88 123 _"},             // no case: unchanged
      {"A\xFF" "B\xC3", "a\xFF" "b\xC3"},                       // bytes that are not UTF-8 stay
  };
  for (const auto& c : cases) EXPECT_EQ(LCase(c.text), c.lower) << c.text;
}

TEST(RuntimeText, TrimTakesOffBlanksOnly) {
  const struct {
    const char* text;
    const char* trim;
    const char* ltrim;
    const char* rtrim;
  } cases[] = {
      {"  a b  ", "a b", "a b  ", "  a b"},
      {"\ta\t", "\ta\t", "\ta\t", "\ta\t"},
      {"\xC2\xA0x ", "\xC2\xA0x", "\xC2\xA0x ", "\xC2\xA0x"},
      {"   ", "", "", ""},
      {"", "", "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Trim(c.text), c.trim) << "[" << c.text << "]";
    EXPECT_EQ(LTrim(c.text), c.ltrim) << "[" << c.text << "]";
    EXPECT_EQ(RTrim(c.text), c.rtrim) << "[" << c.text << "]";
  }
}

TEST(RuntimeText, EqualsIgnoringCaseAgreesWithLCase) {
  const struct {
    const char* a;
    const char* b;
    bool equal;
  } cases[] = {
      {"Qorvane", "qORVANE", true},
      {"\xC3\x84rger", "\xC3\xA4RGER", true},
      {"Qorvane", "Qorvane ", false},
      {"", "", true},
      {"\xFF", "\xFF", true},
      {"\xFF", "\xC3\xBF", false},  // a stray byte is not the letter ÿ
      {"\xC4\xB0", "i", true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(EqualsIgnoringCase(c.a, c.b), c.equal) << c.a << " vs " << c.b;
    EXPECT_EQ(EqualsIgnoringCase(c.a, c.b), LCase(c.a) == LCase(c.b)) << c.a << " vs " << c.b;
  }
}

}  // namespace
}  // namespace qorvane
