// The navigation bar's pane, groups and shortcuts.
#include "sim/sim_navigation_bar.h"

#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "sim/sim_folder.h"
#include "sim/world.h"

namespace sim {

long SimShortcutGroup::Class() {
  world.Enter("OutlookBarGroup", "Class");
  return client::olOutlookBarGroup;
}

std::string SimShortcutGroup::Name() {
  world.Enter("OutlookBarGroup", "Name");
  return name;
}

client::Ref<client::OutlookBarShortcuts> SimShortcutGroup::Shortcuts() {
  world.Enter("OutlookBarGroup", "Shortcuts");
  return world.Hand(std::make_shared<SimOutlookBarShortcuts>(world, shared_from_this()));
}

std::vector<std::shared_ptr<SimShortcutGroup>> NewShortcutGroups(World& world) {
  auto shortcuts = std::make_shared<SimShortcutGroup>(world, "Shortcuts");
  shortcuts->shortcuts.push_back(
      std::make_shared<ShortcutData>(ShortcutData{"Inbox", world.DefaultFolder(client::olFolderInbox)}));
  shortcuts->shortcuts.push_back(
      std::make_shared<ShortcutData>(ShortcutData{"Calendar", world.DefaultFolder(client::olFolderCalendar)}));
  auto mine = std::make_shared<SimShortcutGroup>(world, "My Shortcuts");
  return {shortcuts, mine};
}

long SimPanes::Count() {
  world_.Enter("Panes", "Count");
  return 1;
}

client::Ref<client::OutlookBarPane> SimPanes::Item(const std::string& name) {
  world_.Enter("Panes", "Item");
  if (!qorvane::EqualsIgnoringCase(name, "OutlookBar")) return nullptr;
  return world_.Hand(std::make_shared<SimOutlookBarPane>(world_));
}

long SimOutlookBarPane::Class() {
  world_.Enter("OutlookBarPane", "Class");
  return client::olOutlookBarPane;
}

client::Ref<client::OutlookBarGroups> SimOutlookBarPane::Groups() {
  world_.Enter("OutlookBarPane", "Groups");
  return world_.Hand(std::make_shared<SimOutlookBarGroups>(world_));
}

long SimOutlookBarGroups::Count() {
  world_.Enter("OutlookBarGroups", "Count");
  return static_cast<long>(world_.shortcutGroups.size());
}

client::Ref<client::OutlookBarGroup> SimOutlookBarGroups::Item(long index) {
  world_.Enter("OutlookBarGroups", "Item");
  if (index < 1 || static_cast<std::size_t>(index) > world_.shortcutGroups.size()) fault::OutOfBounds();
  return world_.Hand(world_.shortcutGroups[static_cast<std::size_t>(index - 1)]);
}

client::Ref<client::OutlookBarGroup> SimOutlookBarGroups::Item(const std::string& name) {
  world_.Enter("OutlookBarGroups", "Item");
  for (const auto& group : world_.shortcutGroups) {
    if (qorvane::EqualsIgnoringCase(group->name, name)) return world_.Hand(group);
  }
  return nullptr;
}

long SimOutlookBarShortcuts::Count() {
  world_.Enter("OutlookBarShortcuts", "Count");
  return static_cast<long>(group_->shortcuts.size());
}

client::Ref<client::OutlookBarShortcut> SimOutlookBarShortcuts::Item(long index) {
  world_.Enter("OutlookBarShortcuts", "Item");
  if (index < 1 || static_cast<std::size_t>(index) > group_->shortcuts.size()) fault::OutOfBounds();
  return world_.Hand(std::make_shared<SimOutlookBarShortcut>(world_, group_->shortcuts[static_cast<std::size_t>(index - 1)]));
}

void SimOutlookBarShortcuts::Remove(long index) {
  world_.Enter("OutlookBarShortcuts", "Remove");
  auto& shortcuts = group_->shortcuts;
  if (index < 1 || static_cast<std::size_t>(index) > shortcuts.size()) fault::OutOfBounds();
  shortcuts.erase(shortcuts.begin() + (index - 1));
}

client::Ref<client::OutlookBarShortcut> SimOutlookBarShortcuts::Add(const client::Ref<client::MAPIFolder>& target,
                                                                   const std::string& name) {
  world_.Enter("OutlookBarShortcuts", "Add");
  auto* own = dynamic_cast<SimFolder*>(target.get());
  if (!own) qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  // The folder's own pointer, not the caller's handle: the bar keeps state.
  auto folder = own->shared_from_this();
  auto data = std::make_shared<ShortcutData>(ShortcutData{name.empty() ? folder->name : name, folder});
  group_->shortcuts.push_back(data);
  return world_.Hand(std::make_shared<SimOutlookBarShortcut>(world_, std::move(data)));
}

long SimOutlookBarShortcut::Class() {
  world_.Enter("OutlookBarShortcut", "Class");
  return client::olOutlookBarShortcut;
}

std::string SimOutlookBarShortcut::Name() {
  world_.Enter("OutlookBarShortcut", "Name");
  return data_->name;
}

client::Ref<client::MAPIFolder> SimOutlookBarShortcut::Target() {
  world_.Enter("OutlookBarShortcut", "Target");
  return world_.Hand(data_->target);
}

}  // namespace sim
