// Parsing and testing Restrict/Find filters.
#include "sim/item_filter.h"

#include <cmath>
#include <cstdint>

#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "client/errors.h"
#include "client/ref.h"
#include "sim/date_text.h"

namespace sim {
namespace {

constexpr std::int32_t kCannotParse = client::kDispatchException;
constexpr std::string_view kUserPropertyUrl =
    "http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-c000-000000000046}/";
constexpr std::string_view kSubjectUrl = "urn:schemas:httpmail:subject";

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text) {}

  [[noreturn]] void Fail() const {
    qorvane::Raise(kCannotParse,
                   "Cannot parse condition. Error at \"" + std::string(text_.substr(pos_)) + "\".");
  }

  void Blanks() {
    while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t')) ++pos_;
  }
  bool AtEnd() {
    Blanks();
    return pos_ == text_.size();
  }
  bool Peek(char c) {
    Blanks();
    return pos_ < text_.size() && text_[pos_] == c;
  }
  bool Char(char c) {
    if (!Peek(c)) return false;
    ++pos_;
    return true;
  }
  // A keyword, whole and in any case.
  bool Keyword(std::string_view word) {
    Blanks();
    if (!qorvane::EqualsIgnoringCase(text_.substr(pos_, word.size()), word)) return false;
    const std::size_t after = pos_ + word.size();
    if (after < text_.size() && text_[after] != ' ' && text_[after] != '(' && text_[after] != '\'') return false;
    pos_ = after;
    return true;
  }
  // Text up to the closing quote; a doubled quote stands for one.
  std::string Quoted(char quote) {
    if (!Char(quote)) Fail();
    std::string value;
    for (;;) {
      if (pos_ >= text_.size()) Fail();
      const char c = text_[pos_++];
      if (c != quote) {
        value += c;
      } else if (pos_ < text_.size() && text_[pos_] == quote) {
        value += quote;
        ++pos_;
      } else {
        return value;
      }
    }
  }
  std::string Bracketed() {
    if (!Char('[')) Fail();
    const std::size_t close = text_.find(']', pos_);
    if (close == std::string_view::npos) Fail();
    std::string name(text_.substr(pos_, close - pos_));
    pos_ = close + 1;
    return name;
  }
  std::optional<ItemFilter::Op> Comparison() {
    using Op = ItemFilter::Op;
    Blanks();
    static constexpr std::pair<std::string_view, Op> kOps[] = {
        {"<>", Op::NotEqual}, {"<=", Op::LessEqual}, {">=", Op::GreaterEqual},
        {"<", Op::Less},      {">", Op::Greater},    {"=", Op::Equal}};
    for (const auto& [token, op] : kOps) {
      if (text_.substr(pos_, token.size()) == token) {
        pos_ += token.size();
        return op;
      }
    }
    return std::nullopt;
  }
  std::string Literal(bool doubleQuotesToo) {
    if (Peek('\'')) return Quoted('\'');
    if (doubleQuotesToo && Peek('"')) return Quoted('"');
    // An unquoted number.
    const std::size_t start = pos_;
    while (pos_ < text_.size() && text_[pos_] != ' ' && text_[pos_] != ')') ++pos_;
    std::string value(text_.substr(start, pos_ - start));
    if (!qorvane::ParseNumber(value)) {
      pos_ = start;
      Fail();
    }
    return value;
  }

 private:
  std::string_view text_;
  std::size_t pos_ = 0;
};

void SetLiteral(ItemFilter::Condition& condition, std::string text, Parser& parser) {
  condition.date = ParseDateText(text);
  condition.number = qorvane::ParseNumber(text);
  condition.text = std::move(text);
  const bool dateField = condition.field == ItemFilter::Field::Start || condition.field == ItemFilter::Field::End;
  if (dateField && !condition.date) parser.Fail();
}

ItemFilter::Condition DaslCondition(Parser& parser, const FilterContext&) {
  ItemFilter::Condition condition;
  condition.utc = true;
  const std::string property = qorvane::LCase(parser.Quoted('"'));
  if (property.starts_with(kUserPropertyUrl) && property.size() > kUserPropertyUrl.size()) {
    condition.field = ItemFilter::Field::UserProperty;
    condition.propertyName = property.substr(kUserPropertyUrl.size());
  } else if (property == kSubjectUrl) {
    condition.field = ItemFilter::Field::Subject;
  } else {
    parser.Fail();
  }
  if (parser.Keyword("IS")) {
    const bool negated = parser.Keyword("NOT");
    if (!parser.Keyword("NULL")) parser.Fail();
    condition.op = negated ? ItemFilter::Op::IsNotNull : ItemFilter::Op::IsNull;
    return condition;
  }
  const auto op = parser.Comparison();
  if (!op) parser.Fail();
  condition.op = *op;
  SetLiteral(condition, parser.Literal(false), parser);
  return condition;
}

