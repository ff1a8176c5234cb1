// The simulated client's objects exposed one by one: each call gives a new
// automation object over the simulated object (Nothing for null), with the
// members and, for event sources, the connection points of the client's
// interface of that name.
#pragma once

#include "tests/host/automation_object.h"

namespace host {

com::ScopedVariant ExposeApplication(const Ref<client::Application>& application);
com::ScopedVariant ExposeNameSpace(const Ref<client::NameSpace>& session);
com::ScopedVariant ExposeFolder(const Ref<client::MAPIFolder>& folder);
com::ScopedVariant ExposeFolders(const Ref<client::Folders>& folders);
com::ScopedVariant ExposeItems(const Ref<client::Items>& items);
com::ScopedVariant ExposeViews(const Ref<client::Views>& views);
com::ScopedVariant ExposeItem(const Ref<client::Item>& item);
com::ScopedVariant ExposeExplorers(const Ref<client::Explorers>& explorers);
com::ScopedVariant ExposeExplorer(const Ref<client::Explorer>& explorer);
com::ScopedVariant ExposeInspectors(const Ref<client::Inspectors>& inspectors);
com::ScopedVariant ExposeInspector(const Ref<client::Inspector>& inspector);
com::ScopedVariant ExposeCommandBars(const Ref<client::CommandBars>& bars);
com::ScopedVariant ExposeControl(const Ref<client::CommandBarControl>& control);
com::ScopedVariant ExposeSyncObjects(const Ref<client::SyncObjects>& syncObjects);
com::ScopedVariant ExposeAddIns(const Ref<client::COMAddIns>& addIns);
com::ScopedVariant ExposeAddIn(const Ref<client::COMAddIn>& addIn);

// The simulated application behind the host; the store root's parent is
// its session, which the simulated folder does not give.
Ref<client::Application>& HostedApplication();

// The result of a method that returns nothing (VT_EMPTY).
inline com::ScopedVariant NoValue() { return {}; }

// An automation object that raises events: it listens to its simulated
// object while at least one sink is connected.
template <class Target, class Events>
class EventSource : public HostObject<Target>, public Events {
 public:
  EventSource(Ref<Target> target, const MemberTable<Target>& members, const IID& events)
      : HostObject<Target>(std::move(target), members), events_(events) {
    this->AddEvents(events, [this](bool connected) {
      subscription_ = connected ? this->target()->Advise(static_cast<Events*>(this)) : nullptr;
    });
  }

 protected:
  void RaiseEvent(DISPID id, std::vector<com::ScopedVariant> args) { this->Raise(events_, id, std::move(args)); }

 private:
  const IID events_;
  Ref<client::EventSubscription> subscription_;
};

// The event interfaces and DISPIDs of the client and of Office.
namespace events {
inline constexpr IID kApplication = {0x0006302C, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID kInspectors = {0x00063079, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID kExplorers = {0x00063078, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID kExplorer = {0x0006300F, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID kSyncObject = {0x00063085, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID kCommandBarButton = {0x000C0351, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
}  // namespace events

}  // namespace host
