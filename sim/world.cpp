// The simulated client's state and its item lifecycle.
#include "sim/world.h"

#include <cstdio>

#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "sim/sim_folder.h"
#include "sim/sim_item.h"
#include "sim/sim_navigation_bar.h"
#include "sim/sim_safe_mail.h"
#include "sim/sim_sync.h"
#include "sim/sim_windows.h"
#include "sim/user_property_value.h"

namespace sim {

namespace fault {
void MovedOrDeleted() { qorvane::Raise(kMovedOrDeleted, "The item has been moved or deleted."); }
void OutOfBounds() { qorvane::Raise(kDispatchException, "Array index out of bounds."); }
}  // namespace fault

World::World(const SimOptions& options)
    : options(options), clock(options.now), timeZone(options.utcOffsetMinutes), safeMail(std::make_unique<SimSafeMailFactory>(*this)),
      safeMailInstalled(options.safeMailInstalled) {
  root = std::make_shared<SimFolder>(*this, "Mailbox", client::olMailItem, nullptr);
  const std::pair<long, const char*> defaults[] = {{client::olFolderInbox, "Inbox"},
                                                   {client::olFolderOutbox, "Outbox"},
                                                   {client::olFolderDrafts, "Drafts"},
                                                   {olFolderSentMail, "Sent Items"},
                                                   {client::olFolderCalendar, "Calendar"}};
  for (const auto& [type, name] : defaults) {
    const long itemType = type == client::olFolderCalendar ? client::olAppointmentItem : client::olMailItem;
    defaultFolders.emplace_back(type, root->AddChild(name, itemType));
  }
  shortcutGroups = NewShortcutGroups(*this);
  syncObject = std::make_shared<SimSyncObject>(*this);
}

World::~World() = default;

std::shared_ptr<SimFolder> World::DefaultFolder(long folderType) {
  for (const auto& [type, folder] : defaultFolders) {
    if (type == folderType) return folder;
  }
  qorvane::Raise(fault::kDispatchException, "The attempted operation failed. An object could not be found.");
}

std::string World::NewEntryId() {
  char id[64];
  std::snprintf(id, sizeof id, "00000000A1B2C3D4E5F60718293A4B5C%016llX",
                static_cast<unsigned long long>(++nextId_));
  return id;
}

ItemPtr World::NewItem(long itemClass, SimFolder& home) {
  auto item = std::make_shared<ItemData>();
  item->itemClass = itemClass;
  item->folder = &home;
  return item;
}

void World::Save(const ItemPtr& item) {
  if (item->saved || item->occurrence) return;
  item->entryId = NewEntryId();
  item->saved = true;
  item->folder->items.Append(item);
}

ItemPtr World::Copy(const ItemPtr& item) {
  if (item->occurrence) qorvane::Raise(fault::kUnspecified, "The operation is not supported on an occurrence.");
  ItemPtr copy = item->Clone();
  Save(copy);
  return copy;
}

void World::Move(const ItemPtr& item, SimFolder& to) {
  if (item->occurrence) qorvane::Raise(fault::kUnspecified, "The operation is not supported on an occurrence.");
  item->folder->items.Remove(item);
  item->folder = &to;
  if (!item->saved) {
    item->entryId = NewEntryId();
    item->saved = true;
  }
  to.items.Append(item);
  ++item->generation;
}

void World::Delete(const ItemPtr& item) {
  if (item->occurrence) qorvane::Raise(fault::kUnspecified, "The operation is not supported on an occurrence.");
  item->folder->items.Remove(item);
  item->deleted = true;
  ++item->generation;
}

client::Ref<client::Item> World::Wrap(const ItemPtr& item) {
  switch (item->itemClass) {
    case client::olMail: return Hand(std::make_shared<SimMailItem>(*this, item));
    case client::olAppointment: return Hand(std::make_shared<SimAppointmentItem>(*this, item));
    default: return Hand(std::make_shared<SimOtherItem>(*this, item));
  }
}

void World::Send(const ItemPtr& item) {
  SentMail sent;
  sent.time = clock.Now();
  sent.subject = item->subject;
  sent.to = item->to;
  for (const AttachmentData& attachment : item->attachments) {
    sent.attachmentNames.push_back(attachment.displayName);
    sent.attachmentSources.push_back(attachment.source);
  }
  for (const auto& property : item->properties)
    sent.userProperties[property->name] = PropertyValueText(property->value);
  sendLog.push_back(std::move(sent));
  item->sent = true;
  Move(item, *DefaultFolder(olFolderSentMail));
}

std::vector<std::string> World::Recipients(const ItemData& item) {
  std::vector<std::string> names;
  std::string_view rest = item.to;
  while (!rest.empty()) {
    const std::size_t end = rest.find(';');
    const std::string_view name = qorvane::Trim(rest.substr(0, end));
    if (!name.empty()) names.emplace_back(name);
    if (end == std::string_view::npos) break;
    rest.remove_prefix(end + 1);
  }
  return names;
}

bool World::Resolves(const std::string& recipient) const {
  if (recipient.find('@') == std::string::npos) return false;
  const std::string lower = qorvane::LCase(recipient);
  for (const std::string& marked : unresolvable) {
    if (marked == lower) return false;
  }
  return true;
}

std::shared_ptr<SimExplorer> World::OpenExplorer(const std::shared_ptr<SimFolder>& folder) {
  auto explorer = std::make_shared<SimExplorer>(*this, folder);
  explorers.push_back(explorer);
  const client::Ref<client::Explorer> opened = Hand(explorer);
  explorersEvents.Raise([&](client::ExplorersEvents& sink) { sink.NewExplorer(opened); });
  return explorer;
}

void World::CloseExplorer(SimExplorer& explorer) {
  if (!explorer.open) return;
  // The window is still in the collection while its Close event runs.
  explorer.events.Raise([](client::ExplorerEvents& sink) { sink.Close(); });
  explorer.open = false;
  std::erase_if(explorers, [&](const auto& open) { return open.get() == &explorer; });
}

std::shared_ptr<SimInspector> World::OpenInspector(const ItemPtr& item, bool sendOnStandard) {
  auto inspector = std::make_shared<SimInspector>(*this, item, sendOnStandard);
  inspectors.push_back(inspector);
  const client::Ref<client::Inspector> opened = Hand(inspector);
  inspectorsEvents.Raise([&](client::InspectorsEvents& sink) { sink.NewInspector(opened); });
  return inspector;
}

void World::CloseInspector(SimInspector& inspector, long saveMode) {
  if (!inspector.open) return;
  if (saveMode == client::olSave && !inspector.Data()->deleted) Save(inspector.Data());
  inspector.open = false;
  std::erase_if(inspectors, [&](const auto& open) { return open.get() == &inspector; });
}

}  // namespace sim
