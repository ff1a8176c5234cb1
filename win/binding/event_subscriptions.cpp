// Sinks that turn the client's events into calls on the add-in's handlers.
#include "win/binding/event_subscriptions.h"

#include <utility>

#include "base/runtime_error.h"
#include "win/binding/bound_object.h"
#include "win/binding/outlook_events.h"
#include "win/com/event_sink.h"

namespace binding {
namespace {

// A sink for one event interface, handing its events to a handler.
template <class Handler>
class Sink final : public com::EventSink {
 public:
  using Dispatcher = void (*)(Handler&, DISPID, const com::DispatchArgs&);
  Sink(const IID& events, Handler& handler, Dispatcher dispatch)
      : EventSink(events), handler_(handler), dispatch_(dispatch) {}

 protected:
  void OnEvent(DISPID id, const com::DispatchArgs& args) override { dispatch_(handler_, id, args); }

 private:
  Handler& handler_;
  Dispatcher dispatch_;
};

class Subscription final : public client::EventSubscription {
 public:
  explicit Subscription(com::Connection connection) : connection_(std::move(connection)) {}

 private:
  com::Connection connection_;
};

template <class Handler>
Ref<client::EventSubscription> Subscribe(IDispatch* source, Handler* handler, const IID& events,
                                         typename Sink<Handler>::Dispatcher dispatch) {
  if (!handler) qorvane::Raise(qorvane::err::kObjectNotSet);
  const com::ComPtr<com::EventSink> sink(new Sink<Handler>(events, *handler, dispatch));
  return std::make_shared<Subscription>(com::Connect(source, sink));
}

// The client passes Cancel by reference: the handler's answer goes back.
template <class Call>
void WithCancel(const com::DispatchArgs& args, std::size_t index, Call&& call) {
  bool cancel = args.Bool(index);
  call(cancel);
  args.SetBool(index, cancel);
}

}  // namespace

Ref<client::EventSubscription> Advise(IDispatch* source, client::ApplicationEvents* handler) {
  return Subscribe(source, handler, events::kApplication,
                   [](client::ApplicationEvents& h, DISPID id, const com::DispatchArgs& args) {
                     if (id != events::kItemSend) return;
                     const auto item = BindItem(args.At(0));
                     WithCancel(args, 1, [&](bool& cancel) { h.ItemSend(item, cancel); });
                   });
}

Ref<client::EventSubscription> Advise(IDispatch* source, client::ExplorersEvents* handler) {
  return Subscribe(source, handler, events::kExplorers,
                   [](client::ExplorersEvents& h, DISPID id, const com::DispatchArgs& args) {
                     if (id == events::kNewExplorer) h.NewExplorer(BindExplorer(args.At(0)));
                   });
}

Ref<client::EventSubscription> Advise(IDispatch* source, client::ExplorerEvents* handler) {
  return Subscribe(source, handler, events::kExplorer,
                   [](client::ExplorerEvents& h, DISPID id, const com::DispatchArgs&) {
                     if (id == events::kExplorerClose) h.Close();
                   });
}

Ref<client::EventSubscription> Advise(IDispatch* source, client::InspectorsEvents* handler) {
  return Subscribe(source, handler, events::kInspectors,
                   [](client::InspectorsEvents& h, DISPID id, const com::DispatchArgs& args) {
                     if (id == events::kNewInspector) h.NewInspector(BindInspector(args.At(0)));
                   });
}

Ref<client::EventSubscription> Advise(IDispatch* source, client::SyncObjectEvents* handler) {
  return Subscribe(source, handler, events::kSyncObject,
                   [](client::SyncObjectEvents& h, DISPID id, const com::DispatchArgs& args) {
                     switch (id) {
                       case events::kSyncStart: h.SyncStart(); break;
                       case events::kSyncProgress: h.Progress(args.Long(0), args.Text(1), args.Long(2), args.Long(3)); break;
                       case events::kSyncError: h.OnError(args.Long(0), args.Text(1)); break;
                       case events::kSyncEnd: h.SyncEnd(); break;
                     }
                   });
}

Ref<client::EventSubscription> Advise(IDispatch* source, client::CommandBarButtonEvents* handler) {
  return Subscribe(source, handler, events::kCommandBarButton,
                   [](client::CommandBarButtonEvents& h, DISPID id, const com::DispatchArgs& args) {
                     if (id != events::kClick) return;
                     const auto control = BindControl(args.At(0));
                     WithCancel(args, 1, [&](bool& cancel) { h.Click(control, cancel); });
                   });
}

}  // namespace binding
