// Command bars, their controls and the buttons' Click events. Buttons and
// pop-ups share the members of CommandBarControl and then each adds its own
// under the same DISPIDs, as Office's interfaces do.
#include "base/runtime_error.h"
#include "sim/sim_command_bars.h"
#include "tests/host/host_objects.h"

namespace host {
namespace {

using Args = com::DispatchArgs;
using V = com::ScopedVariant;
using Control = client::CommandBarControl;

constexpr DISPID kClick = 1;

// FindControl's criteria; a left-out one matches any control.
struct Criteria {
  long type = 0;
  long id = 0;
  std::string tag;
};
Criteria CriteriaOf(const Args& a) { return {a.Has(0) ? a.Long(0) : 0, a.Has(1) ? a.Long(1) : 0, a.Has(2) ? a.Text(2) : ""}; }

const MemberTable<client::CommandBarControls>& ControlsTable();
com::ScopedVariant ExposeBar(const Ref<client::CommandBar>& bar);

const MemberTable<Control> kCommon = {
    {"Type", [](Control& c, const Args&) { return V(c.Type()); }},
    {"Id", [](Control& c, const Args&) { return V(c.Id()); }},
    {"Caption", [](Control& c, const Args&) { return V(c.Caption()); },
     [](Control& c, const Args&, const V& value) { c.Caption(value.ToText()); }},
    {"Tag", [](Control& c, const Args&) { return V(c.Tag()); },
     [](Control& c, const Args&, const V& value) { c.Tag(value.ToText()); }},
    {"BeginGroup", [](Control& c, const Args&) { return V(c.BeginGroup()); },
     [](Control& c, const Args&, const V& value) { c.BeginGroup(value.ToBool()); }},
    {"Visible", [](Control& c, const Args&) { return V(c.Visible()); },
     [](Control& c, const Args&, const V& value) { c.Visible(value.ToBool()); }},
    {"Execute", [](Control& c, const Args&) { return c.Execute(), NoValue(); }},
    {"Delete", [](Control& c, const Args&) { return c.Delete(), NoValue(); }},
    {"Index", [](Control& c, const Args&) { return V(c.Index()); }},
};

MemberTable<Control> CommonAnd(MemberTable<Control> own) {
  MemberTable<Control> table = kCommon;
  table.insert(table.end(), own.begin(), own.end());
  return table;
}

const MemberTable<Control> kButton = CommonAnd({
    {"Style", [](Control& c, const Args&) { return V(c.Style()); },
     [](Control& c, const Args&, const V& value) { c.Style(value.ToLong()); }},
    {"FaceId", [](Control& c, const Args&) { return V(c.FaceId()); },
     [](Control& c, const Args&, const V& value) { c.FaceId(value.ToLong()); }},
});

const MemberTable<Control> kPopup = CommonAnd({
    {"CommandBar", [](Control& c, const Args&) { return ExposeBar(c.CommandBar()); }},
    {"Controls", [](Control& c, const Args&) { return Expose(c.CommandBar()->Controls(), ControlsTable()); }},
});

// Add(Type, Id, Parameter, Before, Temporary)
const MemberTable<client::CommandBarControls> kControls = {
    {"Count", [](client::CommandBarControls& c, const Args&) { return V(c.Count()); }},
    {"Item", [](client::CommandBarControls& c, const Args& a) { return ExposeControl(c.Item(a.Long(0))); }},
    {"Add", [](client::CommandBarControls& c, const Args& a) {
       return ExposeControl(c.Add(a.Has(0) ? a.Long(0) : client::msoControlButton, a.Has(3) ? a.Long(3) : 0,
                                  a.Has(4) && a.Bool(4)));
     }},
};
const MemberTable<client::CommandBarControls>& ControlsTable() { return kControls; }

// FindControl(Type, Id, Tag, Visible, Recursive): without Recursive a bar
// looks at its own controls only, not inside its pop-ups.
com::ScopedVariant FindOnBar(client::CommandBar& bar, const Args& a) {
  const Criteria criteria = CriteriaOf(a);
  if (a.Has(4) && a.Bool(4)) return ExposeControl(bar.FindControl(criteria.type, criteria.id, criteria.tag));
  for (const auto& control : dynamic_cast<sim::SimCommandBar&>(bar).controls) {
    if ((criteria.type == 0 || control->type == criteria.type) && (criteria.id == 0 || control->id == criteria.id) &&
        (criteria.tag.empty() || control->tag == criteria.tag))
      return ExposeControl(control);
  }
  return ExposeControl(nullptr);
}

const MemberTable<client::CommandBar> kBar = {
    {"Name", [](client::CommandBar& b, const Args&) { return V(b.Name()); }},
    {"Visible", [](client::CommandBar& b, const Args&) { return V(b.Visible()); },
     [](client::CommandBar& b, const Args&, const V& value) { b.Visible(value.ToBool()); }},
    {"Controls", [](client::CommandBar& b, const Args&) { return Expose(b.Controls(), kControls); }},
    {"FindControl", FindOnBar},
};

com::ScopedVariant ExposeBar(const Ref<client::CommandBar>& bar) { return Expose(bar, kBar); }

// Item(Index) raises for a bar the window does not have; Add(Name,
// Position, MenuBar, Temporary); FindControl searches every bar's pop-ups.
const MemberTable<client::CommandBars> kBars = {
    {"Count", [](client::CommandBars& b, const Args&) { return V(b.Count()); }},
    {"Item", [](client::CommandBars& b, const Args& a) {
       auto bar = b.Item(a.Text(0));
       if (!bar) qorvane::Raise(qorvane::err::kInvalidCall);
       return ExposeBar(bar);
     }},
    {"Add", [](client::CommandBars& b, const Args& a) {
       return ExposeBar(b.Add(a.Has(0) ? a.Text(0) : "", a.Has(1) ? a.Long(1) : 0, a.Has(3) && a.Bool(3)));
     }},
    {"FindControl", [](client::CommandBars& b, const Args& a) {
       const Criteria criteria = CriteriaOf(a);
       return ExposeControl(b.FindControl(criteria.type, criteria.id, criteria.tag));
     }},
};

class HostControl final : public EventSource<Control, client::CommandBarButtonEvents> {
 public:
  HostControl(Ref<Control> control, const MemberTable<Control>& members)
      : EventSource(std::move(control), members, events::kCommandBarButton) {}
  void Click(const Ref<Control>& control, bool& cancelDefault) override {
    VARIANT_BOOL flag = cancelDefault ? VARIANT_TRUE : VARIANT_FALSE;
    RaiseEvent(kClick, {ExposeControl(control), com::ScopedVariant::BoolRef(&flag)});
    cancelDefault = flag != VARIANT_FALSE;
  }
};

}  // namespace

com::ScopedVariant ExposeCommandBars(const Ref<client::CommandBars>& bars) { return Expose(bars, kBars); }

com::ScopedVariant ExposeControl(const Ref<client::CommandBarControl>& control) {
  if (!control) return V::Nothing();
  const long type = dynamic_cast<sim::SimCommandBarControl&>(*control).type;
  const auto& members = type == client::msoControlButton ? kButton : type == client::msoControlPopup ? kPopup : kCommon;
  return ExposeAs<HostControl>(control, members);
}

}  // namespace host
