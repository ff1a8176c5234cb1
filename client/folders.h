// Folders, their item collections and their views. See client/ref.h for the
// lifecycle contract.
#pragma once

#include <string>

#include "client/ref.h"

namespace client {

class MAPIFolder {
 public:
  virtual ~MAPIFolder() = default;
  virtual std::string Name() = 0;
  // olFolder (2) for a mail folder.
  virtual long Class() = 0;
  virtual std::string EntryID() = 0;
  // The path of names from the store root, "\\Mailbox\\Inbox".
  virtual std::string FolderPath() = 0;
  virtual long DefaultItemType() = 0;
  // The folder above; null at the store root (whose parent is not a folder).
  virtual Ref<MAPIFolder> Parent() = 0;
  virtual Ref<client::Folders> Folders() = 0;
  virtual Ref<client::Items> Items() = 0;
  virtual Ref<client::Views> Views() = 0;
  // The folder's fields: user properties that filters, sorting and views
  // of this folder know by name (version 12 on).
  virtual Ref<client::UserDefinedProperties> UserDefinedProperties() { RaiseNotSupported(); }
};

class UserDefinedProperties {
 public:
  virtual ~UserDefinedProperties() = default;
  virtual long Count() = 0;
  // 1-based.
  virtual Ref<UserDefinedProperty> Item(long index) = 0;
  // Null when the folder has no field of that name (names match without case).
  virtual Ref<UserDefinedProperty> Find(const std::string& name) = 0;
  // Raises when a field of that name exists.
  virtual Ref<UserDefinedProperty> Add(const std::string& name, long type) = 0;
};

class UserDefinedProperty {
 public:
  virtual ~UserDefinedProperty() = default;
  virtual std::string Name() = 0;
  virtual long Type() = 0;
  virtual void Delete() = 0;
};

class Folders {
 public:
  virtual ~Folders() = default;
  virtual long Count() = 0;
  // 1-based.
  virtual Ref<MAPIFolder> Item(long index) = 0;
  // type is the default folder number whose item type the new folder takes.
  virtual Ref<MAPIFolder> Add(const std::string& name, long type) = 0;
};

// The items of a folder, or a filtered, sorted view of them. A restriction
// is a new collection in the folder's order; it does not follow later moves.
// A Jet filter or a Sort may name a user property ("[ScheduleTime]") when it
// is a field of the folder; a DASL filter names it by its schema URL and
// compares date-times in UTC.
class Items {
 public:
  virtual ~Items() = default;
  virtual long Count() = 0;
  // 1-based.
  virtual Ref<client::Item> Item(long index) = 0;
  // Jet filters ("[Subject] = 'x'") and DASL filters ("@SQL=...") as the
  // client accepts them; raises for a filter it cannot parse.
  virtual Ref<Items> Restrict(const std::string& filter) = 0;
  // The first matching item, or null.
  virtual Ref<client::Item> Find(const std::string& filter) = 0;
  virtual Ref<client::Item> FindNext() = 0;
  // property like "[Start]".
  virtual void Sort(const std::string& property, bool descending) = 0;
  virtual bool IncludeRecurrences() = 0;
  virtual void IncludeRecurrences(bool value) = 0;
};

class Views {
 public:
  virtual ~Views() = default;
  virtual long Count() = 0;
  // Raises when there is no view of that name.
  virtual Ref<View> Item(const std::string& name) = 0;
  // Raises when a view of that name exists.
  virtual Ref<View> Add(const std::string& name, long viewType, long saveOption) = 0;
};

class View {
 public:
  virtual ~View() = default;
  virtual std::string Name() = 0;
  virtual std::string XML() = 0;
  virtual void XML(const std::string& value) = 0;
  virtual void Save() = 0;
  virtual void Apply() = 0;
};

}  // namespace client
