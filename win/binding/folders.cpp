// Folders, their item collections and their views.
#include "base/runtime_error.h"
#include "win/binding/bound_object.h"

namespace binding {
namespace {

com::DispatchType kFolderType("MAPIFolder");
com::DispatchType kFoldersType("Folders");
com::DispatchType kItemsType("Items");
com::DispatchType kViewsType("Views");
com::DispatchType kViewType("View");
com::DispatchType kFieldsType("UserDefinedProperties");
com::DispatchType kFieldType("UserDefinedProperty");

class BoundField final : public client::UserDefinedProperty, public Bound {
 public:
  explicit BoundField(com::ComPtr<IDispatch> object) : Bound(std::move(object), kFieldType) {}
  std::string Name() override { return Text("Name"); }
  long Type() override { return Long("Type"); }
  void Delete() override { Call("Delete"); }
};

class BoundFields final : public client::UserDefinedProperties, public Bound {
 public:
  explicit BoundFields(com::ComPtr<IDispatch> object) : Bound(std::move(object), kFieldsType) {}
  long Count() override { return Long("Count"); }
  Ref<client::UserDefinedProperty> Item(long index) override { return MakeBound<BoundField>(Get("Item", {index})); }
  Ref<client::UserDefinedProperty> Find(const std::string& name) override {
    return MakeBound<BoundField>(Get("Find", {name}));
  }
  // Add(Name, Type, DisplayFormat, Formula)
  Ref<client::UserDefinedProperty> Add(const std::string& name, long type) override {
    return MakeBound<BoundField>(Get("Add", {name, type}));
  }
};

class BoundFolder final : public client::MAPIFolder, public Bound {
 public:
  explicit BoundFolder(com::ComPtr<IDispatch> object) : Bound(std::move(object), kFolderType) {}
  std::string Name() override { return Text("Name"); }
  long Class() override { return Long("Class"); }
  std::string EntryID() override { return Text("EntryID"); }
  std::string FolderPath() override { return Text("FolderPath"); }
  long DefaultItemType() override { return Long("DefaultItemType"); }
  Ref<client::MAPIFolder> Parent() override {
    // The store root's parent is the session, not a folder; which one it
    // is only the object itself can say.
    const com::ScopedVariant parent = Get("Parent");
    const auto object = parent.ToObject();
    if (!object) return nullptr;
    const com::Dispatch unknown(object, com::DispatchType::Unknown());
    if (unknown.Get("Class").ToLong() != client::olFolder) return nullptr;
    return BindFolder(parent);
  }
  Ref<client::Folders> Folders() override { return BindFolders(Get("Folders")); }
  Ref<client::Items> Items() override { return BindItems(Get("Items")); }
  Ref<client::Views> Views() override { return BindViews(Get("Views")); }
  Ref<client::UserDefinedProperties> UserDefinedProperties() override {
    return MakeBound<BoundFields>(Get("UserDefinedProperties"));
  }
};

class BoundFolders final : public client::Folders, public Bound {
 public:
  explicit BoundFolders(com::ComPtr<IDispatch> object) : Bound(std::move(object), kFoldersType) {}
  long Count() override { return Long("Count"); }
  Ref<client::MAPIFolder> Item(long index) override { return BindFolder(Get("Item", {index})); }
  Ref<client::MAPIFolder> Add(const std::string& name, long type) override {
    return BindFolder(Get("Add", {name, type}));
  }
};

class BoundItems final : public client::Items, public Bound {
 public:
  explicit BoundItems(com::ComPtr<IDispatch> object) : Bound(std::move(object), kItemsType) {}
  long Count() override { return Long("Count"); }
  Ref<client::Item> Item(long index) override { return BindItem(Get("Item", {index})); }
  Ref<client::Items> Restrict(const std::string& filter) override { return BindItems(Get("Restrict", {filter})); }
  Ref<client::Item> Find(const std::string& filter) override { return BindItem(Get("Find", {filter})); }
  Ref<client::Item> FindNext() override { return BindItem(Get("FindNext")); }
  void Sort(const std::string& property, bool descending) override { Call("Sort", {property, descending}); }
  bool IncludeRecurrences() override { return Bool("IncludeRecurrences"); }
  void IncludeRecurrences(bool value) override { Put("IncludeRecurrences", value); }
};

class BoundView final : public client::View, public Bound {
 public:
  explicit BoundView(com::ComPtr<IDispatch> object) : Bound(std::move(object), kViewType) {}
  std::string Name() override { return Text("Name"); }
  std::string XML() override { return Text("XML"); }
  void XML(const std::string& value) override { Put("XML", value); }
  void Save() override { Call("Save"); }
  void Apply() override { Call("Apply"); }
};

class BoundViews final : public client::Views, public Bound {
 public:
  explicit BoundViews(com::ComPtr<IDispatch> object) : Bound(std::move(object), kViewsType) {}
  long Count() override { return Long("Count"); }
  Ref<client::View> Item(const std::string& name) override {
    auto view = MakeBound<BoundView>(Get("Item", {name}));
    // The interface promises a raise, never a null view.
    if (!view) qorvane::Raise(qorvane::err::kSubscriptOutOfRange);
    return view;
  }
  Ref<client::View> Add(const std::string& name, long viewType, long saveOption) override {
    return MakeBound<BoundView>(Get("Add", {name, viewType, saveOption}));
  }
};

}  // namespace

Ref<client::MAPIFolder> BindFolder(const com::ScopedVariant& object) { return MakeBound<BoundFolder>(object); }
Ref<client::Folders> BindFolders(const com::ScopedVariant& object) { return MakeBound<BoundFolders>(object); }
Ref<client::Items> BindItems(const com::ScopedVariant& object) { return MakeBound<BoundItems>(object); }
Ref<client::Views> BindViews(const com::ScopedVariant& object) { return MakeBound<BoundViews>(object); }

}  // namespace binding
