// The simulated client's windows: main windows (explorers) with their
// folder, selection, command bars and navigation bar, and item windows
// (inspectors). A window object is the window's state; after it closed,
// calls on it raise, as they do on a closed window of the client.
#pragma once

#include <memory>
#include <vector>

#include "client/windows.h"
#include "sim/event_sinks.h"
#include "sim/item_data.h"

namespace sim {

class World;
class SimFolder;
struct CommandBarSet;

class SimExplorer final : public client::Explorer, public std::enable_shared_from_this<SimExplorer> {
 public:
  SimExplorer(World& world, std::shared_ptr<SimFolder> folder);

  client::Ref<client::CommandBars> CommandBars() override;
  client::Ref<client::MAPIFolder> CurrentFolder() override;
  void CurrentFolder(const client::Ref<client::MAPIFolder>& folder) override;
  client::Ref<client::Selection> Selection() override;
  client::Ref<client::Panes> Panes() override;
  client::WindowRect Rect() override;
  void Close() override;
  client::Ref<client::EventSubscription> Advise(client::ExplorerEvents* sink) override;

  void Select(std::vector<ItemPtr> items) { selection_ = std::move(items); }
  const std::shared_ptr<CommandBarSet>& Bars() const { return bars_; }
  bool open = true;
  EventSinks<client::ExplorerEvents> events;

 private:
  void Use(const char* member);

  World& world_;
  std::shared_ptr<SimFolder> folder_;
  std::vector<ItemPtr> selection_;
  std::shared_ptr<CommandBarSet> bars_;
};

class SimSelection final : public client::Selection {
 public:
  SimSelection(World& world, std::vector<ItemPtr> items) : world_(world), items_(std::move(items)) {}
  long Count() override;
  client::Ref<client::Item> Item(long index) override;

 private:
  World& world_;
  std::vector<ItemPtr> items_;
};

class SimExplorers final : public client::Explorers {
 public:
  explicit SimExplorers(World& world) : world_(world) {}
  long Count() override;
  client::Ref<client::Explorer> Item(long index) override;
  client::Ref<client::EventSubscription> Advise(client::ExplorersEvents* sink) override;

 private:
  World& world_;
};

class SimInspector final : public client::Inspector {
 public:
  SimInspector(World& world, ItemPtr item, bool sendOnStandard = true);

  client::Ref<client::Item> CurrentItem() override;
  client::Ref<client::CommandBars> CommandBars() override;
  long EditorType() override;
  bool IsWordMail() override;
  client::WindowRect Rect() override;
  void Close(long saveMode) override;

  const ItemPtr& Data() const { return item_; }
  const std::shared_ptr<CommandBarSet>& Bars() const { return bars_; }
  bool open = true;

 private:
  void Use(const char* member);

  World& world_;
  ItemPtr item_;
  std::shared_ptr<CommandBarSet> bars_;
};

class SimInspectors final : public client::Inspectors {
 public:
  explicit SimInspectors(World& world) : world_(world) {}
  long Count() override;
  client::Ref<client::Inspector> Item(long index) override;
  client::Ref<client::EventSubscription> Advise(client::InspectorsEvents* sink) override;

 private:
  World& world_;
};

}  // namespace sim
