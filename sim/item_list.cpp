// The folder's ordered item list.
#include "sim/item_list.h"

#include <algorithm>

namespace sim {

void ItemList::Append(const ItemPtr& item) {
  if (slots_.size() == capacity_) Rebuild(std::max<std::size_t>(64, live_ * 2 + 1));
  item->slot = slots_.size();
  item->inList = true;
  slots_.push_back(item);
  Add(item->slot, 1);
  ++live_;
  ++version_;
}

void ItemList::Remove(const ItemPtr& item) {
  if (!item->inList || item->slot >= slots_.size() || slots_[item->slot] != item) return;
  slots_[item->slot].reset();
  item->inList = false;
  Add(item->slot, -1);
  --live_;
  ++version_;
  // Compact when holes outnumber the items, so that memory follows the count.
  if (slots_.size() > 256 && live_ * 2 < slots_.size()) Rebuild(std::max<std::size_t>(64, live_ * 2 + 1));
}

const ItemPtr& ItemList::At(std::size_t index) const {
  // Binary lifting: the largest prefix with at most `index` items, plus one.
  std::size_t position = 0;
  std::size_t remaining = index + 1;
  for (std::size_t step = capacity_; step > 0; step >>= 1) {
    const std::size_t next = position + step;
    if (next <= capacity_ && static_cast<std::size_t>(tree_[next]) < remaining) {
      position = next;
      remaining -= static_cast<std::size_t>(tree_[next]);
    }
  }
  return slots_[position];  // tree position + 1 is 1-based, so this is the 0-based slot
}

std::vector<ItemPtr> ItemList::Snapshot() const {
  std::vector<ItemPtr> items;
  items.reserve(live_);
  ForEach([&](const ItemPtr& item) { items.push_back(item); });
  return items;
}

void ItemList::Rebuild(std::size_t minimum) {
  std::vector<ItemPtr> compact;
  compact.reserve(std::max(minimum, live_));
  for (ItemPtr& item : slots_) {
    if (!item) continue;
    item->slot = compact.size();
    compact.push_back(std::move(item));
  }
  slots_ = std::move(compact);
  capacity_ = 1;
  while (capacity_ < minimum || capacity_ <= slots_.size()) capacity_ <<= 1;
  tree_.assign(capacity_ + 1, 0);
  for (std::size_t i = 1; i <= capacity_; ++i) {
    if (i <= slots_.size()) tree_[i] += 1;
    const std::size_t parent = i + (i & (~i + 1));
    if (parent <= capacity_) tree_[parent] += tree_[i];
  }
}

void ItemList::Add(std::size_t slot, int delta) {
  for (std::size_t i = slot + 1; i <= capacity_; i += i & (~i + 1)) tree_[i] += delta;
}

}  // namespace sim
