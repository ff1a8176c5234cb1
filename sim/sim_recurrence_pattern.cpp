// Reading and setting a recurrence pattern.
#include "sim/sim_recurrence_pattern.h"

#include "base/ole_date.h"
#include "base/runtime_error.h"
#include "sim/recurrence_expansion.h"
#include "sim/world.h"

namespace sim {
namespace {

[[noreturn]] void BadValue() { qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect."); }

void Check(bool valid) {
  if (!valid) BadValue();
}

}  // namespace

PatternData& SimRecurrencePattern::Use(const char* member) {
  world_.Enter("RecurrencePattern", member);
  if (item_->deleted || item_->generation != generation_) fault::MovedOrDeleted();
  return *item_->pattern;
}

long SimRecurrencePattern::RecurrenceType() { return Use("RecurrenceType").recurrenceType; }
void SimRecurrencePattern::RecurrenceType(long value) {
  PatternData& pattern = Use("RecurrenceType");
  Check(value >= 0 && value <= 6 && value != 4);
  pattern.recurrenceType = value;
}

long SimRecurrencePattern::DayOfWeekMask() { return Use("DayOfWeekMask").dayOfWeekMask; }
void SimRecurrencePattern::DayOfWeekMask(long value) {
  PatternData& pattern = Use("DayOfWeekMask");
  Check(value >= 0 && value <= 127);
  pattern.dayOfWeekMask = value;
}

long SimRecurrencePattern::DayOfMonth() { return Use("DayOfMonth").dayOfMonth; }
void SimRecurrencePattern::DayOfMonth(long value) {
  PatternData& pattern = Use("DayOfMonth");
  Check(value >= 1 && value <= 31);
  pattern.dayOfMonth = value;
}

long SimRecurrencePattern::MonthOfYear() { return Use("MonthOfYear").monthOfYear; }
void SimRecurrencePattern::MonthOfYear(long value) {
  PatternData& pattern = Use("MonthOfYear");
  Check(value >= 1 && value <= 12);
  pattern.monthOfYear = value;
}

long SimRecurrencePattern::Instance() { return Use("Instance").instance; }
void SimRecurrencePattern::Instance(long value) {
  PatternData& pattern = Use("Instance");
  Check(value >= 1 && value <= 5);
  pattern.instance = value;
}

long SimRecurrencePattern::Interval() { return Use("Interval").interval; }
void SimRecurrencePattern::Interval(long value) {
  PatternData& pattern = Use("Interval");
  Check(value >= 0 && value <= 999);
  pattern.interval = value;
}

long SimRecurrencePattern::Occurrences() {
  PatternData& pattern = Use("Occurrences");
  switch (pattern.end) {
    case PatternData::End::Count: return pattern.occurrences;
    case PatternData::End::Date: return static_cast<long>(ExpandOccurrences(pattern, item_->start).size());
    case PatternData::End::None: break;
  }
  return 0;
}

void SimRecurrencePattern::Occurrences(long value) {
  PatternData& pattern = Use("Occurrences");
  Check(value >= 1 && value <= 999);
  pattern.occurrences = value;
  pattern.end = PatternData::End::Count;
}

double SimRecurrencePattern::PatternStartDate() { return Use("PatternStartDate").patternStartDate; }
void SimRecurrencePattern::PatternStartDate(double value) {
  Use("PatternStartDate").patternStartDate = qorvane::DatePart(value);
}

double SimRecurrencePattern::PatternEndDate() {
  PatternData& pattern = Use("PatternEndDate");
  switch (pattern.end) {
    case PatternData::End::Date: return pattern.patternEndDate;
    case PatternData::End::Count: {
      const auto dates = ExpandOccurrences(pattern, item_->start);
      return dates.empty() ? pattern.patternStartDate : qorvane::DatePart(dates.back());
    }
    case PatternData::End::None: break;
  }
  return kNoDate;
}

void SimRecurrencePattern::PatternEndDate(double value) {
  PatternData& pattern = Use("PatternEndDate");
  pattern.patternEndDate = qorvane::DatePart(value);
  pattern.end = PatternData::End::Date;
}

}  // namespace sim
