// The navigation bar of the simulated client: the "OutlookBar" pane (class
// 63) of every explorer shows the same groups (class 66), because the client
// keeps shortcuts per profile, not per window. The "Shortcuts" group starts
// with shortcuts (class 68) to the Inbox and the Calendar.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "client/windows.h"

namespace sim {

class World;
class SimFolder;

struct ShortcutData {
  std::string name;
  std::shared_ptr<SimFolder> target;
};

class SimShortcutGroup final : public client::OutlookBarGroup, public std::enable_shared_from_this<SimShortcutGroup> {
 public:
  SimShortcutGroup(World& world, std::string name) : world(world), name(std::move(name)) {}
  long Class() override;
  std::string Name() override;
  client::Ref<client::OutlookBarShortcuts> Shortcuts() override;

  World& world;
  const std::string name;
  std::vector<std::shared_ptr<ShortcutData>> shortcuts;
};

// The groups a new profile starts with.
std::vector<std::shared_ptr<SimShortcutGroup>> NewShortcutGroups(World& world);

class SimPanes final : public client::Panes {
 public:
  explicit SimPanes(World& world) : world_(world) {}
  long Count() override;
  client::Ref<client::OutlookBarPane> Item(const std::string& name) override;

 private:
  World& world_;
};

class SimOutlookBarPane final : public client::OutlookBarPane {
 public:
  explicit SimOutlookBarPane(World& world) : world_(world) {}
  long Class() override;
  client::Ref<client::OutlookBarGroups> Groups() override;

 private:
  World& world_;
};

class SimOutlookBarGroups final : public client::OutlookBarGroups {
 public:
  explicit SimOutlookBarGroups(World& world) : world_(world) {}
  long Count() override;
  client::Ref<client::OutlookBarGroup> Item(long index) override;
  client::Ref<client::OutlookBarGroup> Item(const std::string& name) override;

 private:
  World& world_;
};

class SimOutlookBarShortcuts final : public client::OutlookBarShortcuts {
 public:
  SimOutlookBarShortcuts(World& world, std::shared_ptr<SimShortcutGroup> group)
      : world_(world), group_(std::move(group)) {}
  long Count() override;
  client::Ref<client::OutlookBarShortcut> Item(long index) override;
  void Remove(long index) override;
  client::Ref<client::OutlookBarShortcut> Add(const client::Ref<client::MAPIFolder>& target,
                                              const std::string& name) override;

 private:
  World& world_;
  std::shared_ptr<SimShortcutGroup> group_;
};

class SimOutlookBarShortcut final : public client::OutlookBarShortcut {
 public:
  SimOutlookBarShortcut(World& world, std::shared_ptr<ShortcutData> data) : world_(world), data_(std::move(data)) {}
  long Class() override;
  std::string Name() override;
  client::Ref<client::MAPIFolder> Target() override;

 private:
  World& world_;
  std::shared_ptr<ShortcutData> data_;
};

}  // namespace sim
