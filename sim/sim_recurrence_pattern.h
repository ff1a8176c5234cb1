// The recurrence pattern of a simulated appointment. Occurrences and
// PatternEndDate are two ends of one limit: whichever was set last decides,
// and the other one reads as what the series then gives (the count of
// occurrences up to the end date, or the day of the last occurrence).
#pragma once

#include "client/items.h"
#include "sim/item_data.h"

namespace sim {

class World;

class SimRecurrencePattern final : public client::RecurrencePattern {
 public:
  SimRecurrencePattern(World& world, ItemPtr item)
      : world_(world), item_(std::move(item)), generation_(item_->generation) {}

  long RecurrenceType() override;
  void RecurrenceType(long value) override;
  long DayOfWeekMask() override;
  void DayOfWeekMask(long value) override;
  long DayOfMonth() override;
  void DayOfMonth(long value) override;
  long MonthOfYear() override;
  void MonthOfYear(long value) override;
  long Instance() override;
  void Instance(long value) override;
  long Interval() override;
  void Interval(long value) override;
  long Occurrences() override;
  void Occurrences(long value) override;
  double PatternStartDate() override;
  void PatternStartDate(double value) override;
  double PatternEndDate() override;
  void PatternEndDate(double value) override;

 private:
  PatternData& Use(const char* member);

  World& world_;
  ItemPtr item_;
  std::uint64_t generation_;
};

}  // namespace sim
