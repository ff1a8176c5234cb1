// Office command bars of a window and their controls.
//
// A control found or added is a button or a pop-up; both share the members
// of CommandBarControl, but each adds its own (a button's Style, a pop-up's
// CommandBar) whose DISPIDs may clash between the two, so those are called
// through the type the control's Type names.
#include "base/runtime_error.h"
#include "win/binding/bound_object.h"
#include "win/binding/event_subscriptions.h"

namespace binding {
namespace {

com::DispatchType kCommandBarsType("CommandBars");
com::DispatchType kCommandBarType("CommandBar");
com::DispatchType kControlsType("CommandBarControls");
com::DispatchType kControlType("CommandBarControl");
com::DispatchType kButtonType("CommandBarButton");
com::DispatchType kPopupType("CommandBarPopup");

// FindControl's criteria: 0 and "" mean "any", which the client wants left out.
com::ScopedVariant Criterion(long value) { return value ? com::ScopedVariant(value) : com::ScopedVariant::Missing(); }
com::ScopedVariant Criterion(const std::string& value) {
  return value.empty() ? com::ScopedVariant::Missing() : com::ScopedVariant(value);
}

Ref<client::CommandBar> BindCommandBar(const com::ScopedVariant& object);

class BoundControl final : public client::CommandBarControl, public Bound {
 public:
  explicit BoundControl(com::ComPtr<IDispatch> object) : Bound(std::move(object), kControlType) {}
  long Type() override { return Long("Type"); }
  long Id() override { return Long("Id"); }
  std::string Caption() override { return Text("Caption"); }
  void Caption(const std::string& value) override { Put("Caption", value); }
  std::string Tag() override { return Text("Tag"); }
  void Tag(const std::string& value) override { Put("Tag", value); }
  long Style() override { return Button().Get("Style").ToLong(); }
  void Style(long value) override { Button().Put("Style", value); }
  bool BeginGroup() override { return Bool("BeginGroup"); }
  void BeginGroup(bool value) override { Put("BeginGroup", value); }
  bool Visible() override { return Bool("Visible"); }
  void Visible(bool value) override { Put("Visible", value); }
  void Execute() override { Call("Execute"); }
  void Delete() override { Call("Delete"); }
  long Index() override { return Long("Index"); }
  long FaceId() override { return Button().Get("FaceId").ToLong(); }
  void FaceId(long value) override { Button().Put("FaceId", value); }
  Ref<client::CommandBar> CommandBar() override {
    if (Type() != client::msoControlPopup) return nullptr;
    return BindCommandBar(Self().As(kPopupType).Get("CommandBar"));
  }
  Ref<client::EventSubscription> Advise(client::CommandBarButtonEvents* sink) override {
    return binding::Advise(Object(), sink);
  }

 private:
  // Style and FaceId belong to buttons; another control does not have them (438).
  com::Dispatch Button() {
    if (Type() != client::msoControlButton) qorvane::Raise(qorvane::err::kObjectDoesntSupport);
    return Self().As(kButtonType);
  }
};

class BoundControls final : public client::CommandBarControls, public Bound {
 public:
  explicit BoundControls(com::ComPtr<IDispatch> object) : Bound(std::move(object), kControlsType) {}
  long Count() override { return Long("Count"); }
  Ref<client::CommandBarControl> Item(long index) override { return BindControl(Get("Item", {index})); }
  // Add(Type, Id, Parameter, Before, Temporary)
  Ref<client::CommandBarControl> Add(long type, long before, bool temporary) override {
    const auto missing = com::ScopedVariant::Missing();
    return BindControl(Get("Add", {type, missing, missing, Criterion(before), temporary}));
  }
};

class BoundCommandBar final : public client::CommandBar, public Bound {
 public:
  explicit BoundCommandBar(com::ComPtr<IDispatch> object) : Bound(std::move(object), kCommandBarType) {}
  std::string Name() override { return Text("Name"); }
  bool Visible() override { return Bool("Visible"); }
  void Visible(bool value) override { Put("Visible", value); }
  Ref<client::CommandBarControls> Controls() override { return MakeBound<BoundControls>(Get("Controls")); }
  // FindControl(Type, Id, Tag, Visible, Recursive): a bar searches only its
  // own level unless Recursive says to look inside its pop-ups too.
  Ref<client::CommandBarControl> FindControl(long type, long id, const std::string& tag) override {
    return BindControl(
        Get("FindControl", {Criterion(type), Criterion(id), Criterion(tag), com::ScopedVariant::Missing(), true}));
  }
};

class BoundCommandBars final : public client::CommandBars, public Bound {
 public:
  explicit BoundCommandBars(com::ComPtr<IDispatch> object) : Bound(std::move(object), kCommandBarsType) {}
  long Count() override { return Long("Count"); }
  Ref<client::CommandBar> Item(const std::string& name) override {
    // The client raises for a bar it does not have.
    try {
      return BindCommandBar(Get("Item", {name}));
    } catch (const qorvane::RuntimeError&) {
      return nullptr;
    }
  }
  // Add(Name, Position, MenuBar, Temporary)
  Ref<client::CommandBar> Add(const std::string& name, long position, bool temporary) override {
    return BindCommandBar(Get("Add", {name, position, com::ScopedVariant::Missing(), temporary}));
  }
  // FindControl(Type, Id, Tag, Visible) searches every bar with its pop-ups.
  Ref<client::CommandBarControl> FindControl(long type, long id, const std::string& tag) override {
    return BindControl(Get("FindControl", {Criterion(type), Criterion(id), Criterion(tag)}));
  }
};

Ref<client::CommandBar> BindCommandBar(const com::ScopedVariant& object) { return MakeBound<BoundCommandBar>(object); }

}  // namespace

Ref<client::CommandBars> BindCommandBars(const com::ScopedVariant& object) {
  return MakeBound<BoundCommandBars>(object);
}
Ref<client::CommandBarControl> BindControl(const com::ScopedVariant& object) {
  return MakeBound<BoundControl>(object);
}

}  // namespace binding
