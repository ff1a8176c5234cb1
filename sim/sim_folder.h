// A folder of the simulated store and its sub-folder collection. The folder
// object is the folder's state too: the same object is handed out every time,
// as folders are never deleted here. A folder knows its fields: the user
// properties that Jet filters and Sort may name, added by UserProperties.Add
// on an item while it lies in the folder, or through UserDefinedProperties.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "client/folders.h"
#include "sim/item_list.h"

namespace sim {

class World;
class SimView;

class SimFolder final : public client::MAPIFolder, public std::enable_shared_from_this<SimFolder> {
 public:
  SimFolder(World& world, std::string name, long defaultItemType, SimFolder* parent);

  std::string Name() override;
  long Class() override;
  std::string EntryID() override;
  std::string FolderPath() override;
  long DefaultItemType() override;
  client::Ref<client::MAPIFolder> Parent() override;
  client::Ref<client::Folders> Folders() override;
  client::Ref<client::Items> Items() override;
  client::Ref<client::Views> Views() override;
  client::Ref<client::UserDefinedProperties> UserDefinedProperties() override;

  struct Field {
    std::string name;
    std::string lowerName;
    long type = 1;
  };

  // State, for the other sim objects. Sibling names are unique regardless of
  // case: AddChild and Rename refuse a name another child already has.
  const Field* FindField(const std::string& lowerName) const;
  void AddField(const std::string& name, long type);
  std::shared_ptr<SimFolder> AddChild(const std::string& name, long defaultItemType);
  void Rename(const std::string& newName);
  std::string Path() const;

  World& world;
  std::string name;
  const std::string entryId;
  const long defaultItemType;
  SimFolder* const parent;
  std::vector<std::shared_ptr<SimFolder>> children;  // creation order
  ItemList items;
  std::vector<std::shared_ptr<SimView>> views;
  std::vector<Field> fields;
};

class SimFolders final : public client::Folders {
 public:
  SimFolders(World& world, std::shared_ptr<SimFolder> folder) : world_(world), folder_(std::move(folder)) {}
  long Count() override;
  client::Ref<client::MAPIFolder> Item(long index) override;
  client::Ref<client::MAPIFolder> Add(const std::string& name, long type) override;

 private:
  World& world_;
  std::shared_ptr<SimFolder> folder_;
};

}  // namespace sim
