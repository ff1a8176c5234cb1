// A folder's items in insertion order, with appends, removals and "the nth
// item" all in logarithmic time: a removal leaves a hole and a Fenwick tree
// over the occupied positions finds the nth item past the holes. A walk over
// a 10,000-item folder that moves items out as it goes therefore stays
// linear-logarithmic instead of shifting the whole list per move.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sim/item_data.h"

namespace sim {

class ItemList {
 public:
  void Append(const ItemPtr& item);
  void Remove(const ItemPtr& item);
  std::size_t Count() const { return live_; }
  // index is 0-based among the listed items; index < Count().
  const ItemPtr& At(std::size_t index) const;
  std::vector<ItemPtr> Snapshot() const;
  // Changes with every append and removal, for caches of sorted orders.
  std::uint64_t Version() const { return version_; }

  template <class Visit>
  void ForEach(Visit&& visit) const {
    for (const ItemPtr& item : slots_) {
      if (item) visit(item);
    }
  }

 private:
  void Rebuild(std::size_t capacity);
  void Add(std::size_t slot, int delta);

  std::vector<ItemPtr> slots_;
  std::vector<int> tree_;  // 1-based Fenwick tree over slot occupancy
  std::size_t capacity_ = 0;  // power of two, tree_.size() - 1
  std::size_t live_ = 0;
  std::uint64_t version_ = 0;
};

}  // namespace sim
