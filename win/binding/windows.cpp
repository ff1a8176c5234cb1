// Main windows (explorers), item windows (inspectors) and the navigation
// bar of a main window.
#include "base/runtime_error.h"
#include "win/binding/bound_object.h"
#include "win/binding/event_subscriptions.h"

namespace binding {
namespace {

com::DispatchType kExplorersType("Explorers");
com::DispatchType kExplorerType("Explorer");
com::DispatchType kSelectionType("Selection");
com::DispatchType kInspectorsType("Inspectors");
com::DispatchType kInspectorType("Inspector");
com::DispatchType kPanesType("Panes");
com::DispatchType kBarPaneType("OutlookBarPane");
com::DispatchType kBarStorageType("OutlookBarStorage");
com::DispatchType kBarGroupsType("OutlookBarGroups");
com::DispatchType kBarGroupType("OutlookBarGroup");
com::DispatchType kShortcutsType("OutlookBarShortcuts");
com::DispatchType kShortcutType("OutlookBarShortcut");

Ref<client::Panes> BindPanes(const com::ScopedVariant& object);

// A collection's member looked up by name: the client raises for a name it
// does not have, which the interfaces answer with null.
template <class Wrapper>
std::shared_ptr<Wrapper> ItemByName(const com::Dispatch& collection, const std::string& name) {
  try {
    return MakeBound<Wrapper>(collection.Get("Item", {name}));
  } catch (const qorvane::RuntimeError&) {
    return nullptr;
  }
}

client::WindowRect RectOf(const com::Dispatch& window) {
  return client::WindowRect{window.Get("Left").ToLong(), window.Get("Top").ToLong(), window.Get("Width").ToLong(),
                            window.Get("Height").ToLong()};
}

class BoundExplorer final : public client::Explorer, public Bound {
 public:
  explicit BoundExplorer(com::ComPtr<IDispatch> object) : Bound(std::move(object), kExplorerType) {}
  Ref<client::CommandBars> CommandBars() override { return BindCommandBars(Get("CommandBars")); }
  Ref<client::MAPIFolder> CurrentFolder() override { return BindFolder(Get("CurrentFolder")); }
  void CurrentFolder(const Ref<client::MAPIFolder>& folder) override {
    Self().PutRef("CurrentFolder", DispatchOf(folder).get());
  }
  Ref<client::Selection> Selection() override;
  Ref<client::Panes> Panes() override { return BindPanes(Get("Panes")); }
  client::WindowRect Rect() override { return RectOf(Self()); }
  void Close() override { Call("Close"); }
  Ref<client::EventSubscription> Advise(client::ExplorerEvents* sink) override {
    return binding::Advise(Object(), sink);
  }
};

class BoundExplorers final : public client::Explorers, public Bound {
 public:
  explicit BoundExplorers(com::ComPtr<IDispatch> object) : Bound(std::move(object), kExplorersType) {}
  long Count() override { return Long("Count"); }
  Ref<client::Explorer> Item(long index) override { return BindExplorer(Get("Item", {index})); }
  Ref<client::EventSubscription> Advise(client::ExplorersEvents* sink) override {
    return binding::Advise(Object(), sink);
  }
};

class BoundSelection final : public client::Selection, public Bound {
 public:
  explicit BoundSelection(com::ComPtr<IDispatch> object) : Bound(std::move(object), kSelectionType) {}
  long Count() override { return Long("Count"); }
  Ref<client::Item> Item(long index) override { return BindItem(Get("Item", {index})); }
};

Ref<client::Selection> BoundExplorer::Selection() { return MakeBound<BoundSelection>(Get("Selection")); }

class BoundInspector final : public client::Inspector, public Bound {
 public:
  explicit BoundInspector(com::ComPtr<IDispatch> object) : Bound(std::move(object), kInspectorType) {}
  Ref<client::Item> CurrentItem() override { return BindItem(Get("CurrentItem")); }
  Ref<client::CommandBars> CommandBars() override { return BindCommandBars(Get("CommandBars")); }
  long EditorType() override { return Long("EditorType"); }
  bool IsWordMail() override { return Get("IsWordMail").ToBool(); }
  client::WindowRect Rect() override { return RectOf(Self()); }
  void Close(long saveMode) override { Call("Close", {saveMode}); }
};

class BoundInspectors final : public client::Inspectors, public Bound {
 public:
  explicit BoundInspectors(com::ComPtr<IDispatch> object) : Bound(std::move(object), kInspectorsType) {}
  long Count() override { return Long("Count"); }
  Ref<client::Inspector> Item(long index) override { return BindInspector(Get("Item", {index})); }
  Ref<client::EventSubscription> Advise(client::InspectorsEvents* sink) override {
    return binding::Advise(Object(), sink);
  }
};

class BoundShortcut final : public client::OutlookBarShortcut, public Bound {
 public:
  explicit BoundShortcut(com::ComPtr<IDispatch> object) : Bound(std::move(object), kShortcutType) {}
  long Class() override { return Long("Class"); }
  std::string Name() override { return Text("Name"); }
  // A shortcut may open a folder or a file (then Target is its path).
  Ref<client::MAPIFolder> Target() override {
    const com::ScopedVariant target = Get("Target");
    return target.Type() == VT_DISPATCH ? BindFolder(target) : nullptr;
  }
};

class BoundShortcuts final : public client::OutlookBarShortcuts, public Bound {
 public:
  explicit BoundShortcuts(com::ComPtr<IDispatch> object) : Bound(std::move(object), kShortcutsType) {}
  long Count() override { return Long("Count"); }
  Ref<client::OutlookBarShortcut> Item(long index) override { return MakeBound<BoundShortcut>(Get("Item", {index})); }
  void Remove(long index) override { Call("Remove", {index}); }
  Ref<client::OutlookBarShortcut> Add(const Ref<client::MAPIFolder>& target, const std::string& name) override {
    return MakeBound<BoundShortcut>(Get("Add", {ArgumentOf(target), name}));
  }
};

class BoundBarGroup final : public client::OutlookBarGroup, public Bound {
 public:
  explicit BoundBarGroup(com::ComPtr<IDispatch> object) : Bound(std::move(object), kBarGroupType) {}
  long Class() override { return Long("Class"); }
  std::string Name() override { return Text("Name"); }
  Ref<client::OutlookBarShortcuts> Shortcuts() override { return MakeBound<BoundShortcuts>(Get("Shortcuts")); }
};

class BoundBarGroups final : public client::OutlookBarGroups, public Bound {
 public:
  explicit BoundBarGroups(com::ComPtr<IDispatch> object) : Bound(std::move(object), kBarGroupsType) {}
  long Count() override { return Long("Count"); }
  Ref<client::OutlookBarGroup> Item(long index) override { return MakeBound<BoundBarGroup>(Get("Item", {index})); }
  Ref<client::OutlookBarGroup> Item(const std::string& name) override {
    return ItemByName<BoundBarGroup>(Self(), name);
  }
};

class BoundBarPane final : public client::OutlookBarPane, public Bound {
 public:
  explicit BoundBarPane(com::ComPtr<IDispatch> object) : Bound(std::move(object), kBarPaneType) {}
  long Class() override { return Long("Class"); }
  // The pane keeps its groups in its Contents (an OutlookBarStorage).
  Ref<client::OutlookBarGroups> Groups() override {
    const com::Dispatch contents(Get("Contents").ToObject(), kBarStorageType);
    return MakeBound<BoundBarGroups>(contents.Get("Groups"));
  }
};

class BoundPanes final : public client::Panes, public Bound {
 public:
  explicit BoundPanes(com::ComPtr<IDispatch> object) : Bound(std::move(object), kPanesType) {}
  long Count() override { return Long("Count"); }
  Ref<client::OutlookBarPane> Item(const std::string& name) override { return ItemByName<BoundBarPane>(Self(), name); }
};

Ref<client::Panes> BindPanes(const com::ScopedVariant& object) { return MakeBound<BoundPanes>(object); }

}  // namespace

Ref<client::Explorers> BindExplorers(const com::ScopedVariant& object) { return MakeBound<BoundExplorers>(object); }
Ref<client::Explorer> BindExplorer(const com::ScopedVariant& object) { return MakeBound<BoundExplorer>(object); }
Ref<client::Inspectors> BindInspectors(const com::ScopedVariant& object) { return MakeBound<BoundInspectors>(object); }
Ref<client::Inspector> BindInspector(const com::ScopedVariant& object) { return MakeBound<BoundInspector>(object); }

}  // namespace binding

