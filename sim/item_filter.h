// The filters Items.Restrict and Items.Find accept, parsed once and then
// tested against each item without going through any interface call, as the
// client's store does it.
//
// DASL ("@SQL=..."): a double-quoted property followed by IS [NOT] NULL or by
// a comparison (=, <>, <, <=, >, >=) with a single-quoted literal; conditions
// joined by AND, each optionally in parentheses. Properties: user properties
// through http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-C000-000000000046}/<Name>
// and the subject through urn:schemas:httpmail:subject. Date-times compare in
// UTC: the literal is UTC, the stored local value is converted first.
// Jet: [Subject], [To], [Start] or [End], or a user property that is a field
// of the folder, compared with a literal in single or double quotes,
// conditions joined by AND; date-times compare in local time.
// Anything else raises -2147352567, "Cannot parse condition", like the client.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/time_zone.h"
#include "sim/item_data.h"

namespace sim {

// What a filter needs to know of the collection it runs on.
struct FilterContext {
  // The type of the folder's field of that lower-case name, if it has one.
  std::function<std::optional<long>(const std::string&)> folderField;
  // The client's time zone, for DASL's UTC comparisons.
  const qorvane::TimeZone* zone = nullptr;
};

class ItemFilter {
 public:
  static ItemFilter Parse(std::string_view text, const FilterContext& context = {});
  bool Matches(const ItemData& item) const;

  enum class Field { Subject, To, Start, End, UserProperty };
  enum class Op { IsNull, IsNotNull, Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual };

  struct Condition {
    Field field = Field::Subject;
    std::string propertyName;  // lower case, for Field::UserProperty
    Op op = Op::Equal;
    std::string text;                 // the literal
    std::optional<double> date;       // the literal as a date-time, when it is one
    std::optional<double> number;     // the literal as a number, when it is one
    bool utc = false;                 // DASL: date-times compare in UTC
  };

 private:
  std::vector<Condition> conditions_;  // all must hold
  const qorvane::TimeZone* zone_ = nullptr;
};

}  // namespace sim
