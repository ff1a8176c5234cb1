// An event-bound reference into the client ("WithEvents" in the object model's
// own language): holding the object and a connection of one sink to its
// events, released together.
//
//   WithEvents<client::Explorer, client::ExplorerEvents> m_Explorer{&sink};
//   m_Explorer.Set(explorer);   // the sink hears the explorer's events
//   m_Explorer.Reset();         // and stops hearing them
//
// Set connects before it keeps anything: when the client refuses the
// connection, Set raises and the reference stays empty. The sink must
// outlive the reference. UI thread only.
#pragma once

#include <utility>

#include "client/ref.h"

template <class Object, class Sink>
class WithEvents {
 public:
  explicit WithEvents(Sink* sink) : sink_(sink) {}
  WithEvents(const WithEvents&) = delete;
  WithEvents& operator=(const WithEvents&) = delete;

  void Set(client::Ref<Object> object) {
    Reset();
    if (!object) return;
    auto subscription = object->Advise(sink_);
    object_ = std::move(object);
    subscription_ = std::move(subscription);
  }

  // The connection goes first, then the object.
  void Reset() noexcept {
    subscription_.reset();
    object_.reset();
  }

  const client::Ref<Object>& get() const noexcept { return object_; }
  Object* operator->() const noexcept { return object_.get(); }
  explicit operator bool() const noexcept { return static_cast<bool>(object_); }

 private:
  Sink* sink_;
  client::Ref<Object> object_;
  client::Ref<client::EventSubscription> subscription_;
};
