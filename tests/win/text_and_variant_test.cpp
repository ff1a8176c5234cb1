// The toolkit's owned values: BSTRs carry UTF-8 both ways, VARIANTs carry the
// add-in's values both ways and convert the way the runtime does.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <tuple>

#include "base/runtime_error.h"
#include "win/com/bstr.h"
#include "win/com/variant.h"

namespace qorvane::com {
namespace {

std::int32_t ErrorOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

TEST(BstrTest, CarriesUtf8BothWaysAndReadsNullAsEmpty) {
  for (const std::string& text : std::initializer_list<std::string>{"", "plain", "Gr\xC3\xBC\xC3\x9F" "e \xE2\x82\xAC", "clef \xF0\x9D\x84\x9E", std::string("nul\0in", 6)}) {
    const Bstr bstr(text);
    EXPECT_EQ(bstr.Utf8(), text);
  }
  EXPECT_EQ(SysStringLen(Bstr("\xF0\x9D\x84\x9E").get()), 2u) << "a surrogate pair";
  EXPECT_EQ(Bstr().Utf8(), "");
  Bstr moved(Bstr("kept"));
  EXPECT_EQ(moved.Utf8(), "kept");
}

bool SameValue(const Variant& a, const Variant& b) {
  if (a.GetKind() != b.GetKind()) return false;
  switch (a.GetKind()) {
    case Variant::Kind::Bool: return a.AsBool() == b.AsBool();
    case Variant::Kind::Long: return a.AsLong() == b.AsLong();
    case Variant::Kind::Double: return a.AsDouble() == b.AsDouble();
    case Variant::Kind::Date: return a.AsDate() == b.AsDate();
    case Variant::Kind::String: return a.AsString() == b.AsString();
    case Variant::Kind::Empty: return true;
  }
  return false;
}

TEST(ScopedVariantTest, AddInValuesCrossAsTheirAutomationTypesAndBack) {
  const std::tuple<const char*, Variant, VARTYPE> cases[] = {
      {"empty", Variant(), VT_EMPTY},
      {"true", Variant(true), VT_BOOL},
      {"false", Variant(false), VT_BOOL},
      {"long", Variant(-42), VT_I4},
      {"double", Variant(2.5), VT_R8},
      {"date", Variant(DateValue{45719.395833}), VT_DATE},
      {"text", Variant("Gr\xC3\xBC\xC3\x9F" "e"), VT_BSTR},
  };
  for (const auto& [name, value, type] : cases) {
    SCOPED_TRACE(name);
    const ScopedVariant variant(value);
    EXPECT_EQ(variant.Type(), type);
    EXPECT_TRUE(SameValue(variant.ToValue(), value));
    const ScopedVariant copy = variant;
    EXPECT_TRUE(SameValue(copy.ToValue(), value)) << "a copy owns its own value";
  }
}

TEST(ScopedVariantTest, ReadersConvertAsTheRuntimeDoesAndRaiseWhenTheyCannot) {
  // The value, the reader, and what it gives (0: raises that error number).
  const std::tuple<const char*, ScopedVariant, std::function<std::string(const ScopedVariant&)>, std::string,
                   std::int32_t>
      cases[] = {
          {"numeric text as long", ScopedVariant("12"), [](const ScopedVariant& v) { return std::to_string(v.ToLong()); },
           "12", 0},
          {"long as text", ScopedVariant(7L), [](const ScopedVariant& v) { return v.ToText(); }, "7", 0},
          {"true as long", ScopedVariant(true), [](const ScopedVariant& v) { return std::to_string(v.ToLong()); }, "-1",
           0},
          {"empty as text", ScopedVariant(), [](const ScopedVariant& v) { return v.ToText(); }, "", 0},
          {"zero as bool", ScopedVariant(0L), [](const ScopedVariant& v) { return v.ToBool() ? "T" : "F"; }, "F", 0},
          {"words as long", ScopedVariant("twelve"),
           [](const ScopedVariant& v) { return std::to_string(v.ToLong()); }, "", err::kTypeMismatch},
          {"too big for long", ScopedVariant(3e10), [](const ScopedVariant& v) { return std::to_string(v.ToLong()); },
           "", err::kOverflow},
          {"a value as object", ScopedVariant(1L), [](const ScopedVariant& v) { return v.ToObject() ? "o" : "-"; }, "",
           err::kTypeMismatch},
          {"empty as object", ScopedVariant(), [](const ScopedVariant& v) { return v.ToObject() ? "o" : "-"; }, "-", 0},
      };
  for (const auto& [name, value, read, expected, error] : cases) {
    SCOPED_TRACE(name);
    std::string got;
    EXPECT_EQ(ErrorOf([&] { got = read(value); }), error);
    if (error == 0) {
      EXPECT_EQ(got, expected);
    }
  }
}

TEST(ScopedVariantTest, ByReferenceValuesReadThroughTheirReference) {
  VARIANT_BOOL flag = VARIANT_TRUE;
  const ScopedVariant reference = ScopedVariant::BoolRef(&flag);
  EXPECT_EQ(reference.Type(), VT_BOOL | VT_BYREF);
  EXPECT_TRUE(reference.ToValue().AsBool());
  flag = VARIANT_FALSE;
  EXPECT_FALSE(ScopedVariant::CopyOf(reference.get()).ToBool()) << "a copy takes the value it points to";
  EXPECT_EQ(ScopedVariant::Missing().Type(), VT_ERROR);
}

}  // namespace
}  // namespace qorvane::com
