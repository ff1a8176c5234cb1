// The runtime's conversion rules that the text form and the log depend on.
#include "base/variant.h"

#include <gtest/gtest.h>

#include <optional>

#include "base/runtime_error.h"

namespace qorvane {
namespace {

std::int32_t ErrorOf(auto&& f) {
  try {
    f();
  } catch (const RuntimeError& e) {
    return e.Number();
  }
  return 0;
}

TEST(Variant, CLngRoundsHalfToEvenAndRejectsNonNumbers) {
  const struct {
    const char* text;
    std::int32_t value;
    std::int32_t error;
  } cases[] = {
      {"10", 10, 0},          {" -7 ", -7, 0},   {"+3", 3, 0},          {"2.5", 2, 0},
      {"3.5", 4, 0},          {"-2.5", -2, 0},   {"1e3", 1000, 0},      {"0", 0, 0},
      {"", 0, 13},            {"abc", 0, 13},    {"1,5", 15, 0},        {"12x", 0, 13},
      {"&H10", 16, 0},        {"&HFFFFFFFF", -1, 0}, {"&O17", 15, 0},   {"&H100000000", 0, 6},
      {"2147483647", 2147483647, 0}, {"2147483648", 0, 6}, {"-2147483649", 0, 6}, {".", 0, 13},
  };
  for (const auto& c : cases) {
    std::int32_t value = 0;
    EXPECT_EQ(ErrorOf([&] { value = CLng(c.text); }), c.error) << c.text;
    if (c.error == 0) {
      EXPECT_EQ(value, c.value) << c.text;
    }
  }
}

TEST(Variant, CBoolAcceptsNumbersAndWords) {
  const struct {
    const char* text;
    bool value;
    std::int32_t error;
  } cases[] = {
      {"1", true, 0}, {"0", false, 0}, {"2", true, 0},    {"-1", true, 0},  {"True", true, 0},
      {"FALSE", false, 0}, {"0.0", false, 0}, {"yes", false, 13}, {"", false, 13},
  };
  for (const auto& c : cases) {
    bool value = false;
    EXPECT_EQ(ErrorOf([&] { value = CBool(c.text); }), c.error) << c.text;
    if (c.error == 0) {
      EXPECT_EQ(value, c.value) << c.text;
    }
  }
}

TEST(Variant, NumericValueFollowsIsNumeric) {
  EXPECT_EQ(Variant().NumericValue(), 0.0);
  EXPECT_EQ(Variant(true).NumericValue(), -1.0);
  EXPECT_EQ(Variant(12).NumericValue(), 12.0);
  EXPECT_EQ(Variant("12").NumericValue(), 12.0);
  EXPECT_EQ(Variant(" 1.5 ").NumericValue(), 1.5);
  EXPECT_FALSE(Variant("x12").NumericValue());
  EXPECT_FALSE(Variant(DateValue{45719.0}).NumericValue());
  EXPECT_EQ(Variant(5000000000LL).GetKind(), Variant::Kind::Double);
  EXPECT_EQ(Variant(7L).GetKind(), Variant::Kind::Long);
}

// What the runtime reads as a number, by the separators of three locales
// (en-US groups with "," and has "." for decimals, de-DE the other way
// round, fr-FR groups with a no-break space). Checked against oleaut32's
// VarR8FromStr under wine, currency symbols left out.
TEST(Variant, ParseNumberReadsWhatIsNumericAccepts) {
  const NumberSeparators us{".", ","};
  const NumberSeparators de{",", "."};
  const NumberSeparators fr{",", "\xC2\xA0"};
  const struct {
    const char* text;
    const NumberSeparators& separators;
    std::optional<double> value;
  } cases[] = {
      {"1,000", us, 1000},        {"1,000", de, 1},           {"1,5", de, 1.5},          {"1.5", de, 15},
      {"1.000,5", de, 1000.5},    {"1,000.5", us, 1000.5},    {"1,,000", us, 1000},      {"12,", us, 12},
      {",5", us, std::nullopt},   {",5", de, 0.5},            {"1.", us, 1},             {".", us, std::nullopt},
      {"1 000", fr, 1000},        {"1\xC2\xA0" "000", fr, 1000}, {"1.5", fr, std::nullopt},
      {" \t12\n", us, 12},       {"- 12", us, -12},          {"12-", us, -12},          {"(12)", us, -12},
      {"(-12)", us, std::nullopt}, {"1e3", us, 1000},         {"1,000e2", us, 100000},   {"1e", us, std::nullopt},
      {"1d3", us, std::nullopt},  {"1.2.3", us, std::nullopt}, {"$12", us, std::nullopt},
      {"&H10", us, 16},           {"&h1f", de, 31},           {" &O17 ", us, 15},        {"&o8", us, std::nullopt},
      {"&HFFFF", us, 65535},      {"&H80000000", us, -2147483648.0}, {"&H", us, std::nullopt},
      {"&H1G", us, std::nullopt}, {"&17", us, std::nullopt},  {"-&H10", us, std::nullopt}, {"&H-1", us, std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ParseNumber(c.text, c.separators), c.value) << "[" << c.text << "] with decimal " << c.separators.decimal;
  }
}

TEST(Variant, ConversionsUseTheInstalledSeparators) {
  struct Restore {
    ~Restore() { SetNumberSeparatorsSource(previous); }
    NumberSeparatorsSource previous;
  } restore{SetNumberSeparatorsSource([] { return NumberSeparators{",", "."}; })};
  EXPECT_EQ(CLng("1.000"), 1000);
  EXPECT_EQ(CLng("2,5"), 2);
  EXPECT_EQ(Variant("1,5").NumericValue(), 1.5);
  SetNumberSeparatorsSource(nullptr);
  EXPECT_EQ(Variant("1,5").NumericValue(), 15.0) << "\".\" and \",\" without a source";
}

TEST(Variant, NumberTextIsPlain) {
  const struct {
    double value;
    const char* text;
  } cases[] = {{3, "3"}, {-12, "-12"}, {1.5, "1.5"}, {0.1, "0.1"}, {1e20, "1E+20"}, {0.25, "0.25"}};
  for (const auto& c : cases) EXPECT_EQ(NumberText(c.value), c.text);
}

}  // namespace
}  // namespace qorvane
