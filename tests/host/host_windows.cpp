// Explorers and inspectors with their events, the selection, and the
// navigation bar (Panes, OutlookBarPane, its Contents' groups and shortcuts).
#include "base/runtime_error.h"
#include "tests/host/host_objects.h"

namespace host {
namespace {

using Args = com::DispatchArgs;
using V = com::ScopedVariant;

constexpr DISPID kNewWindow = 0xF001;
constexpr DISPID kExplorerClose = 0xF008;
constexpr std::int32_t kNotFound = -2147352567;  // what the client raises for a name it lacks

template <class Window>
MemberTable<Window> WithRect(MemberTable<Window> table) {
  table.push_back({"Left", [](Window& w, const Args&) { return V(w.Rect().Left); }});
  table.push_back({"Top", [](Window& w, const Args&) { return V(w.Rect().Top); }});
  table.push_back({"Width", [](Window& w, const Args&) { return V(w.Rect().Width); }});
  table.push_back({"Height", [](Window& w, const Args&) { return V(w.Rect().Height); }});
  return table;
}

const MemberTable<client::OutlookBarShortcut> kShortcut = {
    {"Class", [](client::OutlookBarShortcut& s, const Args&) { return V(s.Class()); }},
    {"Name", [](client::OutlookBarShortcut& s, const Args&) { return V(s.Name()); }},
    {"Target", [](client::OutlookBarShortcut& s, const Args&) { return ExposeFolder(s.Target()); }},
};

// Add(Target, Name, Index)
const MemberTable<client::OutlookBarShortcuts> kShortcuts = {
    {"Count", [](client::OutlookBarShortcuts& s, const Args&) { return V(s.Count()); }},
    {"Item", [](client::OutlookBarShortcuts& s, const Args& a) { return Expose(s.Item(a.Long(0)), kShortcut); }},
    {"Remove", [](client::OutlookBarShortcuts& s, const Args& a) { return s.Remove(a.Long(0)), NoValue(); }},
    {"Add", [](client::OutlookBarShortcuts& s, const Args& a) {
       return Expose(s.Add(Unwrap<client::MAPIFolder>(a.At(0)), a.Has(1) ? a.Text(1) : std::string()), kShortcut);
     }},
};

const MemberTable<client::OutlookBarGroup> kGroup = {
    {"Class", [](client::OutlookBarGroup& g, const Args&) { return V(g.Class()); }},
    {"Name", [](client::OutlookBarGroup& g, const Args&) { return V(g.Name()); }},
    {"Shortcuts", [](client::OutlookBarGroup& g, const Args&) { return Expose(g.Shortcuts(), kShortcuts); }},
};

// Item(Index) takes a number or a group's name; an unknown name raises.
const MemberTable<client::OutlookBarGroups> kGroups = {
    {"Count", [](client::OutlookBarGroups& g, const Args&) { return V(g.Count()); }},
    {"Item", [](client::OutlookBarGroups& g, const Args& a) {
       const V index = a.At(0);
       if (index.Type() != VT_BSTR) return Expose(g.Item(index.ToLong()), kGroup);
       auto group = g.Item(index.ToText());
       if (!group) qorvane::Raise(kNotFound, "The object could not be found.");
       return Expose(group, kGroup);
     }},
};

// The pane's Contents (an OutlookBarStorage) holds its groups.
struct BarStorage {
  Ref<client::OutlookBarGroups> groups;
};
const MemberTable<BarStorage> kStorage = {
    {"Groups", [](BarStorage& s, const Args&) { return Expose(s.groups, kGroups); }},
};

const MemberTable<client::OutlookBarPane> kPane = {
    {"Class", [](client::OutlookBarPane& p, const Args&) { return V(p.Class()); }},
    {"Name", [](client::OutlookBarPane&, const Args&) { return V("OutlookBar"); }},
    {"Contents", [](client::OutlookBarPane& p, const Args&) {
       return Expose(std::make_shared<BarStorage>(BarStorage{p.Groups()}), kStorage);
     }},
};

const MemberTable<client::Panes> kPanes = {
    {"Count", [](client::Panes& p, const Args&) { return V(p.Count()); }},
    {"Item", [](client::Panes& p, const Args& a) {
       auto pane = p.Item(a.Text(0));
       if (!pane) qorvane::Raise(kNotFound, "The object could not be found.");
       return Expose(pane, kPane);
     }},
};

const MemberTable<client::Selection> kSelection = {
    {"Count", [](client::Selection& s, const Args&) { return V(s.Count()); }},
    {"Item", [](client::Selection& s, const Args& a) { return ExposeItem(s.Item(a.Long(0))); }},
};

const MemberTable<client::Explorer> kExplorer = WithRect<client::Explorer>({
    {"CommandBars", [](client::Explorer& e, const Args&) { return ExposeCommandBars(e.CommandBars()); }},
    {"CurrentFolder", [](client::Explorer& e, const Args&) { return ExposeFolder(e.CurrentFolder()); },
     [](client::Explorer& e, const Args&, const V& value) { e.CurrentFolder(Unwrap<client::MAPIFolder>(value)); },
     true},
    {"Selection", [](client::Explorer& e, const Args&) { return Expose(e.Selection(), kSelection); }},
    {"Panes", [](client::Explorer& e, const Args&) { return Expose(e.Panes(), kPanes); }},
    {"Close", [](client::Explorer& e, const Args&) { return e.Close(), NoValue(); }},
});

const MemberTable<client::Explorers> kExplorers = {
    {"Count", [](client::Explorers& e, const Args&) { return V(e.Count()); }},
    {"Item", [](client::Explorers& e, const Args& a) { return ExposeExplorer(e.Item(a.Long(0))); }},
};

const MemberTable<client::Inspector> kInspector = WithRect<client::Inspector>({
    {"CurrentItem", [](client::Inspector& i, const Args&) { return ExposeItem(i.CurrentItem()); }},
    {"CommandBars", [](client::Inspector& i, const Args&) { return ExposeCommandBars(i.CommandBars()); }},
    {"EditorType", [](client::Inspector& i, const Args&) { return V(i.EditorType()); }},
    {"IsWordMail", [](client::Inspector& i, const Args&) { return V(i.IsWordMail()); }},
    {"Close", [](client::Inspector& i, const Args& a) { return i.Close(a.Long(0)), NoValue(); }},
});

const MemberTable<client::Inspectors> kInspectors = {
    {"Count", [](client::Inspectors& i, const Args&) { return V(i.Count()); }},
    {"Item", [](client::Inspectors& i, const Args& a) { return ExposeInspector(i.Item(a.Long(0))); }},
};

class HostExplorer final : public EventSource<client::Explorer, client::ExplorerEvents> {
 public:
  explicit HostExplorer(Ref<client::Explorer> explorer)
      : EventSource(std::move(explorer), kExplorer, events::kExplorer) {}
  void Close() override { RaiseEvent(kExplorerClose, {}); }
};

class HostExplorers final : public EventSource<client::Explorers, client::ExplorersEvents> {
 public:
  explicit HostExplorers(Ref<client::Explorers> explorers)
      : EventSource(std::move(explorers), kExplorers, events::kExplorers) {}
  void NewExplorer(const Ref<client::Explorer>& explorer) override { RaiseEvent(kNewWindow, {ExposeExplorer(explorer)}); }
};

class HostInspectors final : public EventSource<client::Inspectors, client::InspectorsEvents> {
 public:
  explicit HostInspectors(Ref<client::Inspectors> inspectors)
      : EventSource(std::move(inspectors), kInspectors, events::kInspectors) {}
  void NewInspector(const Ref<client::Inspector>& inspector) override {
    RaiseEvent(kNewWindow, {ExposeInspector(inspector)});
  }
};

}  // namespace

com::ScopedVariant ExposeExplorers(const Ref<client::Explorers>& explorers) {
  return ExposeAs<HostExplorers>(explorers);
}
com::ScopedVariant ExposeExplorer(const Ref<client::Explorer>& explorer) { return ExposeAs<HostExplorer>(explorer); }
com::ScopedVariant ExposeInspectors(const Ref<client::Inspectors>& inspectors) {
  return ExposeAs<HostInspectors>(inspectors);
}
com::ScopedVariant ExposeInspector(const Ref<client::Inspector>& inspector) { return Expose(inspector, kInspector); }

}  // namespace host
