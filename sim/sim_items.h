// An item collection of the simulated store: a folder's items live, or the
// snapshot a Restrict made, optionally sorted and, for a calendar sorted on
// [Start] with IncludeRecurrences, with recurring appointments expanded into
// their occurrences. Restrict and Find test the items inside the store, in
// one counted call each, as the client does. Sort takes a built-in property
// or a field of the folder; items without a value of the field's type sort
// before all others (after them when descending).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "client/folders.h"
#include "sim/item_data.h"
#include "sim/item_filter.h"

namespace sim {

class World;
class SimFolder;

class SimItems final : public client::Items {
 public:
  // The folder's items as they are whenever asked.
  SimItems(World& world, std::shared_ptr<SimFolder> folder);
  // A fixed list (what a Restrict found).
  SimItems(World& world, std::shared_ptr<SimFolder> folder, std::vector<ItemPtr> items);

  long Count() override;
  client::Ref<client::Item> Item(long index) override;
  client::Ref<client::Items> Restrict(const std::string& filter) override;
  client::Ref<client::Item> Find(const std::string& filter) override;
  client::Ref<client::Item> FindNext() override;
  void Sort(const std::string& property, bool descending) override;
  bool IncludeRecurrences() override;
  void IncludeRecurrences(bool value) override;

 private:
  enum class SortKey { None, Subject, To, Start, End, UserProperty };

  // The folder's own list can be used as it is: no copy, no sorting.
  bool Direct() const { return !fixed_ && sortKey_ == SortKey::None; }
  FilterContext Context() const;
  std::size_t Size();
  const ItemPtr& At(std::size_t index);
  const std::vector<ItemPtr>& Arranged();
  std::vector<ItemPtr> Expand(const std::vector<ItemPtr>& items) const;
  client::Ref<client::Item> FindFrom(std::size_t index);

  World& world_;
  std::shared_ptr<SimFolder> folder_;
  std::optional<std::vector<ItemPtr>> fixed_;
  SortKey sortKey_ = SortKey::None;
  bool descending_ = false;
  std::string sortProperty_;  // lower case, for SortKey::UserProperty
  long sortType_ = 0;
  bool includeRecurrences_ = false;

  std::vector<ItemPtr> arranged_;  // cache of the sorted (and expanded) order
  bool arrangedValid_ = false;
  std::uint64_t arrangedVersion_ = 0;

  std::optional<ItemFilter> findFilter_;
  std::size_t findNext_ = 0;
};

}  // namespace sim
