// Item collections: counting, indexing, Restrict, Find, Sort, recurrences.
#include "sim/sim_items.h"

#include <algorithm>

#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "sim/recurrence_expansion.h"
#include "sim/sim_folder.h"
#include "sim/world.h"

namespace sim {

SimItems::SimItems(World& world, std::shared_ptr<SimFolder> folder) : world_(world), folder_(std::move(folder)) {}

SimItems::SimItems(World& world, std::shared_ptr<SimFolder> folder, std::vector<ItemPtr> items)
    : world_(world), folder_(std::move(folder)), fixed_(std::move(items)) {}

long SimItems::Count() {
  world_.Enter("Items", "Count");
  return static_cast<long>(Size());
}

client::Ref<client::Item> SimItems::Item(long index) {
  world_.Enter("Items", "Item");
  if (index < 1 || static_cast<std::size_t>(index) > Size()) fault::OutOfBounds();
  return world_.Wrap(At(static_cast<std::size_t>(index - 1)));
}

client::Ref<client::Items> SimItems::Restrict(const std::string& filter) {
  world_.Enter("Items", "Restrict");
  const ItemFilter parsed = ItemFilter::Parse(filter, Context());
  std::vector<ItemPtr> found;
  const auto test = [&](const ItemPtr& item) {
    if (parsed.Matches(*item)) found.push_back(item);
  };
  if (Direct()) {
    folder_->items.ForEach(test);
  } else {
    for (const ItemPtr& item : Arranged()) test(item);
  }
  return world_.Hand(std::make_shared<SimItems>(world_, folder_, std::move(found)));
}

client::Ref<client::Item> SimItems::Find(const std::string& filter) {
  world_.Enter("Items", "Find");
  findFilter_ = ItemFilter::Parse(filter, Context());
  return FindFrom(0);
}

client::Ref<client::Item> SimItems::FindNext() {
  world_.Enter("Items", "FindNext");
  if (!findFilter_) return nullptr;
  return FindFrom(findNext_);
}

client::Ref<client::Item> SimItems::FindFrom(std::size_t index) {
  const std::size_t size = Size();
  for (; index < size; ++index) {
    const ItemPtr& item = At(index);
    if (findFilter_->Matches(*item)) {
      findNext_ = index + 1;
      return world_.Wrap(item);
    }
  }
  findNext_ = size;
  return nullptr;
}

void SimItems::Sort(const std::string& property, bool descending) {
  world_.Enter("Items", "Sort");
  static constexpr std::pair<std::string_view, SortKey> kKeys[] = {
      {"[subject]", SortKey::Subject}, {"[to]", SortKey::To}, {"[start]", SortKey::Start}, {"[end]", SortKey::End}};
  const std::string key = qorvane::LCase(qorvane::Trim(property));
  for (const auto& [name, sortKey] : kKeys) {
    if (key == name) {
      sortKey_ = sortKey;
      descending_ = descending;
      arrangedValid_ = false;
      return;
    }
  }
  if (key.size() > 2 && key.front() == '[' && key.back() == ']') {
    if (const auto* field = folder_->FindField(key.substr(1, key.size() - 2))) {
      sortKey_ = SortKey::UserProperty;
      sortProperty_ = field->lowerName;
      sortType_ = field->type;
      descending_ = descending;
      arrangedValid_ = false;
      return;
    }
  }
  qorvane::Raise(fault::kDispatchException, "The property \"" + property + "\" is unknown.");
}

FilterContext SimItems::Context() const {
  FilterContext context;
  const std::shared_ptr<SimFolder> folder = folder_;
  context.folderField = [folder](const std::string& lowerName) -> std::optional<long> {
    if (const auto* field = folder->FindField(lowerName)) return field->type;
    return std::nullopt;
  };
  context.zone = &world_.timeZone;
  return context;
}

bool SimItems::IncludeRecurrences() {
  world_.Enter("Items", "IncludeRecurrences");
  return includeRecurrences_;
}

void SimItems::IncludeRecurrences(bool value) {
  world_.Enter("Items", "IncludeRecurrences");
  includeRecurrences_ = value;
  arrangedValid_ = false;
}

std::size_t SimItems::Size() { return Direct() ? folder_->items.Count() : Arranged().size(); }

const ItemPtr& SimItems::At(std::size_t index) { return Direct() ? folder_->items.At(index) : Arranged()[index]; }

const std::vector<ItemPtr>& SimItems::Arranged() {
  const std::uint64_t version = fixed_ ? 0 : folder_->items.Version();
  if (arrangedValid_ && version == arrangedVersion_) return arranged_;
  arranged_ = fixed_ ? *fixed_ : folder_->items.Snapshot();
  // The client expands a series only in a collection sorted on its start.
  if (includeRecurrences_ && sortKey_ == SortKey::Start) arranged_ = Expand(arranged_);
  if (sortKey_ != SortKey::None) {
    // Each item's key is taken once; a 10,000-item sort then compares small
    // keys only, ties in the collection's order.
    struct Keyed {
      bool present = true;  // items without a value of a field's type come first
      double number = 0.0;
      std::uint32_t index = 0;
    };
    const bool byText = sortKey_ == SortKey::Subject || sortKey_ == SortKey::To ||
                        (sortKey_ == SortKey::UserProperty && sortType_ == client::olText);
    std::vector<Keyed> keyed(arranged_.size());
    std::vector<std::string> texts(byText ? arranged_.size() : 0);
    for (std::size_t i = 0; i < arranged_.size(); ++i) {
      const ItemData& item = *arranged_[i];
      Keyed& key = keyed[i];
      key.index = static_cast<std::uint32_t>(i);
      switch (sortKey_) {
        case SortKey::Subject: texts[i] = qorvane::LCase(item.subject); break;
        case SortKey::To: texts[i] = qorvane::LCase(item.to); break;
        case SortKey::Start: key.number = item.start; break;
        case SortKey::End: key.number = item.end; break;
        case SortKey::UserProperty: {
          key.present = false;
          for (const auto& property : item.properties) {
            if (property->lowerName != sortProperty_) continue;
            if (property->type != sortType_) break;
            key.present = true;
            const qorvane::Variant& value = property->value;
            if (byText) {
              texts[i] = qorvane::LCase(value.AsString());
            } else {
              key.number = value.GetKind() == qorvane::Variant::Kind::Date ? value.AsDate()
                                                                            : value.NumericValue().value_or(0.0);
            }
            break;
          }
          break;
        }
        case SortKey::None: break;
      }
    }
    // Which of two keys comes first ascending; 0 when they are equal.
    const auto order = [&](const Keyed& a, const Keyed& b) {
      if (a.present != b.present) return a.present ? 1 : -1;
      if (a.number != b.number) return a.number < b.number ? -1 : 1;
      if (byText && texts[a.index] != texts[b.index]) return texts[a.index] < texts[b.index] ? -1 : 1;
      return 0;
    };
    const int direction = descending_ ? -1 : 1;
    std::sort(keyed.begin(), keyed.end(), [&](const Keyed& a, const Keyed& b) {
      const int cmp = order(a, b) * direction;
      return cmp != 0 ? cmp < 0 : a.index < b.index;
    });
    std::vector<ItemPtr> sorted;
    sorted.reserve(keyed.size());
    for (const Keyed& key : keyed) sorted.push_back(std::move(arranged_[key.index]));
    arranged_ = std::move(sorted);
  }
  arrangedValid_ = true;
  arrangedVersion_ = version;
  return arranged_;
}

std::vector<ItemPtr> SimItems::Expand(const std::vector<ItemPtr>& items) const {
  std::vector<ItemPtr> expanded;
  for (const ItemPtr& item : items) {
    if (item->itemClass != client::olAppointment || !item->pattern) {
      expanded.push_back(item);
      continue;
    }
    const double duration = item->end - item->start;
    for (const double start : ExpandOccurrences(*item->pattern, item->start)) {
      auto occurrence = std::make_shared<ItemData>(*item);
      occurrence->occurrence = true;
      occurrence->inList = false;
      occurrence->start = start;
      occurrence->end = start + duration;
      expanded.push_back(std::move(occurrence));
    }
  }
  return expanded;
}

}  // namespace sim
