// The runtime's conversion rules that the text form and the log depend on.
#include "base/variant.h"

#include <gtest/gtest.h>

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
      {"", 0, 13},            {"abc", 0, 13},    {"1,5", 0, 13},        {"12x", 0, 13},
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

TEST(Variant, NumberTextIsPlain) {
  const struct {
    double value;
    const char* text;
  } cases[] = {{3, "3"}, {-12, "-12"}, {1.5, "1.5"}, {0.1, "0.1"}, {1e20, "1E+20"}, {0.25, "0.25"}};
  for (const auto& c : cases) EXPECT_EQ(NumberText(c.value), c.text);
}

}  // namespace
}  // namespace qorvane
