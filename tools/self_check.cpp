// Random patterns for the self-check, and one case run both ways.
#include "tools/self_check.h"

#include <array>

#include "base/ole_date.h"
#include "schedule/first_dow.h"

namespace qorvane::tool {
namespace {

// The masks the weekday lists offer (day, weekday, weekend day, one day).
constexpr std::array<std::int32_t, 10> kListMasks = {127, 62, 65, 1, 2, 4, 8, 16, 32, 64};

class Draw {
 public:
  explicit Draw(std::mt19937& random) : random_(random) {}
  int Between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  bool Chance(int percent) { return Between(1, 100) <= percent; }
  std::int32_t ListMask() { return kListMasks[static_cast<std::size_t>(Between(0, kListMasks.size() - 1))]; }

 private:
  std::mt19937& random_;
};

void DrawPattern(Draw& draw, CMailProps& r) {
  constexpr std::array<std::int32_t, 6> kTypes = {kRecursDaily,    kRecursWeekly, kRecursMonthly,
                                                  kRecursMonthNth, kRecursYearly, kRecursYearNth};
  r.m_RecurrenceType = kTypes[static_cast<std::size_t>(draw.Between(0, kTypes.size() - 1))];
  switch (r.m_RecurrenceType) {
    case kRecursDaily:
      if (draw.Chance(30)) {
        r.m_Interval = 0;
        r.m_DayOfWeekMask = 62;
      } else {
        r.m_Interval = draw.Between(1, 10);
      }
      break;
    case kRecursWeekly:
      r.m_Interval = draw.Between(1, 4);
      r.m_DayOfWeekMask = draw.Between(1, 127);
      break;
    case kRecursMonthly:
      r.m_DayOfMonth = draw.Between(1, 31);
      r.m_Interval = draw.Between(1, 6);
      break;
    case kRecursMonthNth:
      r.m_Instance = draw.Between(1, 5);
      r.m_DayOfWeekMask = draw.ListMask();
      r.m_Interval = draw.Between(1, 6);
      break;
    case kRecursYearly:
      r.m_MonthOfYear = draw.Between(1, 12);
      r.m_DayOfMonth = draw.Between(1, 31);
      break;
    default:
      r.m_Instance = draw.Between(1, 5);
      r.m_DayOfWeekMask = draw.ListMask();
      r.m_MonthOfYear = draw.Between(1, 12);
      break;
  }
}

}  // namespace

SelfCheckCase RandomSelfCheckCase(std::mt19937& random) {
  Draw draw(random);
  SelfCheckCase c;
  CMailProps& r = c.record;
  r.m_IsRecurring = true;
  const double first = DateSerialRollOver(2000, 1, 1);
  const double last = DateSerialRollOver(2040, 12, 31);
  r.m_PatternStartDate = first + draw.Between(0, static_cast<int>(last - first));
  r.m_StartTime = TimeSerial(0, draw.Between(0, 24 * 60 - 1), 0);
  DrawPattern(draw, r);
  c.firstDayOfWeek = draw.Between(1, 7);
  const int limit = draw.Between(1, 100);
  if (limit <= 75) {
    c.limit = Variant(draw.Between(1, 40));
  } else if (limit <= 95) {
    c.limit = Variant(DateValue{r.m_PatternStartDate + draw.Between(0, 1500)});
  } else {
    c.limit = Variant(DateValue{r.m_PatternStartDate + draw.Between(1100, 4000)});
  }
  r.m_ScheduleTime = r.m_PatternStartDate + r.m_StartTime;
  return c;
}

SelfCheckResult RunSelfCheckCase(SelfCheckCase& c) {
  const int saved = FirstDOW();
  SetFirstDOW(c.firstDayOfWeek);
  SelfCheckResult result;
  result.comparison = Main::CompareOccurrences(c.record, c.limit);
  if (!result.comparison.Agree()) result.reason = Main::ExplainDifference(c.record, c.limit, result.comparison);
  SetFirstDOW(saved);
  return result;
}

}  // namespace qorvane::tool
