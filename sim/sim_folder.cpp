// Folders of the simulated store.
#include "sim/sim_folder.h"

#include <algorithm>

#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "sim/sim_folder_fields.h"
#include "sim/sim_items.h"
#include "sim/sim_views.h"
#include "sim/world.h"

namespace sim {

SimFolder::SimFolder(World& world, std::string name, long defaultItemType, SimFolder* parent)
    : world(world), name(std::move(name)), entryId(world.NewEntryId()), defaultItemType(defaultItemType),
      parent(parent) {
  AddDefaultViews(*this);
}

std::string SimFolder::Name() {
  world.Enter("MAPIFolder", "Name");
  return name;
}

long SimFolder::Class() {
  world.Enter("MAPIFolder", "Class");
  return client::olFolder;
}

std::string SimFolder::EntryID() {
  world.Enter("MAPIFolder", "EntryID");
  return entryId;
}

std::string SimFolder::FolderPath() {
  world.Enter("MAPIFolder", "FolderPath");
  return Path();
}

long SimFolder::DefaultItemType() {
  world.Enter("MAPIFolder", "DefaultItemType");
  return defaultItemType;
}

client::Ref<client::MAPIFolder> SimFolder::Parent() {
  world.Enter("MAPIFolder", "Parent");
  // The store root's parent is the session, not a folder.
  if (!parent) return nullptr;
  return world.Hand(parent->shared_from_this());
}

client::Ref<client::Folders> SimFolder::Folders() {
  world.Enter("MAPIFolder", "Folders");
  return world.Hand(std::make_shared<SimFolders>(world, shared_from_this()));
}

client::Ref<client::Items> SimFolder::Items() {
  world.Enter("MAPIFolder", "Items");
  return world.Hand(std::make_shared<SimItems>(world, shared_from_this()));
}

client::Ref<client::Views> SimFolder::Views() {
  world.Enter("MAPIFolder", "Views");
  return world.Hand(std::make_shared<SimViews>(world, shared_from_this()));
}

client::Ref<client::UserDefinedProperties> SimFolder::UserDefinedProperties() {
  world.Enter("MAPIFolder", "UserDefinedProperties");
  return world.Hand(std::make_shared<SimUserDefinedProperties>(world, shared_from_this()));
}

const SimFolder::Field* SimFolder::FindField(const std::string& lowerName) const {
  for (const Field& field : fields) {
    if (field.lowerName == lowerName) return &field;
  }
  return nullptr;
}

void SimFolder::AddField(const std::string& fieldName, long type) {
  const std::string lower = qorvane::LCase(fieldName);
  if (!FindField(lower)) fields.push_back(Field{fieldName, lower, type});
}

namespace {

// Whether another child of parent is named name in any case.
bool NameTaken(const SimFolder& parent, const std::string& name, const SimFolder* except) {
  return std::any_of(parent.children.begin(), parent.children.end(), [&](const auto& child) {
    return child.get() != except && qorvane::EqualsIgnoringCase(child->name, name);
  });
}

}  // namespace

std::shared_ptr<SimFolder> SimFolder::AddChild(const std::string& childName, long itemType) {
  if (NameTaken(*this, childName, nullptr)) qorvane::Raise(fault::kDispatchException, "Cannot create the folder.");
  children.push_back(std::make_shared<SimFolder>(world, childName, itemType, this));
  return children.back();
}

void SimFolder::Rename(const std::string& newName) {
  if (newName.empty() || (parent && NameTaken(*parent, newName, this))) {
    qorvane::Raise(fault::kDispatchException, "Cannot rename the folder.");
  }
  name = newName;
}

std::string SimFolder::Path() const { return (parent ? parent->Path() : std::string("\\")) + "\\" + name; }

long SimFolders::Count() {
  world_.Enter("Folders", "Count");
  return static_cast<long>(folder_->children.size());
}

client::Ref<client::MAPIFolder> SimFolders::Item(long index) {
  world_.Enter("Folders", "Item");
  if (index < 1 || index > static_cast<long>(folder_->children.size())) fault::OutOfBounds();
  return world_.Hand(folder_->children[static_cast<std::size_t>(index - 1)]);
}

client::Ref<client::MAPIFolder> SimFolders::Add(const std::string& name, long type) {
  world_.Enter("Folders", "Add");
  // The type names a default folder whose kind of items the new folder holds.
  long itemType = client::olMailItem;
  switch (type) {
    case client::olFolderCalendar: itemType = client::olAppointmentItem; break;
    case client::olFolderInbox:
    case client::olFolderOutbox:
    case client::olFolderDrafts:
    case olFolderSentMail: break;
    default: qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  }
  if (name.empty()) qorvane::Raise(fault::kInvalidArgument, "The parameter is incorrect.");
  return world_.Hand(folder_->AddChild(name, itemType));
}

}  // namespace sim
