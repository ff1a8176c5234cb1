// The connection points of sim objects: a list of advised sinks, each held
// until its EventSubscription is released. Raising walks a copy of the list,
// so a handler may advise or unadvise while the event is being delivered,
// as handlers of the real client's events do.
#pragma once

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "client/ref.h"

namespace sim {

template <class Sink>
class EventSinks {
 public:
  EventSinks() : sinks_(std::make_shared<std::vector<Sink*>>()) {}

  client::Ref<client::EventSubscription> Advise(Sink* sink) {
    sinks_->push_back(sink);
    return std::make_shared<Subscription>(sinks_, sink);
  }

  template <class Call>
  void Raise(Call&& call) const {
    const std::vector<Sink*> now = *sinks_;
    for (Sink* sink : now) {
      // A sink unadvised by an earlier handler of this event is skipped.
      if (std::find(sinks_->begin(), sinks_->end(), sink) != sinks_->end()) call(*sink);
    }
  }

  std::size_t Count() const { return sinks_->size(); }

 private:
  class Subscription final : public client::EventSubscription {
   public:
    Subscription(const std::shared_ptr<std::vector<Sink*>>& sinks, Sink* sink) : sinks_(sinks), sink_(sink) {}
    ~Subscription() override {
      if (const auto sinks = sinks_.lock()) {
        const auto found = std::find(sinks->begin(), sinks->end(), sink_);
        if (found != sinks->end()) sinks->erase(found);
      }
    }

   private:
    std::weak_ptr<std::vector<Sink*>> sinks_;
    Sink* sink_;
  };

  std::shared_ptr<std::vector<Sink*>> sinks_;
};

}  // namespace sim
