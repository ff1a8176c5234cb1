// What the simulated store keeps of one item. Interface objects handed to the
// add-in are thin wrappers over this data: several wrappers may share one
// item, and a wrapper taken before a Move or Delete stops working because
// the item's generation moved on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/variant.h"

namespace sim {

class SimFolder;

// The client's "no date" (1 January 4501), the value of an unset date field.
inline constexpr double kNoDate = 949998.0;

struct UserPropData {
  std::string name;
  std::string lowerName;  // for the client's case-blind lookups
  long type = 1;
  qorvane::Variant value;
  bool deleted = false;
};

struct AttachmentData {
  std::string source;
  std::string fileName;
  std::string displayName;
};

struct PatternData {
  enum class End { None, Count, Date };
  long recurrenceType = 1;  // weekly, as a new pattern starts out
  long dayOfWeekMask = 0;
  long dayOfMonth = 0;
  long monthOfYear = 0;
  long instance = 0;
  long interval = 1;
  long occurrences = 0;
  double patternStartDate = 0.0;
  double patternEndDate = kNoDate;
  End end = End::None;  // whichever limit was set last
};

struct ItemData {
  long itemClass = 43;
  std::string entryId;  // empty until the first Save
  // The folder holding the item, or, while unsaved, the one Save puts it in.
  SimFolder* folder = nullptr;
  bool saved = false;
  bool deleted = false;
  bool inList = false;  // listed in folder's items (occurrences never are)
  std::uint64_t generation = 0;
  std::size_t slot = 0;  // position in the folder's ItemList

  std::string subject;
  std::string body;
  std::string to;
  bool sent = false;
  std::vector<std::shared_ptr<UserPropData>> properties;
  std::vector<AttachmentData> attachments;

  double start = 0.0;
  double end = 0.0;
  bool reminderSet = true;
  std::optional<PatternData> pattern;  // set by GetRecurrencePattern
  bool occurrence = false;             // one expanded instance of a series

  // A deep copy: properties are new objects, not shared with this item.
  std::shared_ptr<ItemData> Clone() const {
    auto copy = std::make_shared<ItemData>(*this);
    copy->entryId.clear();
    copy->saved = copy->deleted = copy->inList = false;
    copy->generation = 0;
    for (auto& property : copy->properties) property = std::make_shared<UserPropData>(*property);
    return copy;
  }
};

using ItemPtr = std::shared_ptr<ItemData>;

}  // namespace sim
