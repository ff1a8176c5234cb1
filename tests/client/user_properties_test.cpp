// Conformance: typed user properties, their conversions, lookup by name
// without case, and Add / Delete.
#include <cmath>
#include <optional>

#include "tests/client/sim_fixture.h"

namespace client_conformance {
namespace {

using qorvane::DateValue;
using qorvane::Variant;
using Kind = Variant::Kind;

template <class F>
class UserPropertiesTest : public ClientTest<F> {
 protected:
  Ref<client::UserProperties> NewProperties() {
    return this->fixture.AddMail(this->Inbox(), "props", "a@example.com")->UserProperties();
  }
};
TYPED_TEST_SUITE(UserPropertiesTest, ClientFixtures);

// A value given to a property of a type, and what it reads back as (nothing:
// the conversion raises 13 and the old value stays).
struct ValueCase {
  const char* name;
  long type;
  Variant given;
  std::optional<Variant> expected;
};

bool SameValue(const Variant& a, const Variant& b) {
  if (a.GetKind() != b.GetKind()) return false;
  switch (a.GetKind()) {
    case Kind::Empty: return true;
    case Kind::Bool: return a.AsBool() == b.AsBool();
    case Kind::Long: return a.AsLong() == b.AsLong();
    case Kind::Double: return a.AsDouble() == b.AsDouble();
    case Kind::Date: return std::abs(a.AsDate() - b.AsDate()) < 1e-9;
    case Kind::String: return a.AsString() == b.AsString();
  }
  return false;
}

const ValueCase kValueCases[] = {
    {"text from text", client::olText, "abc", Variant("abc")},
    {"text from a number", client::olText, 12, Variant("12")},
    {"text from a Boolean", client::olText, true, Variant("True")},
    {"number from a number", client::olNumber, 12, Variant(12.0)},
    {"number from numeric text", client::olNumber, " 3.5 ", Variant(3.5)},
    {"number from True", client::olNumber, true, Variant(-1.0)},
    {"number from words", client::olNumber, "twelve", std::nullopt},
    {"date from a date", client::olDateTime, DateValue{45719.5}, Variant(DateValue{45719.5})},
    {"date from ISO text", client::olDateTime, "2025-03-03 09:30", Variant(DateValue{45719.0 + 9.5 / 24})},
    {"date from a serial number", client::olDateTime, 45719.25, Variant(DateValue{45719.25})},
    {"date from words", client::olDateTime, "soon", std::nullopt},
    {"date from a Boolean", client::olDateTime, true, std::nullopt},
    {"yes/no from a Boolean", client::olYesNo, true, Variant(true)},
    {"yes/no from text", client::olYesNo, "False", Variant(false)},
    {"yes/no from a number", client::olYesNo, 2, Variant(true)},
    {"yes/no from zero", client::olYesNo, 0, Variant(false)},
    {"yes/no from words", client::olYesNo, "maybe", std::nullopt},
};

TYPED_TEST(UserPropertiesTest, ValuesConvertToThePropertyType) {
  for (const auto& c : kValueCases) {
    SCOPED_TRACE(c.name);
    const auto property = this->NewProperties()->Add("Value", c.type);
    EXPECT_EQ(property->Type(), c.type);
    const Variant before = property->Value();
    const std::int32_t error = ErrorOf([&] { property->Value(c.given); });
    if (c.expected) {
      EXPECT_EQ(error, 0);
      EXPECT_TRUE(SameValue(property->Value(), *c.expected));
    } else {
      EXPECT_EQ(error, qorvane::err::kTypeMismatch);
      EXPECT_TRUE(SameValue(property->Value(), before)) << "a failed conversion changes nothing";
    }
  }
}

TYPED_TEST(UserPropertiesTest, NewPropertiesHoldTheirTypesEmptyValue) {
  const std::pair<long, Variant> cases[] = {
      {client::olText, Variant("")}, {client::olNumber, Variant(0.0)}, {client::olYesNo, Variant(false)}};
  for (const auto& [type, empty] : cases) {
    SCOPED_TRACE(type);
    EXPECT_TRUE(SameValue(this->NewProperties()->Add("Fresh", type)->Value(), empty));
  }
  EXPECT_EQ(this->NewProperties()->Add("When", client::olDateTime)->Value().GetKind(), Kind::Date);
}

TYPED_TEST(UserPropertiesTest, FindIgnoresCase) {
  const auto properties = this->NewProperties();
  properties->Add("ScheduleTime", client::olDateTime);
  properties->Add("MoveToQorvane", client::olText);
  const std::pair<const char*, const char*> cases[] = {{"ScheduleTime", "ScheduleTime"},
                                                       {"scheduletime", "ScheduleTime"},
                                                       {"MOVETOQORVANE", "MoveToQorvane"},
                                                       {"Schedule", nullptr},
                                                       {"", nullptr}};
  for (const auto& [asked, found] : cases) {
    SCOPED_TRACE(asked);
    const auto property = properties->Find(asked);
    if (found) {
      ASSERT_TRUE(property);
      EXPECT_EQ(property->Name(), found);
    } else {
      EXPECT_FALSE(property);
    }
  }
}

TYPED_TEST(UserPropertiesTest, AddingAnExistingNameRaises) {
  const auto properties = this->NewProperties();
  properties->Add("ScheduleTime", client::olDateTime);
  for (const auto& [name, type] :
       {std::pair{"ScheduleTime", client::olDateTime}, std::pair{"scheduletime", client::olText}}) {
    SCOPED_TRACE(name);
    EXPECT_NE(ErrorOf([&] { properties->Add(name, type); }), 0);
  }
  EXPECT_EQ(properties->Count(), 1);
}

TYPED_TEST(UserPropertiesTest, ItemsKeepAddOrderAndDeleteRemoves) {
  const auto properties = this->NewProperties();
  for (const char* name : {"A", "B", "C"}) properties->Add(name, client::olText);
  const auto middle = properties->Item(2);
  EXPECT_EQ(middle->Name(), "B");
  middle->Delete();
  ASSERT_EQ(properties->Count(), 2);
  EXPECT_EQ(properties->Item(1)->Name(), "A");
  EXPECT_EQ(properties->Item(2)->Name(), "C");
  EXPECT_FALSE(properties->Find("B"));
  EXPECT_NE(ErrorOf([&] { middle->Value(); }), 0) << "a deleted property is gone";
  EXPECT_NE(ErrorOf([&] { properties->Item(3); }), 0);
  properties->Add("B", client::olNumber);
  EXPECT_EQ(properties->Find("b")->Type(), client::olNumber) << "the name is free again";
}

TYPED_TEST(UserPropertiesTest, ValuesLiveOnTheItemNotOnTheObject) {
  const auto mail = this->fixture.AddMail(this->Inbox(), "props", "a@example.com");
  mail->UserProperties()->Add("ScheduleTime", client::olDateTime)->Value(DateValue{45720.25});
  mail->Save();
  const auto again = this->Inbox()->Items()->Item(1);
  EXPECT_EQ(again->UserProperties()->Find("ScheduleTime")->Value().AsDate(), 45720.25);
}

}  // namespace
}  // namespace client_conformance
