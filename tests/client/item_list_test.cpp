// The simulated folder's item list against a plain vector: after every
// sequence of appends and removals (including the compactions that long
// removal runs cause), the nth item and the order must agree.
#include "sim/item_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace sim {
namespace {

struct ListCase {
  const char* name;
  int appends;
  // Which of the listed items to remove, as a fraction of Count, repeated.
  double removeAt;
  int removals;
};

const ListCase kCases[] = {
    {"empty", 0, 0.0, 0},
    {"one added, one removed", 1, 0.0, 1},
    {"remove from the front", 300, 0.0, 200},
    {"remove from the back", 300, 0.999, 200},
    {"remove from the middle until empty", 1000, 0.5, 1000},
    {"grows past several capacities", 5000, 0.3, 10},
};

void ExpectSame(const ItemList& list, const std::vector<ItemPtr>& model) {
  ASSERT_EQ(list.Count(), model.size());
  for (std::size_t i = 0; i < model.size(); ++i) ASSERT_EQ(list.At(i), model[i]) << "position " << i;
  EXPECT_EQ(list.Snapshot(), model);
}

TEST(ItemListTest, AgreesWithAVectorThroughAppendsAndRemovals) {
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    ItemList list;
    std::vector<ItemPtr> model;
    for (int i = 0; i < c.appends; ++i) {
      auto item = std::make_shared<ItemData>();
      item->subject = std::to_string(i);
      list.Append(item);
      model.push_back(item);
    }
    for (int r = 0; r < c.removals && !model.empty(); ++r) {
      const auto at = static_cast<std::size_t>(c.removeAt * static_cast<double>(model.size()));
      const ItemPtr item = model[std::min(at, model.size() - 1)];
      list.Remove(item);
      model.erase(std::find(model.begin(), model.end(), item));
      EXPECT_FALSE(item->inList);
    }
    ExpectSame(list, model);
  }
}

TEST(ItemListTest, InterleavedAppendsAndRemovalsKeepInsertionOrder) {
  std::mt19937 random(7);
  ItemList list;
  std::vector<ItemPtr> model;
  for (int step = 0; step < 20000; ++step) {
    if (model.empty() || random() % 3 != 0) {
      auto item = std::make_shared<ItemData>();
      list.Append(item);
      model.push_back(item);
    } else {
      const ItemPtr item = model[random() % model.size()];
      list.Remove(item);
      model.erase(std::find(model.begin(), model.end(), item));
    }
  }
  ExpectSame(list, model);
}

TEST(ItemListTest, RemovingAnItemTwiceOrOneNotListedChangesNothing) {
  ItemList list;
  auto listed = std::make_shared<ItemData>();
  auto stranger = std::make_shared<ItemData>();
  list.Append(listed);
  list.Append(std::make_shared<ItemData>());
  list.Remove(listed);
  const auto version = list.Version();
  list.Remove(listed);
  list.Remove(stranger);
  EXPECT_EQ(list.Count(), 1u);
  EXPECT_EQ(list.Version(), version);
}

}  // namespace
}  // namespace sim