ItemFilter::Condition JetCondition(Parser& parser, const FilterContext& context) {
  ItemFilter::Condition condition;
  const std::string name = qorvane::LCase(parser.Bracketed());
  const std::optional<long> fieldType = context.folderField ? context.folderField(name) : std::nullopt;
  if (fieldType) {
    condition.field = ItemFilter::Field::UserProperty;
    condition.propertyName = name;
  } else if (name == "subject") {
    condition.field = ItemFilter::Field::Subject;
  } else if (name == "to") {
    condition.field = ItemFilter::Field::To;
  } else if (name == "start") {
    condition.field = ItemFilter::Field::Start;
  } else if (name == "end") {
    condition.field = ItemFilter::Field::End;
  } else {
    parser.Fail();
  }
  const auto op = parser.Comparison();
  if (!op) parser.Fail();
  condition.op = *op;
  SetLiteral(condition, parser.Literal(true), parser);
  if (fieldType == client::olDateTime && !condition.date) parser.Fail();
  return condition;
}

template <class Read>
void ParseConditions(Parser& parser, std::vector<ItemFilter::Condition>& conditions, const FilterContext& context,
                     Read read) {
  do {
    int open = 0;
    while (parser.Char('(')) ++open;
    conditions.push_back(read(parser, context));
    while (open > 0 && parser.Char(')')) --open;
    if (open != 0) parser.Fail();
  } while (parser.Keyword("AND"));
  if (!parser.AtEnd()) parser.Fail();
}

template <class T>
bool Compare(ItemFilter::Op op, const T& a, const T& b) {
  switch (op) {
    case ItemFilter::Op::Equal: return a == b;
    case ItemFilter::Op::NotEqual: return a != b;
    case ItemFilter::Op::Less: return a < b;
    case ItemFilter::Op::LessEqual: return a <= b;
    case ItemFilter::Op::Greater: return a > b;
    case ItemFilter::Op::GreaterEqual: return a >= b;
    default: return false;
  }
}

// Date-times compare to the second, as the store keeps them.
bool CompareDates(ItemFilter::Op op, double a, double b) {
  return Compare(op, std::llround(a * 86400.0), std::llround(b * 86400.0));
}

bool CompareText(ItemFilter::Op op, const std::string& a, const std::string& b) {
  return Compare(op, qorvane::LCase(a), qorvane::LCase(b));
}

bool MatchesProperty(const ItemFilter::Condition& condition, const UserPropData* property,
                     const qorvane::TimeZone* zone) {
  using Op = ItemFilter::Op;
  if (condition.op == Op::IsNull) return property == nullptr;
  if (condition.op == Op::IsNotNull) return property != nullptr;
  if (!property) return false;
  const qorvane::Variant& value = property->value;
  switch (property->type) {
    case client::olDateTime: {
      if (!condition.date) return false;
      const double stored = condition.utc && zone ? zone->LocalToUtc(value.AsDate()) : value.AsDate();
      return CompareDates(condition.op, stored, *condition.date);
    }
    case client::olNumber:
      return condition.number && Compare(condition.op, value.AsDouble(), *condition.number);
    case client::olYesNo: {
      const bool literal = condition.number ? *condition.number != 0.0 : qorvane::EqualsIgnoringCase(condition.text, "true");
      return Compare(condition.op, value.AsBool(), literal);
    }
    default:
      return CompareText(condition.op, value.AsString(), condition.text);
  }
}

}  // namespace

ItemFilter ItemFilter::Parse(std::string_view text, const FilterContext& context) {
  ItemFilter filter;
  filter.zone_ = context.zone;
  const std::string_view trimmed = qorvane::Trim(text);
  if (qorvane::EqualsIgnoringCase(trimmed.substr(0, 5), "@SQL=")) {
    Parser dasl(trimmed.substr(5));
    ParseConditions(dasl, filter.conditions_, context, DaslCondition);
  } else {
    Parser jet(trimmed);
    ParseConditions(jet, filter.conditions_, context, JetCondition);
  }
  return filter;
}

bool ItemFilter::Matches(const ItemData& item) const {
  for (const Condition& condition : conditions_) {
    bool matches = false;
    switch (condition.field) {
      case Field::Subject:
        matches = condition.op == Op::IsNotNull ? !item.subject.empty()
                  : condition.op == Op::IsNull  ? item.subject.empty()
                                                : CompareText(condition.op, item.subject, condition.text);
        break;
      case Field::To: matches = CompareText(condition.op, item.to, condition.text); break;
      case Field::Start: matches = CompareDates(condition.op, item.start, *condition.date); break;
      case Field::End: matches = CompareDates(condition.op, item.end, *condition.date); break;
      case Field::UserProperty: {
        const UserPropData* found = nullptr;
        for (const auto& property : item.properties) {
          if (property->lowerName == condition.propertyName) {
            found = property.get();
            break;
          }
        }
        matches = MatchesProperty(condition, found, zone_);
        break;
      }
    }
    if (!matches) return false;
  }
  return true;
}

}  // namespace sim
